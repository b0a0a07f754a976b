#include "foundation/network/IRI.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "support/Corpus.h"
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

std::string resolve(const std::string& base, const std::string& reference) {
    return utf8(IRI(u16(reference)).resolveAgainst(IRI(u16(base))).toString(false));
}

// RFC 3986 section 5.4.1 and 5.4.2, where our rules agree with the RFC (less the examples that
// take no other path through the code: ";x", "g;x?y#s", "g#s/./x" and the like).
TEST(ResolutionTest, Rfc3986Examples) {
    const std::string base = "http://a/b/c/d;p?q";
    const std::vector<std::pair<std::string, std::string>> cases = {
        // Normal examples.
        {"g:h", "g:h"},
        {"g", "http://a/b/c/g"},
        {"./g", "http://a/b/c/g"},
        {"g/", "http://a/b/c/g/"},
        {"/g", "http://a/g"},
        {"//g", "http://g"},
        {"?y", "http://a/b/c/d;p?y"},
        {"g?y", "http://a/b/c/g?y"},
        {"#s", "http://a/b/c/d;p?q#s"},
        {"g#s", "http://a/b/c/g#s"},
        {"", "http://a/b/c/d;p?q"},
        {".", "http://a/b/c/"},
        {"./", "http://a/b/c/"},
        {"..", "http://a/b/"},
        {"../", "http://a/b/"},
        {"../g", "http://a/b/g"},
        {"../..", "http://a/"},
        {"../../", "http://a/"},
        {"../../g", "http://a/g"},
        // Abnormal examples.
        {"../../../g", "http://a/g"},
        {"/./g", "http://a/g"},
        {"/../g", "http://a/g"},
        {"g.", "http://a/b/c/g."},
        {".g", "http://a/b/c/.g"},
        {"g..", "http://a/b/c/g.."},
        {"..g", "http://a/b/c/..g"},
        {"./../g", "http://a/b/g"},
        {"./g/.", "http://a/b/c/g/"},
        {"g/./h", "http://a/b/c/g/h"},
        {"g/../h", "http://a/b/c/h"},
        {"g;x=1/../y", "http://a/b/c/y"},
        {"g?y/./x", "http://a/b/c/g?y/./x"},
        {"g#s/../x", "http://a/b/c/g#s/../x"},
        {"http:g", "http:g"},
    };
    for (const auto& [reference, target] : cases) {
        EXPECT_EQ(resolve(base, reference), target) << "reference '" << reference << "'";
    }
}

// Where our rules depart from RFC 3986 on purpose.
TEST(ResolutionTest, KeptDepartures) {
    // base, reference, target, RFC 3986's target
    const std::vector<std::tuple<std::string, std::string, std::string, std::string>> cases = {
        // A base with an authority and an empty path: no dot removal.
        {"s://a", "g/../h", "s://a/g/../h", "s://a/h"},
        {"s://a?q", "./g", "s://a/./g", "s://a/g"},
        // The one absolute flag also serves a reference with a scheme.
        {"s://a/x", "t:a/../b", "t:/b", "t:b"},
        // The dot-segment scan does not see "." before a final "/".
        {"s://a/b/c", "g/./", "s://a/b/g/./", "s://a/b/g/"},
        {"s://a/b/c", "/./", "s://a/./", "s://a/"},
        // A relative list with ".." gives the root.
        {"a/b", "..", "/", ""},
    };
    for (const auto& [base, reference, target, rfc] : cases) {
        EXPECT_EQ(resolve(base, reference), target)
            << "'" << reference << "' against '" << base << "' (RFC 3986: '" << rfc << "')";
    }
}

