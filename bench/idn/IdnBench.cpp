// IDN conversion toward ASCII over the names of idn.txt: our converter, reused and one per call,
// against ICU's engine called directly and against libidn2. Every benchmark converts the whole
// corpus per iteration; `per_name` is the time for one name. At the end ours is printed as a
// ratio to each of them.
#include <benchmark/benchmark.h>
#include <idn2.h>
#include <unicode/errorcode.h>
#include <unicode/idna.h>
#include <unicode/unistr.h>

#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "foundation/network/IdnConverter.h"
#include "foundation/network/Utf8.h"
#include "support/Corpus.h"
#include "support/RatioReporter.h"

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
            n.utf16.push_back(foundation::network::utf8ToUtf16(line));
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

}  // namespace

int main(int argc, char** argv) {
    // Groups BM_<Group>_<Library>: each library's time per name, ours over each.
    benchmark::RegisterBenchmark("BM_ToAscii_Ours", converterReused);
    benchmark::RegisterBenchmark("BM_ToAscii_IcuToString", icuToString);
    benchmark::RegisterBenchmark("BM_ToAscii_IcuCallOnly", icuCallOnly);
    benchmark::RegisterBenchmark("BM_ToAscii_Libidn2Transitional", libidn2Transitional);
    // idn_to_ascii, which makes an engine per call, over the converter reused.
    benchmark::RegisterBenchmark("BM_EnginePerCall_Ours", oneShotFunction);
    benchmark::RegisterBenchmark("BM_EnginePerCall_Reused", converterReused);
    return fnbench::runWithRatios(argc, argv,
                                  [] { std::cout << names().utf16.size() << " names\n"; });
}
