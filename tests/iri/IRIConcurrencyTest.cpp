#include "foundation/network/IRI.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "support/Corpus.h"
#include "support/Text.h"

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

// One shared value under every kind of concurrent use at once: readers read everything, copiers
// copy, assign, move and swap their own copies of it, comparers compare and hash it, and others
// resolve and relativise against it. Every thread must see what a lone thread sees. Under tsan
// this found the copy constructor reading the hash while another thread computed it.
TEST(IRIConcurrency, ReadersCopiersComparersAndHashersShareOneValue) {
    const std::u16string text = u"http://u@\u00E9x.org:81/a/b%2F/c/./d?q=%C3%A9#f";
    const IRI other(u"http://u@\u00E9x.org:81/a/x/y");
    const IRI reference(u"../e/../g?r#s");
    const std::vector<std::u16string> expectedReads = readEverything(IRI(text));
    const IRI lone(text);
    const std::uint64_t expectedHash = lone.hashValue();
    const bool expectedLess = lone < other;
    const IRI expectedResolved = reference.resolveAgainst(lone);
    const IRI expectedRelative = other.makeRelativeTo(lone);

    constexpr int kThreads = 8;
    constexpr int kRounds = 25;
    const std::function<bool(const IRI&)> roles[] = {
        [&](const IRI& shared) { return readEverything(shared) == expectedReads; },
        [&](const IRI& shared) {
            IRI copy(shared);
            IRI assigned;
            assigned = shared;
            IRI moved(std::move(copy));
            IRI swapped;
            swapped.swap(assigned);
            return moved == shared && swapped == shared && assigned.isEmpty() &&
                   moved.hashValue() == expectedHash && swapped.toString(false) == text;
        },
        [&](const IRI& shared) {
            return shared.hashValue() == expectedHash &&
                   std::hash<IRI>()(shared) == static_cast<std::size_t>(expectedHash) &&
                   shared == lone && shared != other && (shared < other) == expectedLess &&
                   !(shared < lone);
        },
        [&](const IRI& shared) {
            return reference.resolveAgainst(shared) == expectedResolved &&
                   other.makeRelativeTo(shared) == expectedRelative;
        },
    };
    for (int round = 0; round < kRounds; ++round) {
        const IRI shared(text);  // fresh: caches, hash and component forms are filled concurrently
        std::atomic<int> ready{0};
        std::atomic<int> mismatches{0};
        std::vector<std::thread> threads;
        for (int t = 0; t < kThreads; ++t) {
            threads.emplace_back([&, t] {
                ready.fetch_add(1);
                while (ready.load() < kThreads) {
                }
                const auto& role = roles[(t + round) % std::size(roles)];
                if (!role(shared)) {
                    mismatches.fetch_add(1);
                }
            });
        }
        for (auto& thread : threads) {
            thread.join();
        }
        ASSERT_EQ(mismatches.load(), 0) << "round " << round;
    }
}

// Several threads hash and compare one fresh value at once: one computation, one answer; also
// for a value whose hash was computed, then cleared and assigned anew.
TEST(IRIConcurrency, HashAndEqualityOfOneFreshValue) {
    for (int round = 0; round < 20; ++round) {
        const std::u16string text = u"s://h/p/" + std::u16string(round + 1u, u'x');
        IRI shared(text);
        if (round % 2 == 1) {  // a value whose once-flag already fired for an earlier value
            shared = IRI(u"s://h/earlier");
            (void)shared.hashValue();
            shared.clear();
            shared = IRI(text);
        }
        const IRI parsedTwin(text);
        const IRI resolvedTwin = IRI(shared.getPath(Encoding(1))).resolveAgainst(IRI(u"s://h/"));
        std::atomic<int> ready{0};
        std::vector<std::uint64_t> hashes(4);
        std::vector<int> equal(4);
        std::vector<std::thread> threads;
        for (int t = 0; t < 4; ++t) {
            threads.emplace_back([&, t] {
                for (++ready; ready.load() < 4;) {
                }
                hashes[t] = shared.hashValue();
                equal[t] = (shared == parsedTwin) + (shared == resolvedTwin) +
                           !(shared != resolvedTwin) + (resolvedTwin == shared);
            });
        }
        for (auto& thread : threads) {
            thread.join();
        }
        for (int t = 0; t < 4; ++t) {
            EXPECT_EQ(hashes[t], parsedTwin.hashValue());
            EXPECT_EQ(equal[t], 4);
        }
    }
}

// The shared grammar is built once and read by many threads at once.
TEST(IRIConcurrency, ParsesAgree) {
    std::vector<std::u16string> texts;
    for (const auto& line : fntest::readLines("iris.txt", 400)) {
        texts.push_back(fntest::u16(line));
    }
    std::vector<int> failures(4, 0);
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&, t] {
            for (const auto& text : texts) {
                failures[t] += IRI(text).toString(false) == text ? 0 : 1;
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(failures, std::vector<int>(4, 0));
}

}  // namespace
}  // namespace foundation::network