// Found by fuzz_iri_pair: dot removal read the root's "/" and an empty segment as separators of
// the next segment, so ".." left a doubled slash ("s://h/a" with "b/../c" gave "s://h//c", and
// "s:/a" with it "s://c", a value whose text names a host) and "./" lost an empty segment
// ("s:e//f" with "./g" gave "s:e/g"). Every target's text reads back to an equal value.
TEST(ResolutionTest, DotSegmentsAfterTheRootOrAnEmptySegment) {
    const std::vector<std::tuple<std::string, std::string, std::string>> cases = {
        {"http://h/a", "b/../c", "http://h/c"},
        {"http://h/", "b/../c", "http://h/c"},
        {"http://h/a", "b/..", "http://h/"},
        {"s:/aze", "b/../c", "s:/c"},
        {"s:/./aze", "\u00D1/../x:/./az", "s:/x:/az"},
        {"s:e//f", "./g", "s:e//g"},
        {"s:e//f", ".", "s:e//"},
        {"s:e//f", "..", "s:e/"},
        {"s://h/a//b", "../c", "s://h/a/c"},
        {"s://h/a//b", "./c/../d", "s://h/a//d"},
        {"s://h/a//", "x/./y", "s://h/a//x/y"},
        {"s://h/a/", "b/../c", "s://h/a/c"},
        // Wherever a path holds an empty segment the result is RFC 3986 section 5.2.4's.
        {"s://h//a/b", "../c", "s://h//c"},
        {"s://h//a/b", "../../c", "s://h/c"},
        {"s://h//a/b", "./c/./../d", "s://h//a/d"},
        {"s://a/b///c", "../../../x", "s://a/x"},
        {"s://a/b///c", "..", "s://a/b//"},
        {"s://a/b", "x//../y", "s://a/x/y"},
        {"http://a/", "b/../c", "http://a/c"},
        {"a//b", ".", "a//"},
        {"a//b", "../../x", "x"},
        // A path left beginning "//" without an authority is written after "/.", and a relative
        // one whose first segment holds ":" after "./", so that the text reads back.
        {"x:", ".///C:::", "x:/.//C:::"},
        {"a:/", "/.//.", "a:/.//"},
        {"s:/a/b", "..//c", "s:/.//c"},
        {"a/b", "..//x", "/.//x"},
        {"a", "..//x", "x"},
        {"a/b", "../c:d", "./c:d"},
    };
    for (const auto& [base, reference, target] : cases) {
        EXPECT_EQ(resolve(base, reference), target)
            << "'" << reference << "' against '" << base << "'";
        const IRI resolved = IRI(u16(reference)).resolveAgainst(IRI(u16(base)));
        EXPECT_EQ(IRI(resolved.toString(false)), resolved) << target;
    }
}

TEST(ResolutionTest, ReferencesAgainstRelativeAndOddBases) {
    const std::vector<std::tuple<std::string, std::string, std::string>> cases = {
        {"a/b", "c", "a/c"},
        {"a/b", "../c", "c"},
        {"/a/b", "c?x#y", "/a/c?x#y"},
        {"//h", "c", "//h/c"},
        {"s:x", "y", "s:y"},
        {"s:a/b", "./c", "s:a/c"},
        {"s://h/a/./b/../c", "d", "s://h/a/d"},
        {"s://u@h:8080/p?q#f", "", "s://u@h:8080/p?q"},
        {"s://u@h:8080/p?q#f", "#g", "s://u@h:8080/p?q#g"},
        {"s://u@h:8080/p", "//v@k:1", "s://v@k:1"},
        {"", "", ""},
        {"", "a", "a"},
    };
    for (const auto& [base, reference, target] : cases) {
        EXPECT_EQ(resolve(base, reference), target)
            << "'" << reference << "' against '" << base << "'";
    }
}

TEST(ResolutionTest, TextPassesThroughUnchanged) {
    const std::vector<std::tuple<std::string, std::string, std::string>> cases = {
        {"s://a/b/c", "x%2Fy%3Fz%23w%25v%41%C3%A9?q%2F%3F%23%25%41%C3%A9",
         "s://a/b/x%2Fy%3Fz%23w%25v%41%C3%A9?q%2F%3F%23%25%41%C3%A9"},
        {"s://a/b/c", "../%2E%2E/g", "s://a/%2E%2E/g"},
        {"s://[::1]:80/b/c", "d/./e", "s://[::1]:80/b/d/e"},
        {"s://[::1]/b%2Fc/d", "?q", "s://[::1]/b%2Fc/d?q"},
        {"s://[::1]/b%2Fc/d", "", "s://[::1]/b%2Fc/d"},
        {"s://h/b", "//[::1]/%C3%A9", "s://[::1]/%C3%A9"},
        {"s://h/b", "g#%23%25", "s://h/g#%23%25"},
        {"http://例え.jp/パス/a", "../ファイル?問=い#断片", "http://例え.jp/ファイル?問=い#断片"},
    };
    for (const auto& [base, reference, target] : cases) {
        EXPECT_EQ(IRI(u16(reference)).resolveAgainst(IRI(u16(base))).toString(false), u16(target))
            << "'" << reference << "' against '" << base << "'";
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
