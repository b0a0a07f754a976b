#include "foundation/network/IRI.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "iri/IRIReads.h"
#include "support/Corpus.h"
#include "support/Text.h"

namespace foundation::network {
namespace {

// Runs work(t) for t < n on n threads released together; how many of them returned false.
int failuresTogether(int n, const std::function<bool(int)>& work) {
    std::atomic<int> ready{0}, failures{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < n; ++t) {
        threads.emplace_back([&, t] {
            for (++ready; ready.load() < n;) {
                std::this_thread::yield();
            }
            failures += work(t) ? 0 : 1;
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    return failures.load();
}

std::u16string relativeOrRefusal(const IRI& target, const IRI& base) {
    try {
        return target.makeRelativeTo(base).toString(false);
    } catch (const std::logic_error& e) {
        return fntest::u16(e.what());
    }
}

// One fresh value under every kind of concurrent use at once: readers read everything, copiers
// copy (while others fill the caches), assign, move and swap their
// own copies of it, comparers compare and hash it against a parsed and a resolved twin, and
// others resolve and relativise against it. Every thread must see what a lone thread sees. In odd
// rounds the value is assigned after an earlier value was hashed and cleared. Under tsan this
// found the copy constructor reading the hash while another thread computed it. First, threads
// parse at once while the shared grammar is built.
TEST(IRIConcurrency, EveryKindOfUseOfOneFreshValueAgrees) {
    const auto lines = fntest::readLines("iris.txt", 400);
    const auto parseAll = [&lines](int) {
        return std::all_of(lines.begin(), lines.end(), [](const std::string& line) {
            return IRI(fntest::u16(line)).toString(false) == fntest::u16(line);
        });
    };
    ASSERT_EQ(failuresTogether(4, parseAll), 0);
    const IRI other(u"http://u@\u00E9x.org:81/a/x/y"), reference(u"../e/../g?r#s");
    for (const std::u16string text :
         {u"http://u@\u00E9x.org:81/a/b%2F/c/d?q=%C3%A9#f", u"x://[::1]/a%zz%4?%FF#%",
          u"http://u%40v@\u00E9x.org:8080/p%2F\u00E9%20/?q=\u00E9&r=%3D#fr\u00E9",
          u"urn:isbn:0451450523", u"s://h/\u4E2D\u6587?\u00E9", u"s://h/p/xxxxxxxxxxxxx"}) {
        const IRI lone(text), resolvedTwin = IRI(text).resolveAgainst(lone);
        ASSERT_EQ(resolvedTwin, lone);
        const fntest::Reads expected = fntest::readEverything(lone);
        const IRI resolved = reference.resolveAgainst(lone);
        const std::u16string relative = relativeOrRefusal(other, lone);
        const std::function<bool(const IRI&)> roles[] = {
            [&](const IRI& shared) { return fntest::readEverything(shared) == expected; },
            [&](const IRI& shared) {
                IRI copy(shared), assigned, swapped;
                assigned = shared;
                IRI moved(std::move(copy));
                swapped.swap(assigned);
                return fntest::readEverything(moved) == expected && moved == shared &&
                       swapped == shared && assigned.isEmpty() && swapped.toString(false) == text;
            },
            [&](const IRI& shared) {
                return shared.hashValue() == lone.hashValue() &&
                       std::hash<IRI>()(shared) == static_cast<std::size_t>(lone.hashValue()) &&
                       shared == lone && shared == resolvedTwin && resolvedTwin == shared &&
                       !(shared != resolvedTwin) && shared != other &&
                       (shared < other) == (lone < other) && !(shared < lone);
            },
            [&](const IRI& shared) {
                return reference.resolveAgainst(shared) == resolved &&
                       relativeOrRefusal(other, shared) == relative;
            },
        };
        for (int round = 0; round < 40; ++round) {
            IRI shared(round % 2 == 1 ? u"s://h/earlier" : text);
            if (round % 2 == 1) {  // a value whose once-flag already fired for an earlier value
                (void)shared.hashValue();
                shared.clear();
                shared = IRI(text);
            }
            const auto work = [&](int t) { return roles[(t + round) % std::size(roles)](shared); };
            ASSERT_EQ(failuresTogether(8, work), 0) << fntest::utf8(text) << ", round " << round;
        }
    }
}

}  // namespace
}  // namespace foundation::network
