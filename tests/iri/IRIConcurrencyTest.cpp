#include "foundation/network/IRI.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace foundation::network {
namespace {

using iri::Encoding;

// Every read an IRI offers, in a fixed order; absent parts read as their exception text.
std::vector<std::u16string> readEverything(const IRI& iri) {
    std::vector<std::u16string> out;
    const auto add = [&](auto&& read) {
        try {
            out.push_back(read());
        } catch (const std::exception& e) {
            const std::string what = e.what();
            out.emplace_back(what.begin(), what.end());
        }
    };
    for (unsigned value : {3u, 0u, 4u, 1u, 2u}) {
        const Encoding e(value);
        add([&] { return iri.getUserInfo(e); });
        add([&] { return iri.getHost(e); });
        add([&] { return iri.getPath(e); });
        add([&] { return iri.getQuery(e); });
        add([&] { return iri.getFragment(e); });
        add([&] { return iri.getAuthority(e); });
        add([&] { return iri.getSchemeSpecificPart(e); });
        add([&] { return iri.toStringFromParts(e); });
    }
    add([&] { return iri.toString(true); });
    add([&] { return iri.toAsciiString(false); });
    add([&] { return iri.toAsciiString(true); });
    add([&] { return iri.toString(false); });
    add([&] { return iri.getScheme(); });
    add([&] { return iri.getPort(); });
    return out;
}

// Threads read one freshly parsed IRI at once (every getter in every Encoding and every
// serialisation, each thread in its own order); all must see what a lone reader sees.
TEST(IRIConcurrency, ManyReadersOfOneFreshValueAgree) {
    const std::u16string texts[] = {
        u"http://u%40v@\u00E9x.org:8080/p%2F\u00E9%20/?q=\u00E9&r=%3D#fr\u00E9",
        u"x://[::1]/a%zz%4?%FF#%",
        u"urn:isbn:0451450523",
        u"//h/\u4E2D\u6587?\u00E9",
    };
    constexpr int kThreads = 6;
    constexpr int kRounds = 40;
    for (const auto& text : texts) {
        const std::vector<std::u16string> expected = readEverything(IRI(text));
        for (int round = 0; round < kRounds; ++round) {
            const IRI shared(text);
            std::atomic<int> ready{0};
            std::atomic<int> mismatches{0};
            std::vector<std::thread> threads;
            for (int t = 0; t < kThreads; ++t) {
                threads.emplace_back([&, t] {
                    ready.fetch_add(1);
                    while (ready.load() < kThreads) {
                    }
                    std::vector<std::u16string> seen;
                    if (t % 2 == 0) {
                        seen = readEverything(shared);
                    } else {
                        const IRI copy(shared);  // copying while others fill the caches
                        seen = readEverything(t % 4 == 1 ? shared : copy);
                    }
                    if (seen != expected) {
                        mismatches.fetch_add(1);
                    }
                });
            }
            for (auto& thread : threads) {
                thread.join();
            }
            ASSERT_EQ(mismatches.load(), 0);
        }
    }
}

}  // namespace
}  // namespace foundation::network
