/// @file
/// @brief Per-item counters shared by the benchmarks, so that runs read as ns per reference.
#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>

namespace fnbench {

/// Reports items processed, "ns_per_ref" (time per item) and how many inputs failed.
inline void perReference(benchmark::State& state, std::size_t count, std::size_t failed) {
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * count));
    state.counters["ns_per_ref"] =
        benchmark::Counter(static_cast<double>(state.iterations() * count),
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
    state.counters["failed"] = static_cast<double>(failed);
}

}  // namespace fnbench
