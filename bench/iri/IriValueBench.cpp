// The IRI value over urls.txt and iris.txt: construction from UTF-16 plus toString(false),
// plus toAsciiString(false), plus every getter in Encoding 0; Boost.URL's parse_uri_reference
// into an owning boost::urls::url with its buffer copied out, in the same binary. The Memory
// benchmarks report sizeof(IRI) and the heap bytes one parsed IRI allocates (counted by the
// replaced global operator new below) against Boost.URL's url, as ratios.
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <new>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <boost/url/parse.hpp>
#include <boost/url/url.hpp>

#include "foundation/network/IRI.h"
#include "foundation/network/Utf8.h"
#include "support/Corpus.h"
#include "support/PerItem.h"

// ---------------------------------------------------------------------------------------------
// Heap accounting: every block carries its size in a header, so that frees can be counted too.

namespace {

using fnbench::perReference;
std::size_t gAllocated = 0;  // bytes requested since start
std::size_t gLive = 0;       // bytes requested and not yet freed
std::size_t gBlocks = 0;     // blocks requested since start
constexpr std::size_t kHeader = alignof(std::max_align_t);

void* countedAlloc(std::size_t size) {
    auto* base = static_cast<unsigned char*>(std::malloc(size + kHeader));
    if (base == nullptr) {
        throw std::bad_alloc();
    }
    *reinterpret_cast<std::size_t*>(base) = size;
    gAllocated += size;
    gLive += size;
    ++gBlocks;
    return base + kHeader;
}

void countedFree(void* p) noexcept {
    if (p == nullptr) {
        return;
    }
    auto* base = static_cast<unsigned char*>(p) - kHeader;
    gLive -= *reinterpret_cast<std::size_t*>(base);
    std::free(base);
}
}  // namespace

void* operator new(std::size_t size) {
    return countedAlloc(size);
}
void* operator new[](std::size_t size) {
    return countedAlloc(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return countedAlloc(size);
    } catch (...) {
        return nullptr;
    }
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return countedAlloc(size);
    } catch (...) {
        return nullptr;
    }
}
void operator delete(void* p) noexcept {
    countedFree(p);
}
void operator delete[](void* p) noexcept {
    countedFree(p);
}
void operator delete(void* p, std::size_t) noexcept {
    countedFree(p);
}
void operator delete[](void* p, std::size_t) noexcept {
    countedFree(p);
}
void operator delete(void* p, const std::nothrow_t&) noexcept {
    countedFree(p);
}
void operator delete[](void* p, const std::nothrow_t&) noexcept {
    countedFree(p);
}

