#include "iri/path/PathSegments.h"

#include <numeric>
#include <string>

#include <gtest/gtest.h>

namespace {

using namespace foundation::network::iri::detail;
using Segments = SegmentList;

TEST(PathSegmentsTest, SplitsEveryNonEmptyPathAndJoinsBack) {
    const struct {
        std::u16string path;
        Segments segments;
    } cases[] = {
        {u"/a/b/", {u"/a", u"/b", u"/"}},
        {u"a/b", {u"a", u"/b"}},
        {u"/", {u"/"}},
        {u"a", {u"a"}},
        {u"a/", {u"a", u"/"}},
        {u"//a/b", {u"//a", u"/b"}},  // a leading "//" stays with the segment after it
        // Empty inner segments become "/" elements instead of failing the split.
        {u"/a//b", {u"/a", u"/", u"/b"}},
        {u"/a//", {u"/a", u"/", u"/"}},
        {u"/x//", {u"/x", u"/", u"/"}},
        {u"//", {u"/", u"/"}},
        {u"///a", {u"/", u"/", u"/a"}},
        {u"a///b/", {u"a", u"/", u"/", u"/b", u"/"}},
        {u"/\u00e9t\u00e9/%2F/x y", {u"/\u00e9t\u00e9", u"/%2F", u"/x y"}},
    };
    for (const auto& c : cases) {
        Segments out{u"stale"};
        ASSERT_TRUE(splitPathIntoSegments(c.path, out)) << c.path.size();
        EXPECT_EQ(out, c.segments);
        EXPECT_EQ(std::accumulate(out.begin(), out.end(), std::u16string()), c.path);
    }
}

TEST(PathSegmentsTest, EmptyPathFailsAndLeavesTheListAlone) {
    Segments out{u"/kept"};
    EXPECT_FALSE(splitPathIntoSegments(u"", out));
    EXPECT_EQ(out, Segments{u"/kept"});
}

TEST(PathSegmentsTest, LongPathsSplitWithoutRecursion) {
    std::u16string path;
    for (int i = 0; i < 100000; ++i) {
        path += (i % 3 == 2) ? u"/" : u"/seg";
    }
    Segments out;
    ASSERT_TRUE(splitPathIntoSegments(path, out));
    EXPECT_EQ(out.size(), 100000u);
    EXPECT_EQ(std::accumulate(out.begin(), out.end(), std::u16string()), path);
}

TEST(PathSegmentsTest, DotSegmentsWithTheBlindSpotKept) {
    for (const std::u16string yes : {u"a/../b", u"./a", u"../a", u"/..", u".", u"..", u"./", u"/.",
                                     u"/a/.", u"/a/..", u"/a/../b", u"/a/./b", u"x/./y"}) {
        EXPECT_TRUE(containsDotSegments(yes)) << std::string(yes.begin(), yes.end());
    }
    // "/a/./" and "/./": the scan stops at the "." before the final "/"; resolution relies on it.
    for (const std::u16string no : {u"", u"/a/./", u"/./", u"a", u"/a.b/c", u"/.a", u"/a./",
                                    u"/...", u"a..", u"/a/b.", u".a"}) {
        EXPECT_FALSE(containsDotSegments(no)) << std::string(no.begin(), no.end());
    }
}

}  // namespace
