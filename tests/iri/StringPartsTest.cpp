#include "iri/StringParts.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>

namespace foundation::network::iri::detail {
namespace {

const Encoding kDecoded(0);
const Encoding kIri(1);
const Encoding kIriStrict(2);
const Encoding kUri(3);
const Encoding kUriStrict(4);

std::string messageOf(const std::function<void()>& f) {
    try {
        f();
    } catch (const std::runtime_error& e) {
        return e.what();
    }
    return "(no exception)";
}

TEST(StringParts, AbsentComponentsThrowWithTheirSuffix) {
    const StringParts parts;
    EXPECT_EQ(messageOf([&] { parts.getUserInfo(kIri); }), "Item not set: UserInfo");
    EXPECT_EQ(messageOf([&] { parts.getHost(kDecoded); }), "Item not set: Host");
    EXPECT_EQ(messageOf([&] { parts.getPath(kUri); }), "Item not set: Path");
    EXPECT_EQ(messageOf([&] { parts.getQuery(kIriStrict); }), "Item not set: Query");
    EXPECT_EQ(messageOf([&] { parts.getFragment(kUriStrict); }), "Item not set: Fragment");
    EXPECT_EQ(messageOf([&] { parts.getAuthority(kIri); }),
              "Item not set: Host: Host (in getAuthority)");
    EXPECT_THROW(parts.getHost(Encoding(5)), std::invalid_argument);
}

TEST(StringParts, EveryFormIsDerivedFromTheGivenOne) {
    struct Case {
        Encoding given;
        std::wstring value;
        std::wstring decoded, iri, uri;
    };
    const Case cases[] = {
        {kDecoded, L"\u00E9 @", L"\u00E9 @", L"\u00E9%20%40", L"%C3%A9%20%40"},
        {kIri, L"\u00E9%20%40", L"\u00E9 @", L"\u00E9%20%40", L"%C3%A9%20%40"},
        {kIriStrict, L"\u00E9%20%40", L"\u00E9 @", L"\u00E9%20%40", L"%C3%A9%20%40"},
        {kUri, L"%C3%A9%20%40", L"\u00E9 @", L"\u00E9%20%40", L"%C3%A9%20%40"},
        {kUriStrict, L"%C3%A9%3a", L"\u00E9:", L"\u00E9:", L"%C3%A9%3a"},
    };
    for (const auto& c : cases) {
        StringParts parts;
        parts.setUserInfo(c.value, c.given);
        parts.setHost(L"h", kIri);
        EXPECT_EQ(parts.getUserInfo(kDecoded), c.decoded);
        EXPECT_EQ(parts.getUserInfo(kIri), c.iri);
        EXPECT_EQ(parts.getUserInfo(kIriStrict), c.iri);
        EXPECT_EQ(parts.getUserInfo(kUri), c.uri);
        EXPECT_EQ(parts.getUserInfo(kUriStrict), c.uri);
        EXPECT_EQ(parts.getAuthority(kIri), c.iri + L"@h");
    }
}

TEST(StringParts, OptionChangesDropTheDerivedPathForms) {
    StringParts relative;
    relative.setPath(L"a:b//c", kDecoded);
    EXPECT_EQ(relative.getPath(kIri), L"a%3Ab//c");
    EXPECT_EQ(relative.getPath(kUri), L"a%3Ab//c");
    relative.setSchemePresent(true);
    EXPECT_EQ(relative.getPath(kIri), L"a:b//c");
    EXPECT_EQ(relative.getPath(kUri), L"a:b//c");

    StringParts parts;
    parts.setPath(L"//x", kDecoded);
    EXPECT_EQ(parts.getPath(kIri), L"/%2Fx");
    parts.setHost(L"h", kDecoded);
    EXPECT_EQ(parts.getPath(kIri), L"//x");
    EXPECT_EQ(parts.getPath(kDecoded), L"//x");

    // A new path takes the options of what precedes it.
    parts.setPath(L"//z", kDecoded);
    EXPECT_EQ(parts.getPath(kIri), L"//z");
}

TEST(StringParts, QueryOptionMakesTheDecodedFormOctets) {
    StringParts parts;
    parts.setQuery(L"\u00E9", kIri, true);
    EXPECT_EQ(parts.getQuery(kDecoded), std::wstring(L"\xC3\xA9"));
    parts.setQuery(L"\u00E9", kIri, false);
    EXPECT_EQ(parts.getQuery(kDecoded), std::wstring(L"\xC3\xA9"));  // options carry over
    StringParts plain;
    plain.setQuery(L"\u00E9", kIri, false);
    EXPECT_EQ(plain.getQuery(kDecoded), L"\u00E9");
}

TEST(StringParts, EqualityComparesComponentByComponent) {
    StringParts a;
    a.setPath(L"/a", kIri);
    StringParts b;
    b.setPath(L"/a", kDecoded);
    EXPECT_EQ(a, b);
    b.setQuery(L"", kIri, false);
    EXPECT_NE(a, b);
    a.setQuery(L"", kDecoded, false);
    EXPECT_EQ(a, b);
    a.setHost(L"h", kIri);
    b.setHost(L"H", kIri);
    EXPECT_NE(a, b);
    EXPECT_TRUE(StringParts() == StringParts());
}

}  // namespace
}  // namespace foundation::network::iri::detail
