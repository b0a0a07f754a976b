#include "iri/path/RelativePath.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace {

using foundation::network::iri::detail::minimalRelativePath;
using foundation::network::iri::detail::relativePath;

std::u16string ascii(const std::string& text) {
    return {text.begin(), text.end()};
}

TEST(RelativePathTest, TargetAgainstBase) {
    // target, target is absolute, base, result
    const std::vector<std::tuple<std::u16string, bool, std::u16string, std::u16string>> cases = {
        {u"/a/b", true, u"/a/b", u""},
        {u"/a/b", true, u"", u"/a/b"},
        {u"/c/d", true, u"/x", u"c/d"},
        {u"/", true, u"/x", u"/"},
        {u"/c/d", true, u"/a/b", u"../c/d"},
        {u"/c", true, u"/a/b/", u"../../c"},
        {u"/a/c", true, u"/a/b/d", u"../c"},
        {u"/a/c", true, u"/a/b/e/", u"../../c"},
        // Kept: one ".." too few for a base two directories below the shared prefix.
        {u"/a/c", true, u"/a/b/e/d", u"../c"},
        {u"/a/c/d", true, u"/a/b", u"./c/d"},
        {u"/a/c", true, u"/a/", u"./c"},
        {u"/a/b", true, u"/a/b/c", u"../b"},
        {u"a/b", false, u"a/c", u"./b"},
        {u"b", false, u"a", u"../b"},
        // A colon in the first segment would read as a scheme.
        {u"/F:x/y", true, u"/b", u"./F:x/y"},
        {u"/a/F:x", true, u"/a/b", u"./F:x"},
        // The target's escapes stay exactly as written.
        {u"/a/%2F%3F%23%25%41%C3%A9", true, u"/a/b", u"./%2F%3F%23%25%41%C3%A9"},
        {u"/%2E%2E/x", true, u"/a/b", u"../%2E%2E/x"},
    };
    for (const auto& [target, absolute, base, expected] : cases) {
        EXPECT_EQ(relativePath(target, absolute, base), expected)
            << std::string(target.begin(), target.end()) << " against "
            << std::string(base.begin(), base.end());
    }
}

TEST(RelativePathTest, MinimalPathNamesTheLastSegment) {
    EXPECT_EQ(minimalRelativePath(u""), u".");
    EXPECT_EQ(minimalRelativePath(u"/a/b/"), u".");
    EXPECT_EQ(minimalRelativePath(u"/a/b/c"), u"./c");
    EXPECT_EQ(minimalRelativePath(u"c"), u"./c");
    EXPECT_EQ(minimalRelativePath(u"/a%2Fb"), u"./a%2Fb");
}

TEST(RelativePathTest, LongPathsStayLinear) {
    std::u16string base;
    std::u16string target;
    for (int i = 0; i < 100000; ++i) {
        base += u"/b" + ascii(std::to_string(i));
        target += u"/t" + ascii(std::to_string(i));
    }
    const std::u16string relative = relativePath(target, true, base);
    EXPECT_EQ(relative.size(), 3 * 99999 + target.size() - 1);
}

}  // namespace
