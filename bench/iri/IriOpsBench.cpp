// Resolution, relativisation, hashing and ordering of IRIs, side by side with Boost.URL and
// uriparser on the same inputs (refs.tsv pairs, urls.txt).
#include <benchmark/benchmark.h>
#include <uriparser/Uri.h>

#include <algorithm>
#include <functional>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include <boost/url.hpp>

#include "foundation/network/IRI.h"
#include "foundation/network/Utf8.h"
#include "support/Corpus.h"
#include "support/RatioReporter.h"

namespace {

using foundation::network::IRI;

using foundation::network::utf8ToUtf16;

struct Pair {
    std::string base;
    std::string reference;
    std::u16string base16;
    std::u16string reference16;
};

// The pairs of refs.tsv that every library accepts (the base as an absolute URI); our IRI
// refuses the few with an empty port ("h:/").
const std::vector<Pair>& pairs() {
    static const std::vector<Pair> all = [] {
        std::vector<Pair> result;
        for (const auto& line : fntest::readLines("refs.tsv")) {
            const auto tab = line.find('\t');
            if (tab == std::string::npos) {
                continue;
            }
            Pair pair{line.substr(0, tab), line.substr(tab + 1), {}, {}};
            if (!boost::urls::parse_uri(pair.base) ||
                !boost::urls::parse_uri_reference(pair.reference)) {
                continue;
            }
            pair.base16 = utf8ToUtf16(pair.base);
            pair.reference16 = utf8ToUtf16(pair.reference);
            try {
                (void)IRI(pair.base16);
                (void)IRI(pair.reference16);
            } catch (const std::logic_error&) {
                continue;
            }
            result.push_back(std::move(pair));
        }
        return result;
    }();
    return all;
}

const std::vector<std::string>& urls() {
    static const std::vector<std::string> all = fntest::readLines("urls.txt");
    return all;
}

const std::vector<IRI>& parsedUrls() {
    static const std::vector<IRI> all = [] {
        std::vector<IRI> result;
        for (const auto& url : urls()) {
            try {
                result.emplace_back(utf8ToUtf16(url));
            } catch (const std::logic_error&) {
            }
        }
        return result;
    }();
    return all;
}

void perPair(benchmark::State& state, std::size_t count) {
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * count));
}

// Parse both, resolve, write the target back.
void BM_Resolve_Ours(benchmark::State& state) {
    for (auto _ : state) {
        for (const auto& pair : pairs()) {
            const IRI base(pair.base16);
            const IRI reference(pair.reference16);
            std::u16string target = reference.resolveAgainst(base).toString(false);
            benchmark::DoNotOptimize(target);
        }
    }
    perPair(state, pairs().size());
}

// The parsing share of the above.
void BM_ParseBoth_Ours(benchmark::State& state) {
    for (auto _ : state) {
        for (const auto& pair : pairs()) {
            const IRI base(pair.base16);
            const IRI reference(pair.reference16);
            benchmark::DoNotOptimize(&base);
            benchmark::DoNotOptimize(&reference);
        }
    }
    perPair(state, pairs().size());
}

void BM_Resolve_BoostUrl(benchmark::State& state) {
    boost::urls::url target;
    for (auto _ : state) {
        for (const auto& pair : pairs()) {
            const auto base = boost::urls::parse_uri(pair.base);
            const auto reference = boost::urls::parse_uri_reference(pair.reference);
            boost::urls::url dest;
            (void)boost::urls::resolve(*base, *reference, dest);
            std::string text(dest.buffer());
            benchmark::DoNotOptimize(text);
        }
    }
    perPair(state, pairs().size());
}

std::string uriparserText(const UriUriA& uri) {
    int length = 0;
    uriToStringCharsRequiredA(&uri, &length);
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    uriToStringA(text.data(), &uri, length + 1, nullptr);
    text.resize(static_cast<std::size_t>(length));
    return text;
}

void BM_Resolve_Uriparser(benchmark::State& state) {
    for (auto _ : state) {
        for (const auto& pair : pairs()) {
            UriUriA base;
            UriUriA reference;
            UriUriA target;
            const char* error = nullptr;
            if (uriParseSingleUriA(&base, pair.base.c_str(), &error) != URI_SUCCESS) {
                continue;
            }
            if (uriParseSingleUriA(&reference, pair.reference.c_str(), &error) == URI_SUCCESS) {
                if (uriAddBaseUriA(&target, &reference, &base) == URI_SUCCESS) {
                    std::string text = uriparserText(target);
                    benchmark::DoNotOptimize(text);
                    uriFreeUriMembersA(&target);
                }
                uriFreeUriMembersA(&reference);
            }
            uriFreeUriMembersA(&base);
        }
    }
    perPair(state, pairs().size());
}

