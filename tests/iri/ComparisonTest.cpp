#include "foundation/network/IRI.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <string>
#include <thread>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "foundation/network/IRIArgs.h"
#include "support/Corpus.h"
#include "support/Text.h"

namespace {

using fntest::u16;
using fntest::utf8;
using foundation::network::IRI;
using foundation::network::IRIArgs;

void expectEqual(const IRI& a, const IRI& b) {
    EXPECT_TRUE(a == b) << "'" << utf8(a.toString()) << "'";
    EXPECT_TRUE(b == a);
    EXPECT_FALSE(a != b);
    EXPECT_FALSE(b != a);
    EXPECT_EQ(a.hashValue(), b.hashValue());
}

void expectUnequal(const IRI& a, const IRI& b) {
    EXPECT_FALSE(a == b) << "'" << utf8(a.toString()) << "'";
    EXPECT_FALSE(b == a);
    EXPECT_TRUE(a != b);
    EXPECT_TRUE(b != a);
}

TEST(ComparisonTest, Equality) {
    expectEqual(IRI(), IRI());
    expectEqual(IRI(), IRI(u""));
    expectUnequal(IRI(), IRI(u"a"));
    expectEqual(IRI(u"s://h/p?q#f"), IRI(u"s://h/p?q#f"));
    // The same port number passes the port check; the texts then differ.
    expectUnequal(IRI(u"s://h:080/p"), IRI(u"s://h:80/p"));
    expectUnequal(IRI(u"s://h:81/p"), IRI(u"s://h:80/p"));
    expectUnequal(IRI(u"s://h/p"), IRI(u"s://h:80/p"));
    expectUnequal(IRI(u"S://h/p"), IRI(u"s://h/p"));
    expectUnequal(IRI(u"s://h/p"), IRI(u"//h/p"));
    expectUnequal(IRI(u"s://h/p"), IRI(u"s://h/P"));
    expectUnequal(IRI(u"s://h/%41"), IRI(u"s://h/A"));
    expectUnequal(IRI(u"s://h/p?"), IRI(u"s://h/p"));
    expectUnequal(IRI(u"s://h/p#"), IRI(u"s://h/p"));
    // Values without text (resolved ones) compare by the text they serialise to.
    const IRI base(u"s://h/a/b");
    expectEqual(IRI(u"c").resolveAgainst(base), IRI(u"./c").resolveAgainst(base));
    expectUnequal(IRI(u"c").resolveAgainst(base), IRI(u"d").resolveAgainst(base));
    expectEqual(IRI(u"c").resolveAgainst(base), IRI(u"s://h/a/c"));
    expectEqual(IRI(u"c:80/").resolveAgainst(base), IRI(u"c:80/"));
}

TEST(ComparisonTest, ParsedEqualsBuilt) {
    IRIArgs args;
    args.setScheme(u"http").setUserInfo(u"u").setHost(u"h\u00e9").setPort(8080);
    args.setPath(u"/a b/c").setQuery(u"x=1").setFragment(u"f");
    const IRI built(args);
    expectEqual(built, IRI(u"http://u@h\u00e9:8080/a%20b/c?x=1#f"));
    expectUnequal(IRI(u"http://u@h\u00e9:08080/a%20b/c?x=1#f"), built);
    expectUnequal(built, IRI(u"http://u@h\u00e9:8080/a%20b/c?x=1"));
}

// Whatever way a value was made, it is ordered, compared and hashed by its IRI-form text.
TEST(ComparisonTest, OrderIsTextOrder) {
    const IRI root(u"s:/");
    IRIArgs args;
    args.setScheme(u"s").setPath(u"/\u00e9");
    // The value and the text it is ordered by.
    const std::vector<std::pair<IRI, std::u16string>> values = {
        {IRI(u"s://h/b"), u"s://h/b"},
        {IRI(u"s://h/a/"), u"s://h/a/"},
        {IRI(u"a"), u"a"},
        {IRI(u""), u""},
        {IRI(u"b").resolveAgainst(IRI(u"s://h/x")), u"s://h/b"},
        // Once a cycle: the decoded text ordered values without text, the IRI text the others.
        {IRI(u"b").resolveAgainst(root), u"s:/b"},
        {IRI(u"%7A").resolveAgainst(root), u"s:/%7A"},
        {IRI(u"s:/a"), u"s:/a"},
        {IRI(args), u"s:/\u00e9"},
        {IRI(u"s:/%C3%A9"), u"s:/%C3%A9"},
        // The port's text counts, not only its number.
        {IRI(u"//h:080/").resolveAgainst(root), u"s://h:080/"},
        {IRI(u"//h:80/").resolveAgainst(root), u"s://h:80/"},
        {IRI(u"s://h:80/"), u"s://h:80/"},
    };
    for (const auto& [a, textA] : values) {
        EXPECT_EQ(a.toString(false), textA);
        for (const auto& [b, textB] : values) {
            EXPECT_EQ(a < b, textA < textB) << utf8(textA) << " < " << utf8(textB);
            EXPECT_EQ(a == b, textA == textB) << utf8(textA) << " == " << utf8(textB);
            if (textA == textB) {
                EXPECT_EQ(a.hashValue(), b.hashValue()) << utf8(textA);
            }
        }
    }
    std::unordered_set<IRI> set;
    for (const auto& value : values) {
        set.insert(value.first);
    }
    EXPECT_EQ(set.size(), values.size() - 2);
}

TEST(ComparisonTest, UnorderedContainers) {
    std::unordered_set<IRI> set;
    std::unordered_map<IRI, std::size_t> firstLine;
    const auto lines = fntest::readLines("urls.txt", 5000);
    std::size_t parsed = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        try {
            IRI iri(u16(lines[i]));
            firstLine.emplace(iri, i);
            set.insert(std::move(iri));
            ++parsed;
        } catch (const std::logic_error&) {
        }
    }
    // The lines are distinct texts.
    EXPECT_EQ(set.size(), parsed);
    for (const auto& [iri, line] : firstLine) {
        EXPECT_EQ(set.count(IRI(u16(lines[line]))), 1u);
    }
}

// Several threads hash and compare one fresh value at once: one computation, one answer; also
// for a value whose hash was computed, then cleared and assigned anew.
TEST(ComparisonTest, ConcurrentHashAndEquality) {
    for (int round = 0; round < 20; ++round) {
        const std::u16string text =
            u"s://h/p/" + std::u16string(static_cast<std::size_t>(round) + 1, u'x');
        IRI shared(text);
        if (round % 2 == 1) {
            // A value whose once-flag already fired for an earlier value.
            shared = IRI(u"s://h/earlier");
            (void)shared.hashValue();
            shared.clear();
            shared = IRI(text);
        }
        const IRI parsedTwin(shared.toString());
        const IRI resolvedTwin = IRI(shared.getPath(foundation::network::iri::Encoding(1)))
                                     .resolveAgainst(IRI(u"s://h/"));
        std::atomic<int> ready{0};
        std::vector<std::uint64_t> hashes(4);
        std::vector<int> equal(4);
        std::vector<std::thread> threads;
        for (int t = 0; t < 4; ++t) {
            threads.emplace_back([&, t] {
                ++ready;
                while (ready.load() < 4) {
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
            EXPECT_EQ(hashes[t], hashes[0]);
            EXPECT_EQ(equal[t], 4);
        }
        EXPECT_EQ(hashes[0], parsedTwin.hashValue());
    }
}

}  // namespace
