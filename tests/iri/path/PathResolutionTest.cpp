#include "iri/path/PathResolution.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "iri/path/DotSegments.h"
#include "iri/path/PathSegments.h"

namespace {

using foundation::network::iri::detail::joinSegments;
using foundation::network::iri::detail::removeDotSegments;
using foundation::network::iri::detail::removeDotSegmentsOfText;
using foundation::network::iri::detail::removeRelativePathSegments;
using foundation::network::iri::detail::resolvePath;
using foundation::network::iri::detail::SegmentList;
using foundation::network::iri::detail::splitPathIntoSegments;

std::string narrow(std::u16string_view text) {
    return {text.begin(), text.end()};
}

std::u16string ascii(const std::string& text) {
    return {text.begin(), text.end()};
}

struct ResolveCase {
    SegmentList list;
    std::u16string path;
    bool absolute;
    bool removeDots;
    SegmentList expected;
};

TEST(ResolvePathTest, AppendsAndRemovesDotsSegmentBySegment) {
    const std::vector<ResolveCase> cases = {
        // Plain append: a "/" element goes between a list and a relative path.
        {{u"/a"}, u"x", false, false, {u"/a", u"/", u"x"}},
        {{u"/a"}, u"/x", false, false, {u"/a", u"/x"}},
        {{u"/a", u"/"}, u"x", true, false, {u"/a", u"/", u"x"}},
        {{}, u"x", true, false, {u"x"}},
        {{u"/a"}, u"", true, false, {u"/a", u""}},
        // Short cuts.
        {{}, u".", true, true, {}},
        {{}, u"..", false, true, {}},
        {{}, u"./", true, true, {}},
        {{}, u"../", true, true, {}},
        {{u"/"}, u"..", true, true, {u"/"}},
        {{u"/"}, u"../", true, true, {u"/"}},
        {{u"/"}, u"./", true, true, {u"/"}},
        {{u"/a"}, u".", true, true, {u"/a", u"/"}},
        {{u"/a", u"/"}, u"./", true, true, {u"/a", u"/"}},
        {{u"/a"}, u"..", true, true, {u"/"}},
        {{u"/a", u"/b"}, u"..", true, true, {u"/a", u"/"}},
        {{u"/a", u"/b", u"/"}, u"../", true, true, {u"/a", u"/"}},
        // Kept: the short cut ignores the absolute flag, a relative list gives the root.
        {{u"a"}, u"..", false, true, {u"/"}},
        // General case (RFC 3986's examples run through IRI resolution in ResolutionTest).
        {{}, u"/./g", true, true, {u"/g"}},
        {{u"/b", u"/c"}, u"/./g", true, true, {u"/b", u"/c", u"/g"}},
        {{}, u"a/../b", false, true, {u"b"}},
        {{}, u"a/../b", true, true, {u"/b"}},
        {{}, u"a/..", true, true, {u"/"}},
        {{u"a"}, u"./b", false, true, {u"a", u"/b"}},
        {{u"a"}, u"../b", false, true, {u"b"}},
        {{u"/a"}, u"./b", true, true, {u"/a", u"/b"}},
        // A trailing "/" (the root too) joins the next segment, so that ".." removes both.
        {{u"/"}, u"b/../c", true, true, {u"/c"}},
        {{u"/a", u"/"}, u"b/../c", true, true, {u"/a", u"/c"}},
        {{u"a", u"/"}, u"./b", false, true, {u"a", u"/b"}},
        // Kept: a relative list with the absolute flag becomes absolute.
        {{u"a"}, u"./b", true, true, {u"/a", u"/b"}},
    };
    for (const auto& c : cases) {
        SegmentList list = c.list;
        resolvePath(c.path, list, c.absolute, c.removeDots);
        EXPECT_EQ(list, c.expected)
            << "path '" << narrow(c.path) << "' onto '" << narrow(joinSegments(c.list))
            << "' absolute " << c.absolute << " removeDots " << c.removeDots;
    }
}

TEST(RemoveDotSegmentsTest, Rfc3986Examples) {
    // RFC 3986 section 5.2.4's two worked examples, and ".." above the root.
    const std::vector<std::pair<std::u16string, std::u16string>> cases = {
        {u"/a/b/c/./../../g", u"/a/g"},
        {u"mid/content=5/../6", u"mid/6"},
        {u"/../a", u"/a"},
        {u"/a/b/..", u"/a/"},
        {u"/a/b/.", u"/a/b/"},
        {u"./a", u"a"},
        {u"../a/b", u"a/b"},
        {u"..", u""},
    };
    for (const auto& [path, expected] : cases) {
        SegmentList segments;
        ASSERT_TRUE(splitPathIntoSegments(path, segments));
        SegmentList queue = segments;
        SegmentList out;
        removeDotSegments(queue, out);
        EXPECT_TRUE(queue.empty());
        EXPECT_EQ(joinSegments(out), expected);
        EXPECT_EQ(removeDotSegmentsOfText(path), expected);
    }
    // Empty segments, which only the text form tells from a trailing slash.
    const std::vector<std::pair<std::u16string, std::u16string>> empties = {
        {u"//a/../c", u"//c"},
        {u"//a/../../c", u"/c"},
        {u"/b///../../../x", u"/x"},
        {u"/b///..", u"/b//"},
        {u"a//.", u"a//"},
        {u"/.//.", u"//"},
        {u".//x", u"/x"},
        {u"a/..//x", u"//x"},
        {u"//", u"//"},
        {u"/./../.", u"/"},
        {u".", u""},
    };
    for (const auto& [path, expected] : empties) {
        EXPECT_EQ(removeDotSegmentsOfText(path), expected) << narrow(path);
    }
}

TEST(RemoveRelativePathSegmentsTest, RemovesOnlyWhatTheScanSees) {
    const std::vector<std::tuple<std::u16string, bool, std::u16string>> cases = {
        {u"/a/../b", true, u"/b"},
        {u"a/../b", false, u"b"},
        {u"/a/b/c", true, u"/a/b/c"},
        {u"/a/b/../../..", true, u"/"},
        {u"a/..", false, u""},
        {u"", false, u""},
        // Kept: a "." just before a final "/" is not seen, so nothing is removed.
        {u"/a/./", true, u"/a/./"},
        {u"/./", true, u"/./"},
        // Escapes are text, never dots or delimiters.
        {u"/a/%2E%2E/b", true, u"/a/%2E%2E/b"},
        {u"/a%2F../b/../c", true, u"/a%2F../c"},
    };
    for (const auto& [path, absolute, expected] : cases) {
        EXPECT_EQ(removeRelativePathSegments(path, absolute), expected);
    }
}

TEST(ResolvePathTest, LongPathsResolveInOnePass) {
    // 200000 segments, half of them "..": a quadratic erase-at-front would not finish.
    std::u16string segments;
    for (int i = 0; i < 100000; ++i) {
        segments += u"/s" + ascii(std::to_string(i));
    }
    std::u16string parents;
    for (int i = 0; i < 99999; ++i) {
        parents += u"../";
    }
    EXPECT_EQ(removeRelativePathSegments(segments + u"/" + parents + u"t", true), u"/s0/t");

    SegmentList list;
    splitPathIntoSegments(segments, list);
    resolvePath(u"x/./y/../z", list, true, true);
    EXPECT_EQ(list.size(), 100002u);
    EXPECT_EQ(list.back(), u"/z");
    resolvePath(parents + u"w", list, true, true);
    EXPECT_EQ(joinSegments(list), u"/s0/s1/s2/w");
}

}  // namespace
