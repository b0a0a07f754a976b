#include "iri/RelativePath.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace {

using foundation::network::iri::detail::minimalRelativePath;
using foundation::network::iri::detail::relativePath;

TEST(RelativePathTest, TargetAgainstBase) {
    // target, target is absolute, base, result
    const std::vector<std::tuple<std::wstring, bool, std::wstring, std::wstring>> cases = {
        {L"/a/b", true, L"/a/b", L""},
        {L"/a/b", true, L"", L"/a/b"},
        {L"/c/d", true, L"/x", L"c/d"},
        {L"/", true, L"/x", L"/"},
        {L"/c/d", true, L"/a/b", L"../c/d"},
        {L"/c", true, L"/a/b/", L"../../c"},
        {L"/a/c", true, L"/a/b/d", L"../c"},
        {L"/a/c", true, L"/a/b/e/", L"../../c"},
        // Kept: one ".." too few for a base two directories below the shared prefix.
        {L"/a/c", true, L"/a/b/e/d", L"../c"},
        {L"/a/c/d", true, L"/a/b", L"./c/d"},
        {L"/a/c", true, L"/a/", L"./c"},
        {L"/a/b", true, L"/a/b/c", L"../b"},
        {L"a/b", false, L"a/c", L"./b"},
        {L"b", false, L"a", L"../b"},
        // A colon in the first segment would read as a scheme.
        {L"/F:x/y", true, L"/b", L"./F:x/y"},
        {L"/a/F:x", true, L"/a/b", L"./F:x"},
        // The target's escapes stay exactly as written.
        {L"/a/%2F%3F%23%25%41%C3%A9", true, L"/a/b", L"./%2F%3F%23%25%41%C3%A9"},
        {L"/%2E%2E/x", true, L"/a/b", L"../%2E%2E/x"},
    };
    for (const auto& [target, absolute, base, expected] : cases) {
        EXPECT_EQ(relativePath(target, absolute, base), expected)
            << std::string(target.begin(), target.end()) << " against "
            << std::string(base.begin(), base.end());
    }
}

TEST(RelativePathTest, MinimalPathNamesTheLastSegment) {
    EXPECT_EQ(minimalRelativePath(L""), L".");
    EXPECT_EQ(minimalRelativePath(L"/a/b/"), L".");
    EXPECT_EQ(minimalRelativePath(L"/a/b/c"), L"./c");
    EXPECT_EQ(minimalRelativePath(L"c"), L"./c");
    EXPECT_EQ(minimalRelativePath(L"/a%2Fb"), L"./a%2Fb");
}

TEST(RelativePathTest, LongPathsStayLinear) {
    std::wstring base;
    std::wstring target;
    for (int i = 0; i < 100000; ++i) {
        base += L"/b" + std::to_wstring(i);
        target += L"/t" + std::to_wstring(i);
    }
    const std::wstring relative = relativePath(target, true, base);
    EXPECT_EQ(relative.size(), 3 * 99999 + target.size() - 1);
}

}  // namespace
