// How the cost of parsing, serialising, resolving and relativising grows with the size of the
// text: from 100 B to 1 MB, in four shapes (one long path segment, a long query, many short
// segments, many dot segments). The "ns/B" counter (shown as "n" per byte) must stay flat as the
// size grows. Boost.URL parses and resolves the same texts for comparison.
#include <benchmark/benchmark.h>

#include <string>

#include <boost/url.hpp>

#include "foundation/network/IRI.h"

namespace {

using foundation::network::IRI;

enum Shape { kLongPath, kLongQuery, kManySegments, kManyDotSegments };

// A relative reference of exactly `size` bytes in the given shape: whole repetitions of the
// shape's unit, then "x" to fill (so no escape is cut). ASCII, so that Boost.URL reads the same
// text.
std::string reference(Shape shape, std::size_t size) {
    std::string text;
    std::string unit;
    switch (shape) {
        case kLongPath:
            text = "p/";
            unit = "x";
            break;
        case kLongQuery:
            text = "p?";
            unit = "k=v%41&";
            break;
        case kManySegments:
            unit = "seg/";
            break;
        case kManyDotSegments:
            unit = "a/./b/../";
            break;
    }
    while (text.size() + unit.size() <= size) {
        text += unit;
    }
    text.append(size - text.size(), 'x');
    return text;
}

const std::string kBase = "http://user@example.org:8080/dir/sub/page?x=1";

std::u16string widen(const std::string& text) {
    return {text.begin(), text.end()};
}

void setCounters(benchmark::State& state, std::size_t bytes) {
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes));
    state.counters["ns/B"] = benchmark::Counter(
        static_cast<double>(bytes),
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// The absolute IRI: the base's authority and the reference as its path.
std::u16string absoluteText(const benchmark::State& state) {
    const auto shape = static_cast<Shape>(state.range(1));
    return widen("http://user@example.org:8080/" +
                 reference(shape, static_cast<std::size_t>(state.range(0))));
}

void Parse(benchmark::State& state) {
    const std::u16string text = absoluteText(state);
    for (auto _ : state) {
        IRI iri(text);
        benchmark::DoNotOptimize(iri);
    }
    setCounters(state, text.size());
}

// A fresh value each time (the serialisations are cached per value): parse and build the strict
// IRI form and the strict ASCII form.
void ParseAndSerialise(benchmark::State& state) {
    const std::u16string text = absoluteText(state);
    for (auto _ : state) {
        const IRI iri(text);
        benchmark::DoNotOptimize(iri.toString(true));
        benchmark::DoNotOptimize(iri.toAsciiString(true));
    }
    setCounters(state, text.size());
}

void Resolve(benchmark::State& state) {
    const std::string text =
        reference(static_cast<Shape>(state.range(1)), static_cast<std::size_t>(state.range(0)));
    const IRI base(widen(kBase));
    const IRI ref(widen(text));
    for (auto _ : state) {
        benchmark::DoNotOptimize(ref.resolveAgainst(base));
    }
    setCounters(state, text.size());
}

// The target against a base that shares all of its path but the last segment.
void Relativise(benchmark::State& state) {
    const std::u16string text = absoluteText(state);
    const IRI target(text);
    const IRI base(text.substr(0, text.rfind(u'/') + 1) + u"other");
    for (auto _ : state) {
        benchmark::DoNotOptimize(target.makeRelativeTo(base));
    }
    setCounters(state, text.size());
}

void BoostUrlParse(benchmark::State& state) {
    const std::u16string wide = absoluteText(state);
    const std::string text(wide.begin(), wide.end());
    for (auto _ : state) {
        boost::urls::url url(text);
        benchmark::DoNotOptimize(url);
    }
    setCounters(state, text.size());
}

void BoostUrlResolve(benchmark::State& state) {
    const std::string text =
        reference(static_cast<Shape>(state.range(1)), static_cast<std::size_t>(state.range(0)));
    const boost::urls::url base(kBase);
    const boost::urls::url_view ref(text);
    for (auto _ : state) {
        boost::urls::url out;
        benchmark::DoNotOptimize(boost::urls::resolve(base, ref, out));
    }
    setCounters(state, text.size());
}

void sizesAndShapes(benchmark::internal::Benchmark* b) {
    b->ArgNames({"bytes", "shape"});
    for (const int shape : {kLongPath, kLongQuery, kManySegments, kManyDotSegments}) {
        for (const int bytes : {100, 1000, 10000, 100000, 1000000, 4000000}) {
            b->Args({bytes, shape});
        }
    }
    b->Unit(benchmark::kMicrosecond);
}

}  // namespace

BENCHMARK(Parse)->Apply(sizesAndShapes);
BENCHMARK(ParseAndSerialise)->Apply(sizesAndShapes);
BENCHMARK(Resolve)->Apply(sizesAndShapes);
BENCHMARK(Relativise)->Apply(sizesAndShapes);
BENCHMARK(BoostUrlParse)->Apply(sizesAndShapes);
BENCHMARK(BoostUrlResolve)->Apply(sizesAndShapes);

BENCHMARK_MAIN();
