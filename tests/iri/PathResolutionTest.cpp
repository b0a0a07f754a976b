#include "iri/PathResolution.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "iri/grammar/PathSegments.h"

namespace {

using foundation::network::iri::detail::joinSegments;
using foundation::network::iri::detail::removeDotSegments;
using foundation::network::iri::detail::removeDotSegmentsOfText;
using foundation::network::iri::detail::removeRelativePathSegments;
using foundation::network::iri::detail::resolvePath;
using foundation::network::iri::detail::SegmentList;
using foundation::network::iri::detail::splitPathIntoSegments;

std::string narrow(const std::wstring& text) {
    return {text.begin(), text.end()};
}

struct ResolveCase {
    SegmentList list;
    std::wstring path;
    bool absolute;
    bool removeDots;
    SegmentList expected;
};

TEST(ResolvePathTest, AppendsAndRemovesDotsSegmentBySegment) {
    const std::vector<ResolveCase> cases = {
        // Plain append: a "/" element goes between a list and a relative path.
        {{L"/a"}, L"x", false, false, {L"/a", L"/", L"x"}},
        {{L"/a"}, L"/x", false, false, {L"/a", L"/x"}},
        {{L"/a", L"/"}, L"x", true, false, {L"/a", L"/", L"x"}},
        {{}, L"x", true, false, {L"x"}},
        {{L"/a"}, L"", true, false, {L"/a", L""}},
        // Short cuts.
        {{}, L".", true, true, {}},
        {{}, L"..", false, true, {}},
        {{}, L"./", true, true, {}},
        {{}, L"../", true, true, {}},
        {{L"/"}, L"..", true, true, {L"/"}},
        {{L"/"}, L"../", true, true, {L"/"}},
        {{L"/"}, L"./", true, true, {L"/"}},
        {{L"/a"}, L".", true, true, {L"/a", L"/"}},
        {{L"/a", L"/"}, L"./", true, true, {L"/a", L"/"}},
        {{L"/a"}, L"..", true, true, {L"/"}},
        {{L"/a", L"/b"}, L"..", true, true, {L"/a", L"/"}},
        {{L"/a", L"/b", L"/"}, L"../", true, true, {L"/a", L"/"}},
        // Kept: the short cut ignores the absolute flag, a relative list gives the root.
        {{L"a"}, L"..", false, true, {L"/"}},
        // General case (RFC 3986's examples run through IRI resolution in ResolutionTest).
        {{}, L"/./g", true, true, {L"/g"}},
        {{L"/b", L"/c"}, L"/./g", true, true, {L"/b", L"/c", L"/g"}},
        {{}, L"a/../b", false, true, {L"b"}},
        {{}, L"a/../b", true, true, {L"/b"}},
        {{}, L"a/..", true, true, {L"/"}},
        {{L"a"}, L"./b", false, true, {L"a", L"/b"}},
        {{L"a"}, L"../b", false, true, {L"b"}},
        {{L"/a"}, L"./b", true, true, {L"/a", L"/b"}},
        // A trailing "/" (the root too) joins the next segment, so that ".." removes both.
        {{L"/"}, L"b/../c", true, true, {L"/c"}},
        {{L"/a", L"/"}, L"b/../c", true, true, {L"/a", L"/c"}},
        {{L"a", L"/"}, L"./b", false, true, {L"a", L"/b"}},
        // Kept: a relative list with the absolute flag becomes absolute.
        {{L"a"}, L"./b", true, true, {L"/a", L"/b"}},
    };
    for (const auto& c : cases) {
        SegmentList list = c.list;
        EXPECT_TRUE(resolvePath(c.path, list, c.absolute, c.removeDots));
        EXPECT_EQ(list, c.expected)
            << "path '" << narrow(c.path) << "' onto '" << narrow(joinSegments(c.list))
            << "' absolute " << c.absolute << " removeDots " << c.removeDots;
    }
}

TEST(RemoveDotSegmentsTest, Rfc3986Examples) {
    // RFC 3986 section 5.2.4's two worked examples, and ".." above the root.
    const std::vector<std::pair<std::wstring, std::wstring>> cases = {
        {L"/a/b/c/./../../g", L"/a/g"},
        {L"mid/content=5/../6", L"mid/6"},
        {L"/../a", L"/a"},
        {L"/a/b/..", L"/a/"},
        {L"/a/b/.", L"/a/b/"},
        {L"./a", L"a"},
        {L"../a/b", L"a/b"},
        {L"..", L""},
    };
    for (const auto& [path, expected] : cases) {
        SegmentList segments;
        ASSERT_TRUE(splitPathIntoSegments(path, segments));
        std::deque<std::wstring> queue(segments.begin(), segments.end());
        SegmentList out;
        removeDotSegments(queue, out);
        EXPECT_TRUE(queue.empty());
        EXPECT_EQ(joinSegments(out), expected);
        EXPECT_EQ(removeDotSegmentsOfText(path), expected);
    }
    // Empty segments, which only the text form tells from a trailing slash.
    const std::vector<std::pair<std::wstring, std::wstring>> empties = {
        {L"//a/../c", L"//c"},
        {L"//a/../../c", L"/c"},
        {L"/b///../../../x", L"/x"},
        {L"/b///..", L"/b//"},
        {L"a//.", L"a//"},
        {L"/.//.", L"//"},
        {L".//x", L"/x"},
        {L"a/..//x", L"//x"},
        {L"//", L"//"},
        {L"/./../.", L"/"},
        {L".", L""},
    };
    for (const auto& [path, expected] : empties) {
        EXPECT_EQ(removeDotSegmentsOfText(path), expected) << narrow(path);
    }
}

TEST(RemoveRelativePathSegmentsTest, RemovesOnlyWhatTheScanSees) {
    const std::vector<std::tuple<std::wstring, bool, std::wstring>> cases = {
        {L"/a/../b", true, L"/b"},
        {L"a/../b", false, L"b"},
        {L"/a/b/c", true, L"/a/b/c"},
        {L"/a/b/../../..", true, L"/"},
        {L"a/..", false, L""},
        {L"", false, L""},
        // Kept: a "." just before a final "/" is not seen, so nothing is removed.
        {L"/a/./", true, L"/a/./"},
        {L"/./", true, L"/./"},
        // Escapes are text, never dots or delimiters.
        {L"/a/%2E%2E/b", true, L"/a/%2E%2E/b"},
        {L"/a%2F../b/../c", true, L"/a%2F../c"},
    };
    for (const auto& [path, absolute, expected] : cases) {
        EXPECT_EQ(removeRelativePathSegments(path, absolute), expected);
    }
}

TEST(ResolvePathTest, LongPathsResolveInOnePass) {
    // 200000 segments, half of them "..": a quadratic erase-at-front would not finish.
    std::wstring segments;
    for (int i = 0; i < 100000; ++i) {
        segments += L"/s" + std::to_wstring(i);
    }
    std::wstring parents;
    for (int i = 0; i < 99999; ++i) {
        parents += L"../";
    }
    EXPECT_EQ(removeRelativePathSegments(segments + L"/" + parents + L"t", true), L"/s0/t");

    SegmentList list;
    splitPathIntoSegments(segments, list);
    resolvePath(L"x/./y/../z", list, true, true);
    EXPECT_EQ(list.size(), 100002u);
    EXPECT_EQ(list.back(), L"/z");
    resolvePath(parents + L"w", list, true, true);
    EXPECT_EQ(joinSegments(list), L"/s0/s1/s2/w");
}

}  // namespace
