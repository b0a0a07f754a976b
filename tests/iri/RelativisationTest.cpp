#include "foundation/network/IRI.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

#include "support/Corpus.h"
#include "support/RelativisationCases.h"
#include "support/Table.h"
#include "support/Text.h"

namespace {

using fntest::u16;
using fntest::utf8;
using foundation::network::IRI;

// The cases of tests/data/relativisation.tsv: the reference, and that it and its text read back
// resolve to the target.
TEST(RelativisationTest, Table) {
    for (const auto& row : fntest::readTable("relativisation.tsv", 3)) {
        const IRI target(u16(row.fields[0]));
        const IRI base(u16(row.fields[1]));
        const IRI relative = target.makeRelativeTo(base);
        const std::string where = "relativisation.tsv:" + std::to_string(row.line);
        EXPECT_EQ(utf8(relative.toString(false)), row.fields[2]) << where;
        EXPECT_EQ(relative.resolveAgainst(base), target) << where;
        EXPECT_EQ(IRI(relative.toString(false)).resolveAgainst(base), target) << where;
    }
}

TEST(RelativisationTest, UnreachableTargetsAreRecognised) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"s://h/a/../b", "s://h/x/y"},
        {"s:a/./b", "s:c"},
        // Neither a path nor an authority in the base: every reference path loses its dots.
        {"https:https:\u00DA/./20//2", "https:?/zlib.netttps:tpip77../../g"},
        {"s:a:b/./c", "s:?q"},
    };
    for (const auto& [targetText, baseText] : cases) {
        const IRI target(u16(targetText));
        const IRI base(u16(baseText));
        const IRI relative = target.makeRelativeTo(base);
        EXPECT_NE(IRI(relative.toString(false)).resolveAgainst(base), target) << targetText;
        EXPECT_TRUE(fntest::unreachableByResolution(target, base)) << targetText;
    }
}

TEST(RelativisationTest, DefaultConstructedOperands) {
    EXPECT_TRUE(IRI().makeRelativeTo(IRI()).isEmpty());
    EXPECT_EQ(IRI(u"a#f").makeRelativeTo(IRI()), IRI(u"a#f"));
    EXPECT_EQ(IRI(u"s://h/a").makeRelativeTo(IRI()), IRI(u"s://h/a"));
    EXPECT_THROW((void)IRI().makeRelativeTo(IRI(u"s://h/a")), std::logic_error);
}

TEST(RelativisationTest, OneDotDotTooFewIsKept) {
    const IRI base(u"s://h/a/b/e/d");
    const IRI target(u"s://h/a/c");
    const IRI relative = target.makeRelativeTo(base);
    EXPECT_EQ(relative.toString(false), u"../c");
    EXPECT_EQ(relative.resolveAgainst(base).toString(false), u"s://h/a/b/c");
}

TEST(RelativisationTest, RefusalsInTheirOrder) {
    const std::vector<std::tuple<std::string, std::string, std::string>> cases = {
        {"a/b", "s://h/x", "Cannot make relative to base. Already relative"},
        // The path preconditions come before the scheme and authority checks.
        {"a", "/x", "Cannot make relative to base. Already relative"},
        {"/a", "b", "Cannot make relative. Base is relative"},
        {"//h/a", "s://h/b", "Cannot make relative to base as base has scheme but this does not"},
        {"/a", "//h/b", "Cannot make relative to base as base has authority but this does not"},
        {"?x", "b", "Cannot make relative to base as base has path but this does not"},
        {"#f", "b?q", "Cannot make relative to base as base has path but this does not"},
        {"#f", "?q", "Cannot make relative to base as base has query but this does not"},
    };
    for (const auto& [target, base, message] : cases) {
        const IRI a(u16(target));
        const IRI b(u16(base));
        try {
            (void)a.makeRelativeTo(b);
            ADD_FAILURE() << target << " against " << base << " did not throw";
        } catch (const std::logic_error& e) {
            EXPECT_EQ(std::string(e.what()), message) << target << " against " << base;
        }
        EXPECT_EQ(utf8(a.toString(false)), target);
        EXPECT_EQ(utf8(b.toString(false)), base);
    }
    // An empty relative path against an absolute one passes the path preconditions.
    EXPECT_EQ(IRI(u"//h#f").makeRelativeTo(IRI(u"//h/x#g")).toString(false), u"//h#f");
}

// Pairs of corpus URLs that share scheme and authority: relativising and resolving back gives
// the original, except for the kept case of one ".." too few, recognised here by its shape: the
// base path does not end in "/", and one more "../" in front fixes the result. Left out: targets
// that no reference resolves to against a base with a path, because resolution removes their
// dot segments ("/../../etc/passwd").
TEST(RelativisationTest, CorpusPairsRoundTrip) {
    std::map<std::u16string, std::vector<IRI>> bySchemeAndAuthority;
    for (const auto& line : fntest::readLines("urls.txt")) {
        try {
            IRI iri(u16(line));
            if (iri.hasAuthority()) {
                const auto key = iri.getScheme() + u"://" +
                                 iri.getAuthority(foundation::network::iri::Encoding(1));
                bySchemeAndAuthority[key].push_back(std::move(iri));
            }
        } catch (const std::logic_error&) {
            // An empty port: not a value.
        }
    }
    std::size_t pairs = 0;
    std::size_t kept = 0;
    std::size_t unreachable = 0;
    for (const auto& [key, group] : bySchemeAndAuthority) {
        for (std::size_t i = 0; i + 1 < group.size(); ++i) {
            for (const auto& [target, base] :
                 {std::pair{&group[i], &group[i + 1]}, std::pair{&group[i + 1], &group[i]}}) {
                if (fntest::unreachableByResolution(*target, *base)) {
                    ++unreachable;
                    continue;
                }
                ++pairs;
                const IRI relative = target->makeRelativeTo(*base);
                const IRI back = relative.resolveAgainst(*base);
                if (back == *target) {
                    continue;
                }
                const bool oneTooFew = fntest::isOneDotDotTooFew(relative, *target, *base);
                EXPECT_TRUE(oneTooFew)
                    << utf8(target->toString(false)) << " against " << utf8(base->toString(false))
                    << " gave " << utf8(relative.toString(false)) << ", resolving to "
                    << utf8(back.toString(false));
                kept += oneTooFew ? 1 : 0;
            }
        }
    }
    RecordProperty("pairs", static_cast<int>(pairs));
    RecordProperty("oneTooFew", static_cast<int>(kept));
    RecordProperty("unreachable", static_cast<int>(unreachable));
    EXPECT_LT(unreachable, 100u);
    EXPECT_GT(pairs, 10000u);
    EXPECT_GT(kept, 0u);
    EXPECT_LT(kept, pairs / 10);
}

TEST(RelativisationTest, LongPathsRelativise) {
    std::u16string base = u"s://h";
    std::u16string target = u"s://h";
    for (int i = 0; i < 20000; ++i) {
        base += u"/b";
        target += i < 10000 ? u"/b" : u"/t";
    }
    base += u"/";
    const IRI relative = IRI(target).makeRelativeTo(IRI(base));
    EXPECT_EQ(relative.toString(false).rfind(u"../../", 0), 0u);
    EXPECT_EQ(relative.resolveAgainst(IRI(base)).toString(false), target);
}

}  // namespace
