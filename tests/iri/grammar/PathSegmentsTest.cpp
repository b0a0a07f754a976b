#include "iri/grammar/PathSegments.h"

#include <numeric>

#include <gtest/gtest.h>

namespace {

using namespace foundation::network::iri::detail;
using Segments = std::vector<std::wstring>;

TEST(PathSegmentsTest, SplitsEveryNonEmptyPathAndJoinsBack) {
    const struct {
        std::wstring path;
        Segments segments;
    } cases[] = {
        {L"/a/b/", {L"/a", L"/b", L"/"}},
        {L"a/b", {L"a", L"/b"}},
        {L"/", {L"/"}},
        {L"a", {L"a"}},
        {L"a/", {L"a", L"/"}},
        {L"//a/b", {L"//a", L"/b"}},  // a leading "//" stays with the segment after it
        // Empty inner segments become "/" elements instead of failing the split.
        {L"/a//b", {L"/a", L"/", L"/b"}},
        {L"/a//", {L"/a", L"/", L"/"}},
        {L"/x//", {L"/x", L"/", L"/"}},
        {L"//", {L"/", L"/"}},
        {L"///a", {L"/", L"/", L"/a"}},
        {L"a///b/", {L"a", L"/", L"/", L"/b", L"/"}},
        {L"/\u00e9t\u00e9/%2F/x y", {L"/\u00e9t\u00e9", L"/%2F", L"/x y"}},
    };
    for (const auto& c : cases) {
        Segments out{L"stale"};
        ASSERT_TRUE(splitPathIntoSegments(c.path, out)) << c.path.size();
        EXPECT_EQ(out, c.segments);
        EXPECT_EQ(std::accumulate(out.begin(), out.end(), std::wstring()), c.path);
    }
}

TEST(PathSegmentsTest, EmptyPathFailsAndLeavesTheListAlone) {
    Segments out{L"/kept"};
    EXPECT_FALSE(splitPathIntoSegments(L"", out));
    EXPECT_EQ(out, Segments{L"/kept"});
}

TEST(PathSegmentsTest, LongPathsSplitWithoutRecursion) {
    std::wstring path;
    for (int i = 0; i < 100000; ++i) {
        path += (i % 3 == 2) ? L"/" : L"/seg";
    }
    Segments out;
    ASSERT_TRUE(splitPathIntoSegments(path, out));
    EXPECT_EQ(out.size(), 100000u);
    EXPECT_EQ(std::accumulate(out.begin(), out.end(), std::wstring()), path);
}

TEST(PathSegmentsTest, DotSegmentsWithTheBlindSpotKept) {
    for (const std::wstring yes : {L"a/../b", L"./a", L"../a", L"/..", L".", L"..", L"./", L"/.",
                                   L"/a/.", L"/a/..", L"/a/../b", L"/a/./b", L"x/./y"}) {
        EXPECT_TRUE(containsDotSegments(yes)) << std::string(yes.begin(), yes.end());
    }
    // "/a/./" and "/./": the scan stops at the "." before the final "/"; resolution relies on it.
    for (const std::wstring no : {L"", L"/a/./", L"/./", L"a", L"/a.b/c", L"/.a", L"/a./", L"/...",
                                  L"a..", L"/a/b.", L".a"}) {
        EXPECT_FALSE(containsDotSegments(no)) << std::string(no.begin(), no.end());
    }
}

TEST(PathSegmentsTest, PathDecoderKeepsTheEscapesThatWouldReshapeThePath) {
    const PathPercentDecoder decoder;
    const struct {
        std::wstring in;
        std::wstring out;
    } cases[] = {
        {L"/a%2Fb", L"/a/b"},
        {L"/a%3Fb%3f", L"/a%3Fb%3f"},  // "?" kept, digits in their own case
        {L"%41%20%25%23%5B%5D%7b%7D%60%22%3C%3E", L"A%20%25%23%5B%5D%7b%7D%60%22%3C%3E"},
        {L"%C3%A9", std::wstring{0xC3, 0xA9}},
        {L"%zz%4", L"%zz%4"},
        {L"", L""},
    };
    for (const auto& c : cases) {
        std::wstring out = L"stale";
        decoder.transcode(c.in, out);
        EXPECT_EQ(out, c.out);
    }
}

}  // namespace
