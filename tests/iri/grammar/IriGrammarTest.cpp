#include "iri/grammar/IriGrammar.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>
#include <boost/url/parse.hpp>

#include "iri/grammar/Unicode.h"
#include "support/Corpus.h"

namespace {

using namespace foundation::network::iri::detail;
using irigrammar::parseScheme;
using irigrammar::parseString;
using Component = std::optional<std::wstring>;
constexpr std::nullopt_t none = std::nullopt;

struct Found {
    Component scheme, userInfo, host, port, path, query, fragment;
    bool operator==(const Found&) const = default;
};

// The grammar over code points, or over UTF-16 units with the components read back as code
// points.
template <class String>
std::optional<Found> parseAs(const String& text) {
    Parts<String> parts;
    if (!parseString<String>(text.begin(), text.end(), parts)) {
        return std::nullopt;
    }
    const auto get = [](const auto& range) -> Component {
        if (!range.present) {
            return none;
        }
        if constexpr (std::is_same_v<String, std::u16string>) {
            return utf16ToCodePoints(std::u16string(range.first, range.last));
        } else {
            return std::wstring(range.first, range.last);
        }
    };
    return Found{get(parts.scheme), get(parts.userInfo), get(parts.host),    get(parts.port),
                 get(parts.path),   get(parts.query),    get(parts.fragment)};
}

// What UTF-16 cannot hold: a surrogate or a value beyond U+10FFFF.
bool notScalar(wchar_t c) {
    const auto value = static_cast<std::uint32_t>(c);
    return (value >= 0xD800 && value <= 0xDFFF) || value > 0x10FFFF;
}

std::string show(const std::wstring& text);

// Every case runs both ways: values are parsed from UTF-16, and the two must agree.
std::optional<Found> parse(const std::wstring& text) {
    std::optional<Found> found = parseAs(text);
    if (std::none_of(text.begin(), text.end(), notScalar)) {
        EXPECT_EQ(parseAs(codePointsToUtf16(text)), found) << show(text);
    }
    return found;
}

std::string show(const std::wstring& text) {
    return codePointsToUtf8(text);
}

void PrintTo(const Found& f, std::ostream* os) {
    for (const auto* c :
         {&f.scheme, &f.userInfo, &f.host, &f.port, &f.path, &f.query, &f.fragment}) {
        *os << (*c ? "\"" + show(**c) + "\"" : std::string("absent")) << " ";
    }
}

// Every accepted reference with every component: scheme, user info, host, port, path, query,
// fragment (absent or its text).
TEST(IriGrammarTest, AcceptedReferencesAndTheirComponents) {
    const struct {
        std::wstring text;
        Found parts;
    } cases[] = {
        {L"", {none, none, none, none, L"", none, none}},
        {L"a:", {L"a", none, none, none, L"", none, none}},
        {L"//", {none, none, L"", none, L"", none, none}},
        {L"//@", {none, L"", L"", none, L"", none, none}},
        {L"///a", {none, none, L"", none, L"/a", none, none}},
        {L"x://[::1]:80/p?q#f", {L"x", none, L"[::1]", L"80", L"/p", L"q", L"f"}},
        {L"http://user:pw@example.com:8080/a/b?c=d&e#top",
         {L"http", L"user:pw", L"example.com", L"8080", L"/a/b", L"c=d&e", L"top"}},
        {L"x://1.2.3.4/", {L"x", none, L"1.2.3.4", none, L"/", none, none}},
        {L"x://1.2.3.4:8/", {L"x", none, L"1.2.3.4", L"8", L"/", none, none}},
        {L"x://1.2.3.4x/", {L"x", none, L"1.2.3.4x", none, L"/", none, none}},
        {L"x://01.2.3.4/", {L"x", none, L"01.2.3.4", none, L"/", none, none}},
        {L"x://1.2.3.256/", {L"x", none, L"1.2.3.256", none, L"/", none, none}},
        {L"x://1.2.3.4%41/", {L"x", none, L"1.2.3.4%41", none, L"/", none, none}},
        {L"x://1.2.3/", {L"x", none, L"1.2.3", none, L"/", none, none}},
        {L"x://1.2.3.4@h", {L"x", L"1.2.3.4", L"h", none, L"", none, none}},
        {L"x://h:/", {L"x", none, L"h", L"", L"/", none, none}},
        {L"x://:80", {L"x", none, L"", L"80", L"", none, none}},
        {L"x://u@", {L"x", L"u", L"", none, L"", none, none}},
        {L"x://u:p:q@h", {L"x", L"u:p:q", L"h", none, L"", none, none}},
        {L"x://h?q#f", {L"x", none, L"h", none, L"", L"q", L"f"}},
        {L"x://h#", {L"x", none, L"h", none, L"", none, L""}},
        {L"x:?", {L"x", none, none, none, L"", L"", none}},
        {L"x:/a//b/", {L"x", none, none, none, L"/a//b/", none, none}},
        {L"x:/", {L"x", none, none, none, L"/", none, none}},
        {L"mailto:a@b.c", {L"mailto", none, none, none, L"a@b.c", none, none}},
        {L"urn:isbn:0451450523", {L"urn", none, none, none, L"isbn:0451450523", none, none}},
        {L"x:a:b/c", {L"x", none, none, none, L"a:b/c", none, none}},
        {L"a+b.c-d:x", {L"a+b.c-d", none, none, none, L"x", none, none}},
        {L"?q/?#f/?", {none, none, none, none, L"", L"q/?", L"f/?"}},
        {L"#", {none, none, none, none, L"", none, L""}},
        {L"/a/b", {none, none, none, none, L"/a/b", none, none}},
        {L"./a:b", {none, none, none, none, L"./a:b", none, none}},
        {L"a@b/c:d", {none, none, none, none, L"a@b/c:d", none, none}},
        {L"//h:80", {none, none, L"h", L"80", L"", none, none}},
        {L"//[::1]", {none, none, L"[::1]", none, L"", none, none}},
        // A bare "%" in paths, queries and fragments (also in a relative first segment).
        {L"a/b%zz", {none, none, none, none, L"a/b%zz", none, none}},
        {L"%zz/x", {none, none, none, none, L"%zz/x", none, none}},
        {L"x:/%?%#%", {L"x", none, none, none, L"/%", L"%", L"%"}},
        {L"x://h/%4", {L"x", none, L"h", none, L"/%4", none, none}},
        // Unicode classes: letters and decimal digits of any script, fullwidth hex digits.
        {L"\u00e4\u0663+:x", {L"\u00e4\u0663+", none, none, none, L"x", none, none}},
        {L"x://\u00fcber.\u4e2d\u6587/\u00e9?\u00e8#\u00ea",
         {L"x", none, L"\u00fcber.\u4e2d\u6587", none, L"/\u00e9", L"\u00e8", L"\u00ea"}},
        {L"x://h:\u0663\u0660/", {L"x", none, L"h", L"\u0663\u0660", L"/", none, none}},
        {L"x://u%\uff26\uff26@h", {L"x", L"u%\uff26\uff26", L"h", none, L"", none, none}},
        {L"x://[\uff26\uff26::1]", {L"x", none, L"[\uff26\uff26::1]", none, L"", none, none}},
        {L"x://[v1.a:b]/", {L"x", none, L"[v1.a:b]", none, L"/", none, none}},
        {L"x://[vF.\u00e9]/", {L"x", none, L"[vF.\u00e9]", none, L"/", none, none}},
        // Private use: in queries only, with the extra range %xE0000-E0FFF.
        {L"x:?\ue000\U000E0000\U000F0000\U0010FFFD",
         {L"x", none, none, none, L"", L"\ue000\U000E0000\U000F0000\U0010FFFD", none}},
        {L"x:/\U0001F600\U000E1000",
         {L"x", none, none, none, L"/\U0001F600\U000E1000", none, none}},
    };
    for (const auto& c : cases) {
        const auto found = parse(c.text);
        ASSERT_TRUE(found.has_value()) << show(c.text);
        EXPECT_EQ(*found, c.parts) << show(c.text);
    }
}

TEST(IriGrammarTest, RejectedReferences) {
    const std::vector<std::vector<std::wstring>> groups = {
        // Spaces, controls and characters never allowed.
        {L" a", L"a ", L"a b", L"x://h /", L"x:/a\tb", L"x:?a b", L"x:/a\"b", L"x:/<a>", L"x:/a\\b",
         L"x:/{a}", L"x:/a|b", L"x:/a^b", L"x:/a`b", L"x://h[/", L"x:/a[b]"},
        // Bad escapes in the authority, bad ports, delimiters out of place, bad schemes.
        {L"x://u%zz@h/", L"x://h%zz/", L"x://h%4/", L"a:b#c#d", L"x://h:8a/", L"x://h:80:90/",
         L"1a:b", L":a", L"x://u@h@i", L"x://u@1.2.3.4@h"},
        // IP literals.
        {L"x://[::1", L"x://[::1]x/", L"x://[]/", L"x://[V1.a]/", L"x://[v.a]/", L"x://[v1.]/",
         L"x://[v1a]/"},
        // Noncharacters, specials, and private use outside the query.
        {L"x://h/\ufdd0", L"x://h/\ufff0", L"x:/\ue000", L"x:#\ue000", L"x:/\U000E0000",
         L"x:#\U0010FFFD"},
        // Code units that are no characters: a surrogate, beyond U+10FFFF, -1, a NUL.
        {std::wstring(L"x:/a") + wchar_t(0xD800), std::wstring(L"x:/a") + wchar_t(0x110000),
         std::wstring(L"x:?a") + wchar_t(-1), std::wstring(L"x:/a\0b", 6)},
    };
    for (const auto& group : groups) {
        for (const auto& text : group) {
            EXPECT_FALSE(parse(text).has_value()) << show(text);
        }
    }
}

TEST(IriGrammarTest, UnpairedSurrogatesMatchNoRule) {
    for (const std::u16string text :
         {u"a:\xD800",
          u"a:b\xDC00"
          u"c",
          u"//h\xD800/", u"\xDFFF\xD800", u"a:?\xD83D", u"a:#\xDE00x"}) {
        EXPECT_EQ(parseAs(text), std::nullopt);
    }
    // A pair is one code point of its class: U+1F600 is a ucschar, U+F0000 an iprivate (query
    // only).
    EXPECT_EQ(parseAs(std::u16string(u"a:\xD83D\xDE00?\xDB80\xDC00")),
              (Found{L"a", none, none, none, L"\U0001F600", L"\U000F0000", none}));
    EXPECT_EQ(parseAs(std::u16string(u"a:\xDB80\xDC00")), std::nullopt);
}

TEST(IriGrammarTest, Ipv6AlternativesInOrder) {
    const std::vector<std::vector<std::wstring>> accepted = {
        // One address per alternative of RFC 3986's IPv6address rule, in its order.
        {L"1:2:3:4:5:6:7:8", L"1:2:3:4:5:6:1.2.3.4", L"::2:3:4:5:6:7:8", L"::2:3:4:5:6:1.2.3.4",
         L"1::3:4:5:6:7:8", L"::3:4:5:6:7:8", L"1:2::4:5:6:7:8", L"1:2:3::5:6:7:8",
         L"1:2:3:4::6:7:8", L"1:2:3:4:5::7:8", L"1:2:3:4:5:6::8", L"1:2:3:4:5:6:7::"},
        {L"::", L"::1", L"1::", L"1::8", L"fe80::1:2:3:4", L"::ffff:1.2.3.4", L"::1.2.3.4",
         L"1:2:3::1.2.3.4", L"ABCD:ef01::2", L"0000:0:00:000::1"},
    };
    for (const auto& group : accepted) {
        for (const auto& address : group) {
            const auto found = parse(L"x://[" + address + L"]/");
            ASSERT_TRUE(found.has_value()) << show(address);
            EXPECT_EQ(found->host, L"[" + address + L"]");
        }
    }
    const std::wstring rejected[] = {
        L"1:2:3:4:5:6:7:8:9", L"1:2:3:4:5:6:7", L"1:::2",      L"12345::", L"1::2::3",
        L"::1.2.3",           L"::1.2.3.256",   L"::01.2.3.4", L"g::",     L":1::",
        L"1:2:3:4:5:6:7:8::", L"::1.2.3.4:5",   L"1",          L"",
    };
    for (const auto& address : rejected) {
        EXPECT_FALSE(parse(L"x://[" + address + L"]/").has_value()) << show(address);
    }
}

TEST(IriGrammarTest, SchemeAlone) {
    for (const std::wstring good : {L"a", L"a+b.c-d", L"http", L"\u00e9t\u00e9", L"a\u0663"}) {
        EXPECT_TRUE(parseScheme<std::wstring>(good.begin(), good.end())) << show(good);
    }
    for (const std::wstring bad : {L"", L"1a", L"a:", L"+a", L"a b", L"a_b", L"a/"}) {
        EXPECT_FALSE(parseScheme<std::wstring>(bad.begin(), bad.end())) << show(bad);
    }
}

// Every line of the corpora is an IRI reference whose components give the line back.
TEST(IriGrammarTest, CorporaParseAndReassemble) {
    for (const char* corpus : {"urls.txt", "iris.txt"}) {
        const auto lines = fntest::readLines(corpus);
        ASSERT_FALSE(lines.empty());
        for (const auto& line : lines) {
            const std::wstring text = utf8ToCodePoints(line);
            const auto f = parse(text);
            ASSERT_TRUE(f.has_value()) << line;
            std::wstring joined;
            if (f->scheme)
                joined += *f->scheme + L":";
            if (f->host)
                joined += L"//";
            if (f->userInfo)
                joined += *f->userInfo + L"@";
            if (f->host)
                joined += *f->host;
            if (f->port)
                joined += L":" + *f->port;
            joined += f->path.value_or(L"<no path>");
            if (f->query)
                joined += L"?" + *f->query;
            if (f->fragment)
                joined += L"#" + *f->fragment;
            EXPECT_EQ(joined, text) << line;
        }
    }
}

// On ASCII URLs the grammar finds the same components as Boost.URL's RFC 3986 parser.
TEST(IriGrammarTest, AgreesWithBoostUrlOnUrls) {
    const auto component = [](bool present, boost::core::string_view text) -> Component {
        return present ? Component(std::wstring(text.begin(), text.end())) : none;
    };
    for (const auto& line : fntest::readLines("urls.txt")) {
        const auto url = boost::urls::parse_uri_reference(line);
        ASSERT_TRUE(url.has_value()) << line;
        const Found expected{component(url->has_scheme(), url->scheme()),
                             component(url->has_userinfo(), url->encoded_userinfo()),
                             component(url->has_authority(), url->encoded_host()),
                             component(url->has_port(), url->port()),
                             component(true, url->encoded_path()),
                             component(url->has_query(), url->encoded_query()),
                             component(url->has_fragment(), url->encoded_fragment())};
        EXPECT_EQ(parse(std::wstring(line.begin(), line.end())), expected) << line;
    }
}

// Repetitions run as loops: a megabyte-long component does not exhaust the stack.
TEST(IriGrammarTest, LongComponentsParseWithoutRecursion) {
    std::wstring path = L"x://h";
    while (path.size() < (1u << 20)) {
        path += L"/segment%41";
    }
    const auto found = parse(path + L"?" + std::wstring(1u << 20, L'q'));
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(found->path->size(), path.size() - 5);
    EXPECT_EQ(found->query->size(), 1u << 20);
}

// The shared grammar is built once and read by many threads at once.
TEST(IriGrammarTest, ConcurrentParsesAgree) {
    const auto lines = fntest::readLines("iris.txt", 400);
    std::vector<std::wstring> texts;
    for (const auto& line : lines) {
        texts.push_back(utf8ToCodePoints(line));
    }
    std::vector<int> failures(4, 0);
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&, t] {
            for (const auto& text : texts) {
                failures[t] += parse(text).has_value() ? 0 : 1;
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(failures, std::vector<int>(4, 0));
}

}  // namespace
