#include "foundation/network/IRI.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "support/Corpus.h"
#include "support/Table.h"
#include "support/Text.h"

namespace {

using fntest::u16;
using fntest::utf8;
using foundation::network::IRI;

// Whether the text has an authority ending in ":", an empty port.
bool hasEmptyPort(const std::string& text) {
    const auto start = text.find("//");
    if (start == std::string::npos) {
        return false;
    }
    const auto end = text.find_first_of("/?#", start + 2);
    const std::string authority = text.substr(start + 2, end - (start + 2));
    return !authority.empty() && authority.back() == ':';
}

// The cases of tests/data/resolution.tsv: the RFC 3986 examples where our rules agree with the
// RFC, the departures kept on purpose, empty segments, relative and odd bases, text passed
// through. Each target's text reads back to an equal value.
TEST(ResolutionTest, Table) {
    for (const auto& row : fntest::readTable("resolution.tsv", 3)) {
        const std::string& base = row.fields[0];
        const std::string& reference = row.fields[1];
        const IRI resolved = IRI(u16(reference)).resolveAgainst(IRI(u16(base)));
        EXPECT_EQ(utf8(resolved.toString(false)), row.fields[2])
            << "resolution.tsv:" << row.line << ": '" << reference << "' against '" << base << "'";
        EXPECT_EQ(IRI(resolved.toString(false)), resolved) << "resolution.tsv:" << row.line;
    }
}

TEST(ResolutionTest, OperandsUnchangedAndResultConsistent) {
    const IRI base(u"s://h/a/b?q#f");
    const IRI reference(u"../c#g");
    const IRI target = reference.resolveAgainst(base);
    EXPECT_EQ(base.toString(false), u"s://h/a/b?q#f");
    EXPECT_EQ(reference.toString(false), u"../c#g");
    EXPECT_TRUE(target.isAbsolute());
    EXPECT_TRUE(target.hasAuthority());
    EXPECT_TRUE(target.hasAbsolutePath());
    EXPECT_FALSE(target.hasQuery());
    EXPECT_EQ(target.getHost(foundation::network::iri::Encoding(0)), u"h");
    EXPECT_EQ(target.toAsciiString(false), u"s://h/c#g");
    EXPECT_EQ(target, IRI(u"s://h/c#g"));
    EXPECT_FALSE(IRI(u"t:a").resolveAgainst(base).isEmpty());
    // A default-constructed value has no stored path at all.
    EXPECT_TRUE(IRI(u"").resolveAgainst(IRI()).isEmpty());
    EXPECT_EQ(IRI(u"a").resolveAgainst(IRI()), IRI(u"a"));
    EXPECT_EQ(IRI(u"./a").resolveAgainst(IRI()), IRI(u"a"));
    EXPECT_EQ(IRI().resolveAgainst(base), IRI(u"s://h/a/b?q"));
}

TEST(ResolutionTest, LongPathsResolve) {
    std::u16string base = u"s://h";
    std::u16string reference;
    for (int i = 0; i < 20000; ++i) {
        base += u"/b";
        reference += u"../";
    }
    reference += u"x/./y/../z";
    EXPECT_EQ(IRI(reference).resolveAgainst(IRI(base)).toString(false), u"s://h/x/z");
}

// Every pair of the corpus resolves, and the target parses again to an equal IRI. The only
// operands the IRI value refuses are those with an empty port ("h:/"), which it cannot number.
TEST(ResolutionTest, CorpusTargetsParseAgainToEqualValues) {
    const auto lines = fntest::readLines("refs.tsv");
    ASSERT_FALSE(lines.empty());
    std::size_t resolved = 0;
    for (const auto& line : lines) {
        const auto tab = line.find('\t');
        ASSERT_NE(tab, std::string::npos) << line;
        std::optional<IRI> base;
        std::optional<IRI> reference;
        try {
            base.emplace(u16(line.substr(0, tab)));
            reference.emplace(u16(line.substr(tab + 1)));
        } catch (const std::logic_error&) {
            EXPECT_TRUE(hasEmptyPort(line.substr(0, tab)) || hasEmptyPort(line.substr(tab + 1)))
                << line;
            continue;
        }
        const IRI target = reference->resolveAgainst(*base);
        const IRI again(target.toString(false));
        EXPECT_EQ(again, target) << line;
        EXPECT_FALSE(again != target) << line;
        EXPECT_EQ(again.hashValue(), target.hashValue()) << line;
        ++resolved;
    }
    EXPECT_GT(resolved, lines.size() * 99 / 100);
}

}  // namespace
