#include "iri/codecs/ComponentCodecs.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "iri/grammar/Unicode.h"
#include "support/Corpus.h"

namespace foundation::network::iri::detail {
namespace {

constexpr ComponentKind kAllKinds[] = {ComponentKind::UserInfo, ComponentKind::Host,
                                       ComponentKind::Path, ComponentKind::Query,
                                       ComponentKind::Fragment};

TEST(ComponentCodecs, ToUriEscapesEverythingButPrintableAsciiInUpperCase) {
    EXPECT_EQ(iriToUri(L"\u00E9"), L"%C3%A9");
    EXPECT_EQ(iriToUri(L"a b"), L"a%20b");
    EXPECT_EQ(iriToUri(L"\U0001F600"), L"%F0%9F%98%80");
    EXPECT_EQ(iriToUri(L"\x7F\x01"), L"%7F%01");
    // Escapes already present survive in their own case.
    EXPECT_EQ(iriToUri(L"%c3%a9/%zz"), L"%c3%a9/%zz");
}

struct UriToIriCase {
    ComponentKind kind;
    std::wstring uri;
    std::wstring iri;
};

TEST(ComponentCodecs, UriToIriKeepsTheDoNotDecodeEscapes) {
    const std::vector<UriToIriCase> cases = {
        {ComponentKind::UserInfo, L"a%3Ab", L"a:b"},
        {ComponentKind::UserInfo, L"a%40b", L"a%40b"},
        {ComponentKind::UserInfo, L"a%3bb%3D", L"a%3bb%3D"},
        {ComponentKind::Host, L"a%3Ab", L"a%3Ab"},
        {ComponentKind::Host, L"%C3%A9x", L"\u00E9x"},
        {ComponentKind::Path, L"%2F", L"/"},
        {ComponentKind::Path, L"%3F", L"%3F"},
        {ComponentKind::Path, L"a%20b%25", L"a%20b%25"},
        {ComponentKind::Path, L"%c3%a9", L"\u00E9"},
        {ComponentKind::Query, L"%E2%80%8E", L"%E2%80%8E"},
        {ComponentKind::Query, L"%3F%2F%23", L"?/%23"},
        {ComponentKind::Query, L"%EE%80%80", L"%EE%80%80"},
        {ComponentKind::Fragment, L"%23%22", L"#%22"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(uriToIri(c.kind, {}, c.uri), c.iri) << static_cast<int>(c.kind);
    }
}

TEST(ComponentCodecs, DecodingResolvesEveryEscape) {
    for (const ComponentKind kind : kAllKinds) {
        EXPECT_EQ(iriToDecoded(kind, {}, L"a%40b%25%2F%20%3F\u00E9"), L"a@b%/ ?\u00E9");
        EXPECT_EQ(uriToDecoded(kind, {}, L"%C3%A9%3a"), L"\u00E9:");
    }
}

TEST(ComponentCodecs, MalformedEscapesPassThroughUnchanged) {
    for (const ComponentKind kind : kAllKinds) {
        EXPECT_EQ(iriToUri(L"a%zz%4"), L"a%zz%4");
        EXPECT_EQ(uriToIri(kind, {}, L"a%zz%4"), L"a%zz%4");
        EXPECT_EQ(iriToDecoded(kind, {}, L"a%zz%4"), L"a%zz%4");
        EXPECT_EQ(uriToDecoded(kind, {}, L"a%zz%4"), L"a%zz%4");
    }
}

TEST(ComponentCodecs, BytesThatAreNotUtf8StayEscaped) {
    const std::vector<std::pair<std::wstring, std::wstring>> cases = {
        {L"a%FFb", L"a%FFb"},                        // never valid
        {L"%C3", L"%C3"},                            // cut short
        {L"%C3%A9%C3", L"\u00E9%C3"},                // valid part decoded, the rest kept
        {L"%ED%A0%80", L"%ED%A0%80"},                // an encoded surrogate
        {L"%F8%88%80%80%80x", L"%F8%88%80%80%80x"},  // a five-byte form
        {L"%ff", L"%FF"},                            // repaired bytes are written upper case
    };
    for (const auto& [in, out] : cases) {
        EXPECT_EQ(iriToDecoded(ComponentKind::Path, {}, in), out)
            << std::string(in.begin(), in.end());
        EXPECT_EQ(uriToIri(ComponentKind::Path, {}, in), out) << std::string(in.begin(), in.end());
    }
}

struct DecodedToIriCase {
    ComponentKind kind;
    ComponentOptions options;
    std::wstring decoded;
    std::wstring iri;
};

TEST(ComponentCodecs, DecodedToIriEscapesWhatTheComponentCannotHoldRaw) {
    const ComponentOptions none;
    const ComponentOptions scheme{true, false, false, false};
    const ComponentOptions host{false, false, true, false};
    const ComponentOptions octets{false, false, false, true};
    const std::vector<DecodedToIriCase> cases = {
        {ComponentKind::UserInfo, none, L"a@b:c;d=%", L"a%40b:c%3Bd%3D%25"},
        {ComponentKind::Host, none, L"a:b@c", L"a%3Ab%40c"},
        {ComponentKind::Host, none, L"[::1]", L"[::1]"},
        {ComponentKind::Host, none, L"[v1.x:y]", L"[v1.x:y]"},
        {ComponentKind::Host, none, L"[zz]", L"%5Bzz%5D"},
        {ComponentKind::Host, none, L"\u00E9.example", L"\u00E9.example"},
        {ComponentKind::Path, host, L"/a b?c#d[e]%", L"/a%20b%3Fc%23d%5Be%5D%25"},
        {ComponentKind::Path, none, L"a:b/c:d", L"a%3Ab/c:d"},
        {ComponentKind::Path, scheme, L"a:b/c:d", L"a:b/c:d"},
        {ComponentKind::Path, none, L"//x", L"/%2Fx"},
        {ComponentKind::Path, scheme, L"//x", L"/%2Fx"},
        {ComponentKind::Path, host, L"//x", L"//x"},
        {ComponentKind::Query, none, L"a b#c?d/\"", L"a%20b%23c?d/%22"},
        {ComponentKind::Fragment, none, L"a#b?c", L"a%23b?c"},
        {ComponentKind::Fragment, none, L"\u200E\uE000\u00E9", L"%E2%80%8E%EE%80%80\u00E9"},
        {ComponentKind::Query, octets, L"\xC3\xA9 ", L"%C3%A9%20"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(decodedToIri(c.kind, c.options, c.decoded), c.iri)
            << std::string(c.iri.begin(), c.iri.end());
        EXPECT_EQ(decodedToUri(c.kind, c.options, c.decoded), iriToUri(c.iri));
    }
    EXPECT_EQ(iriToDecoded(ComponentKind::Query, octets, L"%C3%A9\u00E9"),
              std::wstring(L"\xC3\xA9\xC3\xA9"));
}

// decode(encodeFromDecoded(x)) == x, for every component and every option, over real text:
// each corpus line itself and its decoded form taken as decoded component values.
TEST(ComponentCodecs, DecodedFormsSurviveTheRoundTripOverTheCorpora) {
    const ComponentOptions optionSets[] = {
        {}, {true, false, false, false}, {false, true, true, false}};
    std::size_t checked = 0;
    for (const char* corpus : {"urls.txt", "iris.txt"}) {
        for (const std::string& line : fntest::readLines(corpus)) {
            const std::wstring text = utf8ToCodePoints(line);
            for (const std::wstring& x : {text, iriToDecoded(ComponentKind::Path, {}, text)}) {
                for (const ComponentKind kind : kAllKinds) {
                    for (const ComponentOptions& options : optionSets) {
                        const std::wstring iri = decodedToIri(kind, options, x);
                        ASSERT_EQ(iriToDecoded(kind, options, iri), x) << line;
                        ASSERT_EQ(uriToDecoded(kind, options, decodedToUri(kind, options, x)), x)
                            << line;
                        ASSERT_EQ(iri.find_first_of(L" \"<>`"), std::wstring::npos) << line;
                    }
                }
                ++checked;
            }
        }
    }
    EXPECT_GT(checked, 0u);
}

// URI form and IRI form carry the same text: the IRI form of a line's URI form decodes to
// the line's decoded form.
TEST(ComponentCodecs, UriAndIriFormsDecodeAlikeOverTheCorpora) {
    for (const char* corpus : {"urls.txt", "iris.txt"}) {
        for (const std::string& line : fntest::readLines(corpus)) {
            const std::wstring text = utf8ToCodePoints(line);
            const std::wstring uri = iriToUri(text);
            for (const ComponentKind kind : kAllKinds) {
                const std::wstring decoded = iriToDecoded(kind, {}, text);
                ASSERT_EQ(uriToDecoded(kind, {}, uri), decoded) << line;
                ASSERT_EQ(iriToDecoded(kind, {}, uriToIri(kind, {}, uri)), decoded) << line;
            }
        }
    }
}

}  // namespace
}  // namespace foundation::network::iri::detail
