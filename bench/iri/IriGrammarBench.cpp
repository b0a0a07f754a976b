// The IRI grammar (parseString over the UTF-16 text a value is parsed from) on urls.txt and
// iris.txt, and Boost.URL's parse_uri_reference on urls.txt, in one binary so that the ratio comes
// from one run. Counters: ns per reference; the Ratio benchmark prints ours / Boost.URL.
#include <chrono>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <boost/url/parse.hpp>

#include "iri/grammar/IriGrammar.h"
#include "iri/grammar/Unicode.h"
#include "support/Corpus.h"
#include "support/PerItem.h"

namespace {

using fnbench::perReference;

using namespace foundation::network::iri::detail;

const std::vector<std::u16string>& utf16Texts(const char* corpus) {
    static std::vector<std::u16string> urls, iris;
    auto& texts = std::string(corpus) == "urls.txt" ? urls : iris;
    if (texts.empty()) {
        for (const auto& line : fntest::readLines(corpus)) {
            texts.push_back(codePointsToUtf16(utf8ToCodePoints(line)));
        }
    }
    return texts;
}

const std::vector<std::string>& urlLines() {
    static const std::vector<std::string> urls = fntest::readLines("urls.txt");
    return urls;
}

// One pass of our grammar over a corpus; the number of references that failed.
std::size_t passOurs(const std::vector<std::u16string>& texts) {
    std::size_t failed = 0;
    Parts<std::u16string> parts;
    for (const auto& text : texts) {
        failed += irigrammar::parseString<std::u16string>(text.begin(), text.end(), parts) ? 0 : 1;
        benchmark::DoNotOptimize(parts);
    }
    return failed;
}

std::size_t passBoost(const std::vector<std::string>& texts) {
    std::size_t failed = 0;
    for (const auto& text : texts) {
        auto result = boost::urls::parse_uri_reference(text);
        failed += result.has_value() ? 0 : 1;
        benchmark::DoNotOptimize(result);
    }
    return failed;
}

void BM_Grammar_Urls(benchmark::State& state) {
    const auto& texts = utf16Texts("urls.txt");
    std::size_t failed = 0;
    for (auto _ : state)
        failed = passOurs(texts);
    perReference(state, texts.size(), failed);
}

void BM_Grammar_Iris(benchmark::State& state) {
    const auto& texts = utf16Texts("iris.txt");
    std::size_t failed = 0;
    for (auto _ : state)
        failed = passOurs(texts);
    perReference(state, texts.size(), failed);
}

void BM_BoostUrl_Urls(benchmark::State& state) {
    const auto& texts = urlLines();
    std::size_t failed = 0;
    for (auto _ : state)
        failed = passBoost(texts);
    perReference(state, texts.size(), failed);
}

// Both parsers over urls.txt, alternating passes; ratio = our time / Boost.URL's time.
void BM_Ratio_Grammar_over_BoostUrl(benchmark::State& state) {
    using Clock = std::chrono::steady_clock;
    const auto& ours = utf16Texts("urls.txt");
    const auto& theirs = urlLines();
    Clock::duration oursTime{}, theirsTime{};
    for (auto _ : state) {
        const auto t0 = Clock::now();
        benchmark::DoNotOptimize(passOurs(ours));
        const auto t1 = Clock::now();
        benchmark::DoNotOptimize(passBoost(theirs));
        oursTime += t1 - t0;
        theirsTime += Clock::now() - t1;
    }
    const double refs = static_cast<double>(state.iterations() * ours.size());
    state.counters["ours_ns"] = std::chrono::duration<double, std::nano>(oursTime).count() / refs;
    state.counters["boost_url_ns"] =
        std::chrono::duration<double, std::nano>(theirsTime).count() / refs;
    state.counters["ratio"] = std::chrono::duration<double>(oursTime).count() /
                              std::chrono::duration<double>(theirsTime).count();
}

BENCHMARK(BM_Grammar_Urls)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Grammar_Iris)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BoostUrl_Urls)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Ratio_Grammar_over_BoostUrl)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
