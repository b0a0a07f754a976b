// Parsing alone: IRI(text) over the UTF-16 texts of urls.txt and iris.txt (the grammar and the
// one allocation of the value), and Boost.URL's parse_uri_reference (a view, no allocation) on
// urls.txt, in one binary. Counters: ns per reference; the ratio report prints ours / Boost.URL.
#include <benchmark/benchmark.h>

#include <boost/url/parse.hpp>
#include <stdexcept>
#include <string>
#include <vector>

#include "foundation/network/IRI.h"
#include "foundation/network/Utf8.h"
#include "support/Corpus.h"
#include "support/PerItem.h"
#include "support/RatioReporter.h"

namespace {

using fnbench::perReference;
using foundation::network::IRI;

const std::vector<std::u16string>& utf16Texts(const char* corpus) {
    static std::vector<std::u16string> urls, iris;
    auto& texts = std::string(corpus) == "urls.txt" ? urls : iris;
    if (texts.empty()) {
        for (const auto& line : fntest::readLines(corpus)) {
            texts.push_back(foundation::network::utf8ToUtf16(line));
        }
    }
    return texts;
}

const std::vector<std::string>& urlLines() {
    static const std::vector<std::string> urls = fntest::readLines("urls.txt");
    return urls;
}

void passOurs(benchmark::State& state, const char* corpus) {
    const auto& texts = utf16Texts(corpus);
    std::size_t failed = 0;
    for (auto _ : state) {
        failed = 0;
        for (const auto& text : texts) {
            try {
                const IRI iri(text);
                benchmark::DoNotOptimize(&iri);
            } catch (const std::logic_error&) {
                ++failed;
            }
        }
    }
    perReference(state, texts.size(), failed);
}

void BM_ParseUrls_Ours(benchmark::State& state) {
    passOurs(state, "urls.txt");
}

void BM_ParseIris_Ours(benchmark::State& state) {
    passOurs(state, "iris.txt");
}

void BM_ParseUrls_BoostUrl(benchmark::State& state) {
    const auto& texts = urlLines();
    std::size_t failed = 0;
    for (auto _ : state) {
        failed = 0;
        for (const auto& text : texts) {
            auto result = boost::urls::parse_uri_reference(text);
            failed += result.has_value() ? 0 : 1;
            benchmark::DoNotOptimize(result);
        }
    }
    perReference(state, texts.size(), failed);
}

BENCHMARK(BM_ParseUrls_Ours)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ParseIris_Ours)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ParseUrls_BoostUrl)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    return fnbench::runWithRatios(argc, argv, [] {
        (void)utf16Texts("urls.txt");
        (void)utf16Texts("iris.txt");
        (void)urlLines();
    });
}