namespace {

using foundation::network::IRI;
using foundation::network::iri::Encoding;

struct Corpus {
    std::vector<std::string> utf8;
    std::vector<std::u16string> utf16;
};

const Corpus& corpus(const char* name) {
    static Corpus urls, iris;
    Corpus& c = std::string(name) == "urls.txt" ? urls : iris;
    if (c.utf8.empty()) {
        c.utf8 = fntest::readLines(name);
        for (const auto& line : c.utf8) {
            c.utf16.push_back(foundation::network::utf8ToUtf16(line));
        }
    }
    return c;
}

// One pass over the texts; the number that failed to parse.
template <class Work>
std::size_t passOurs(const std::vector<std::u16string>& texts, Work work) {
    std::size_t failed = 0;
    for (const auto& text : texts) {
        try {
            const IRI iri(text);
            work(iri);
        } catch (const std::exception&) {
            ++failed;
        }
    }
    return failed;
}

const auto kToString = [](const IRI& iri) { benchmark::DoNotOptimize(iri.toString(false)); };
const auto kToAscii = [](const IRI& iri) { benchmark::DoNotOptimize(iri.toAsciiString(false)); };
const auto kGetters = [](const IRI& iri) {
    const Encoding decoded(0);
    if (iri.hasScheme())
        benchmark::DoNotOptimize(iri.getScheme());
    if (iri.hasUserInfo())
        benchmark::DoNotOptimize(iri.getUserInfo(decoded));
    if (iri.hasHost())
        benchmark::DoNotOptimize(iri.getHost(decoded));
    if (iri.hasPort())
        benchmark::DoNotOptimize(iri.getPortNumber());
    benchmark::DoNotOptimize(iri.getPath(decoded));
    if (iri.hasQuery())
        benchmark::DoNotOptimize(iri.getQuery(decoded));
    if (iri.hasFragment())
        benchmark::DoNotOptimize(iri.getFragment(decoded));
};

std::size_t passBoost(const std::vector<std::string>& texts) {
    std::size_t failed = 0;
    for (const auto& text : texts) {
        auto result = boost::urls::parse_uri_reference(text);
        if (!result) {
            ++failed;
            continue;
        }
        const boost::urls::url owning(*result);
        std::string copy(owning.buffer());
        benchmark::DoNotOptimize(copy);
    }
    return failed;
}

template <class Work>
void ours(benchmark::State& state, const char* name, Work work) {
    const auto& texts = corpus(name).utf16;
    std::size_t failed = 0;
    for (auto _ : state) {
        failed = passOurs(texts, work);
    }
    perReference(state, texts.size(), failed);
}

void BM_ToString_Urls(benchmark::State& s) {
    ours(s, "urls.txt", kToString);
}
void BM_ToString_Iris(benchmark::State& s) {
    ours(s, "iris.txt", kToString);
}
void BM_ToAscii_Urls(benchmark::State& s) {
    ours(s, "urls.txt", kToAscii);
}
void BM_ToAscii_Iris(benchmark::State& s) {
    ours(s, "iris.txt", kToAscii);
}
void BM_Getters_Urls(benchmark::State& s) {
    ours(s, "urls.txt", kGetters);
}
void BM_Getters_Iris(benchmark::State& s) {
    ours(s, "iris.txt", kGetters);
}

void BM_BoostUrlOwning_Urls(benchmark::State& state) {
    const auto& texts = corpus("urls.txt").utf8;
    std::size_t failed = 0;
    for (auto _ : state) {
        failed = passBoost(texts);
    }
    perReference(state, texts.size(), failed);
}

// The CPU time of this thread: on a shared machine, time spent descheduled is not counted.
struct ThreadCpuClock {
    using duration = std::chrono::nanoseconds;
    using time_point = std::chrono::time_point<ThreadCpuClock, duration>;
    static time_point now() noexcept {
        timespec t{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
        return time_point(std::chrono::seconds(t.tv_sec) + std::chrono::nanoseconds(t.tv_nsec));
    }
};

// Construct + toString(false) against Boost.URL's owning parse over urls.txt, alternating
// passes; ratio = our time / Boost.URL's time.
void BM_Ratio_ToString_over_BoostUrlOwning(benchmark::State& state) {
    using Clock = ThreadCpuClock;
    const auto& c = corpus("urls.txt");
    Clock::duration oursTime{}, theirsTime{};
    for (auto _ : state) {
        const auto t0 = Clock::now();
        benchmark::DoNotOptimize(passOurs(c.utf16, kToString));
        const auto t1 = Clock::now();
        benchmark::DoNotOptimize(passBoost(c.utf8));
        oursTime += t1 - t0;
        theirsTime += Clock::now() - t1;
    }
    const double refs = static_cast<double>(state.iterations() * c.utf16.size());
    state.counters["ours_ns"] = std::chrono::duration<double, std::nano>(oursTime).count() / refs;
    state.counters["boost_url_ns"] =
        std::chrono::duration<double, std::nano>(theirsTime).count() / refs;
    state.counters["ratio"] = std::chrono::duration<double>(oursTime).count() /
                              std::chrono::duration<double>(theirsTime).count();
}

// Bytes one parsed IRI holds (the object and its heap blocks) and the heap blocks a parse
// allocates, per reference; then the same after toString, toAsciiString and the decoded host
// and path were read. Boost.URL's owning url beside it (its object and heap), with the ratios.
void memory(benchmark::State& state, const char* name) {
    const auto& c = corpus(name);
    std::size_t utf8Bytes = 0, allocated = 0, held = 0, blocks = 0, parsed = 0, heldAfterReads = 0;
    std::size_t boostHeld = 0, boostParsed = 0;
    const Encoding decoded(0);
    for (auto _ : state) {
        utf8Bytes = allocated = held = blocks = parsed = heldAfterReads = 0;
        boostHeld = boostParsed = 0;
        for (std::size_t i = 0; i < c.utf16.size(); ++i) {
            const std::size_t allocatedBefore = gAllocated, liveBefore = gLive,
                              blocksBefore = gBlocks;
            try {
                const IRI iri(c.utf16[i]);
                allocated += gAllocated - allocatedBefore;
                held += gLive - liveBefore;
                blocks += gBlocks - blocksBefore;
                utf8Bytes += c.utf8[i].size();
                ++parsed;
                benchmark::DoNotOptimize(iri.toString(false));
                benchmark::DoNotOptimize(iri.toAsciiString(false));
                if (iri.hasHost()) {
                    benchmark::DoNotOptimize(iri.getHost(decoded));
                }
                benchmark::DoNotOptimize(iri.getPath(decoded));
                heldAfterReads += gLive - liveBefore;
            } catch (const std::exception&) {
            }
            const std::size_t boostBefore = gLive;
            if (auto result = boost::urls::parse_uri_reference(c.utf8[i])) {
                const boost::urls::url owning(*result);
                boostHeld += gLive - boostBefore;
                ++boostParsed;
            }
        }
    }
    const double n = static_cast<double>(parsed == 0 ? 1 : parsed);
    const double boostBytes =
        static_cast<double>(sizeof(boost::urls::url)) +
        static_cast<double>(boostHeld) / static_cast<double>(boostParsed == 0 ? 1 : boostParsed);
    const double oursBytes = static_cast<double>(sizeof(IRI)) + static_cast<double>(held) / n;
    const double oursAfterReads =
        static_cast<double>(sizeof(IRI)) + static_cast<double>(heldAfterReads) / n;
    state.counters["sizeof_IRI"] = static_cast<double>(sizeof(IRI));
    state.counters["utf8_bytes"] = static_cast<double>(utf8Bytes) / n;
    state.counters["heap_allocated"] = static_cast<double>(allocated) / n;
    state.counters["blocks"] = static_cast<double>(blocks) / n;
    state.counters["held"] = oursBytes;
    state.counters["held_after_reads"] = oursAfterReads;
    state.counters["boost_url_held"] = boostBytes;
    state.counters["held_ratio"] = oursBytes / boostBytes;
    state.counters["after_reads_ratio"] = oursAfterReads / boostBytes;
}

void BM_Memory_Urls(benchmark::State& s) {
    memory(s, "urls.txt");
}
void BM_Memory_Iris(benchmark::State& s) {
    memory(s, "iris.txt");
}

BENCHMARK(BM_ToString_Urls)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ToString_Iris)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ToAscii_Urls)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ToAscii_Iris)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Getters_Urls)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Getters_Iris)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_BoostUrlOwning_Urls)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Ratio_ToString_over_BoostUrlOwning)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Memory_Urls)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Memory_Iris)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
