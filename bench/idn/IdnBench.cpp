// IDN conversion toward ASCII over the names of idn.txt: our converter, reused and one per call,
// against ICU's engine called directly and against libidn2. Every benchmark converts the whole
// corpus per iteration; `per_name` is the time for one name. At the end the mean times are
// printed as ratios to raw ICU.
#include <benchmark/benchmark.h>
#include <idn2.h>
#include <unicode/errorcode.h>
#include <unicode/idna.h>
#include <unicode/unistr.h>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "foundation/network/IdnConverter.h"
#include "support/Corpus.h"

namespace {

using foundation::network::IdnConverter;

// The inputs, prepared once: UTF-8 for libidn2, UTF-16 for everything else.
struct Names {
    std::vector<std::string> utf8;
    std::vector<std::u16string> utf16;
};

const Names& names() {
    static const Names prepared = [] {
        Names n;
        n.utf8 = fntest::readLines("idn.txt");
        for (const std::string& line : n.utf8) {
            const icu::UnicodeString wide = icu::UnicodeString::fromUTF8(line);
            n.utf16.emplace_back(wide.getBuffer(), static_cast<std::size_t>(wide.length()));
        }
        return n;
    }();
    return prepared;
}

void countNames(benchmark::State& state, std::size_t perIteration) {
    const auto total = static_cast<double>(state.iterations() * perIteration);
    state.SetItemsProcessed(static_cast<int64_t>(total));
    state.counters["per_name"] =
        benchmark::Counter(total, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

std::unique_ptr<icu::IDNA> rawEngine() {
    icu::ErrorCode status;
    std::unique_ptr<icu::IDNA> engine(icu::IDNA::createUTS46Instance(UIDNA_DEFAULT, status));
    if (status.isFailure()) {
        std::abort();
    }
    return engine;
}

void converterReused(benchmark::State& state) {
    const auto& input = names().utf16;
    const IdnConverter converter;
    for (auto _ : state) {
        for (const std::u16string& name : input) {
            std::string ascii = converter.toAscii(name);
            benchmark::DoNotOptimize(ascii);
        }
    }
    countNames(state, input.size());
}

// What a caller of ICU writes to get the same std::string our converter returns.
void icuToString(benchmark::State& state) {
    const auto& input = names().utf16;
    const auto engine = rawEngine();
    for (auto _ : state) {
        for (const std::u16string& name : input) {
            const icu::UnicodeString source(name.data(), static_cast<int32_t>(name.size()));
            icu::UnicodeString destination;
            icu::IDNAInfo info;
            icu::ErrorCode status;
            engine->nameToASCII(source, destination, info, status);
            std::string ascii;
            destination.toUTF8String(ascii);
            benchmark::DoNotOptimize(ascii);
        }
    }
    countNames(state, input.size());
}

// ICU's call alone, the result left in ICU's string: the floor.
void icuCallOnly(benchmark::State& state) {
    const auto& input = names().utf16;
    const auto engine = rawEngine();
    for (auto _ : state) {
        for (const std::u16string& name : input) {
            const icu::UnicodeString source(name.data(), static_cast<int32_t>(name.size()));
            icu::UnicodeString destination;
            icu::IDNAInfo info;
            icu::ErrorCode status;
            engine->nameToASCII(source, destination, info, status);
            benchmark::DoNotOptimize(destination);
        }
    }
    countNames(state, input.size());
}

void oneShotFunction(benchmark::State& state) {
    const auto& input = names().utf16;
    for (auto _ : state) {
        for (const std::u16string& name : input) {
            std::string ascii = foundation::network::idn_to_ascii(name);
            benchmark::DoNotOptimize(ascii);
        }
    }
    countNames(state, input.size());
}

void libidn2Transitional(benchmark::State& state) {
    const auto& input = names().utf8;
    int64_t failed = 0;
    for (auto _ : state) {
        failed = 0;
        for (const std::string& name : input) {
            char* ascii = nullptr;
            if (idn2_to_ascii_8z(name.c_str(), &ascii, IDN2_TRANSITIONAL) == IDN2_OK) {
                benchmark::DoNotOptimize(ascii);
                idn2_free(ascii);
            } else {
                ++failed;
            }
        }
    }
    countNames(state, input.size());
    state.counters["refused"] = static_cast<double>(failed);  // names libidn2 rejects
}

constexpr const char* kBaseline = "icu_nameToASCII_to_string";
constexpr const char* kReused = "IdnConverter_toAscii_reused";
constexpr const char* kPerCall = "idn_to_ascii_engine_per_call";

// Prints the usual table, then every benchmark's mean time over raw ICU's.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    RatioReporter() : ConsoleReporter(isatty(STDOUT_FILENO) != 0 ? OO_Defaults : OO_Tabular) {}

    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration && !run.error_occurred) {
                times_[run.benchmark_name()] = run.GetAdjustedRealTime();
                order_.push_back(run.benchmark_name());
            }
        }
    }
    void Finalize() override {
        ConsoleReporter::Finalize();
        const auto base = times_.find(kBaseline);
        if (base == times_.end()) {
            return;
        }
        std::cout << "\nTime per name relative to " << kBaseline << ":\n";
        for (const std::string& name : order_) {
            std::printf("  %-34s %6.2fx\n", name.c_str(), times_[name] / base->second);
        }
        const auto reused = times_.find(kReused);
        const auto perCall = times_.find(kPerCall);
        if (reused != times_.end() && perCall != times_.end()) {
            std::printf("%s over %s: %.2fx\n", kPerCall, kReused, perCall->second / reused->second);
        }
    }

private:
    std::map<std::string, double> times_;
    std::vector<std::string> order_;
};

}  // namespace

int main(int argc, char** argv) {
    benchmark::RegisterBenchmark(kReused, converterReused);
    benchmark::RegisterBenchmark(kBaseline, icuToString);
    benchmark::RegisterBenchmark("icu_nameToASCII_call_only", icuCallOnly);
    benchmark::RegisterBenchmark(kPerCall, oneShotFunction);
    benchmark::RegisterBenchmark("libidn2_to_ascii_8z_transitional", libidn2Transitional);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    std::cout << names().utf16.size() << " names\n";
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