// Relativisation of each pair's target against its base (both parsed beforehand), written back.
void BM_Relativise_Ours(benchmark::State& state) {
    std::vector<std::pair<IRI, IRI>> values;
    for (const auto& pair : pairs()) {
        IRI base(pair.base16);
        IRI target(IRI(pair.reference16).resolveAgainst(base).toString(false));
        values.emplace_back(std::move(base), std::move(target));
    }
    for (auto _ : state) {
        for (const auto& [base, target] : values) {
            try {
                std::u16string text = target.makeRelativeTo(base).toString(false);
                benchmark::DoNotOptimize(text);
            } catch (const std::logic_error&) {
            }
        }
    }
    perPair(state, values.size());
}

void BM_Relativise_Uriparser(benchmark::State& state) {
    std::vector<std::pair<UriUriA, UriUriA>> values;
    for (const auto& pair : pairs()) {
        UriUriA base;
        UriUriA reference;
        UriUriA target;
        const char* error = nullptr;
        if (uriParseSingleUriA(&base, pair.base.c_str(), &error) != URI_SUCCESS) {
            continue;
        }
        if (uriParseSingleUriA(&reference, pair.reference.c_str(), &error) == URI_SUCCESS &&
            uriAddBaseUriA(&target, &reference, &base) == URI_SUCCESS) {
            values.emplace_back(base, target);
            uriFreeUriMembersA(&reference);
            continue;
        }
        uriFreeUriMembersA(&base);
    }
    for (auto _ : state) {
        for (const auto& [base, target] : values) {
            UriUriA relative;
            if (uriRemoveBaseUriA(&relative, &target, &base, URI_FALSE) == URI_SUCCESS) {
                std::string text = uriparserText(relative);
                benchmark::DoNotOptimize(text);
                uriFreeUriMembersA(&relative);
            }
        }
    }
    perPair(state, values.size());
    for (auto& [base, target] : values) {
        uriFreeUriMembersA(&base);
        uriFreeUriMembersA(&target);
    }
}

// The hash of a value not hashed before (each copy starts without one).
void BM_HashValue_Ours(benchmark::State& state) {
    const auto& values = parsedUrls();
    std::vector<IRI> fresh;
    for (auto _ : state) {
        state.PauseTiming();
        fresh.assign(values.begin(), values.end());  // copies start without a hash
        state.ResumeTiming();
        for (const auto& iri : fresh) {
            benchmark::DoNotOptimize(iri.hashValue());
        }
    }
    perPair(state, values.size());
}

// Baseline: the standard hash of the UTF-8 text.
void BM_HashValue_StdHashOfText(benchmark::State& state) {
    for (auto _ : state) {
        for (const auto& url : urls()) {
            benchmark::DoNotOptimize(std::hash<std::string>{}(url));
        }
    }
    perPair(state, urls().size());
}

template <class Less>
void sortIndexes(benchmark::State& state, std::size_t count, Less less) {
    std::vector<std::size_t> order(count);
    for (auto _ : state) {
        std::iota(order.begin(), order.end(), 0);
        std::sort(order.begin(), order.end(), less);
        benchmark::DoNotOptimize(order.data());
    }
    perPair(state, count);
}

void BM_Sort_Ours(benchmark::State& state) {
    const auto& values = parsedUrls();
    sortIndexes(state, values.size(),
                [&](std::size_t a, std::size_t b) { return values[a] < values[b]; });
}

void BM_Sort_BoostUrl(benchmark::State& state) {
    std::vector<boost::urls::url_view> values;
    for (const auto& url : urls()) {
        if (auto view = boost::urls::parse_uri_reference(url)) {
            values.push_back(*view);
        }
    }
    sortIndexes(state, values.size(),
                [&](std::size_t a, std::size_t b) { return values[a] < values[b]; });
}

// Normalisation of each parsed URL of urls.txt, the normal form written out as text.
void BM_Normalize_Ours(benchmark::State& state) {
    for (auto _ : state) {
        for (const IRI& iri : parsedUrls()) {
            std::u16string text = iri.normalize().toString(false);
            benchmark::DoNotOptimize(text);
        }
    }
    perPair(state, parsedUrls().size());
}

void BM_Normalize_BoostUrl(benchmark::State& state) {
    std::vector<boost::urls::url_view> views;
    for (const auto& url : urls()) {
        if (const auto view = boost::urls::parse_uri_reference(url)) {
            views.push_back(*view);
        }
    }
    for (auto _ : state) {
        for (const auto& view : views) {
            boost::urls::url url(view);
            url.normalize();
            std::string text(url.buffer());
            benchmark::DoNotOptimize(text);
        }
    }
    perPair(state, views.size());
}

BENCHMARK(BM_Resolve_Ours)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ParseBoth_Ours)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Resolve_BoostUrl)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Resolve_Uriparser)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Relativise_Ours)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Relativise_Uriparser)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HashValue_Ours)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HashValue_StdHashOfText)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Sort_Ours)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Sort_BoostUrl)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Normalize_Ours)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Normalize_BoostUrl)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    return fnbench::runWithRatios(argc, argv, [] {
        (void)pairs();
        (void)parsedUrls();
    });
}
