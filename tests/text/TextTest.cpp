// The text module through its three doors (the library's UTF-8 functions, the i18n facets and
// the module itself), checked against ICU's own converters rather than against lists.
#include "text/Text.h"

#include <gtest/gtest.h>
#include <unicode/ustring.h>

#include <string>

#include "fl/i18n/codecvt.h"
#include "foundation/core/except/Exception.h"
#include "foundation/network/Utf8.h"
#include "support/Corpus.h"

namespace {

namespace text = foundation::text;
using foundation::network::utf16ToUtf8;
using foundation::network::utf8ToUtf16;
const fl::i18n::codecvt_ascii_to_ustring toUtf16Facet;
const fl::i18n::codecvt_ustring_to_ascii toUtf8Facet;

template <class Convert>
std::string refusal(Convert convert) {
    try {
        convert();
    } catch (const foundation::core::except::IInternalException& e) {
        return e.message();
    }
    return "";
}

// ICU's UTF-8 decoder with U+FFFD for each ill-formed part; `replaced` says whether it did.
std::u16string icuUtf16(const std::string& bytes, bool& replaced) {
    std::u16string out(bytes.size(), u'\0');
    int32_t written = 0;
    int32_t count = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF8WithSub(reinterpret_cast<UChar*>(out.data()), static_cast<int32_t>(out.size()),
                         &written, bytes.data(), static_cast<int32_t>(bytes.size()), 0xFFFD, &count,
                         &status);
    out.resize(static_cast<std::size_t>(written));
    replaced = count != 0;
    return out;
}

// Every scalar value, U+0000 to U+10FFFF without the surrogates, through every door and back.
TEST(TextTest, EveryScalarValueAgreesWithIcu) {
    std::wstring points;
    for (UChar32 c = 0; c <= 0x10FFFF; ++c) {
        if (!U_IS_SURROGATE(c)) {
            points.push_back(static_cast<wchar_t>(c));
        }
    }
    std::u16string all;
    ASSERT_EQ(text::codePointsToUtf16(points, all), text::kWhole);
    std::string icu(all.size() * 3, '\0');
    int32_t written = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strToUTF8(icu.data(), static_cast<int32_t>(icu.size()), &written,
                reinterpret_cast<const UChar*>(all.data()), static_cast<int32_t>(all.size()),
                &status);
    icu.resize(static_cast<std::size_t>(written));
    EXPECT_TRUE(utf16ToUtf8(all) == icu && toUtf8Facet(all) == icu);
    EXPECT_TRUE(utf8ToUtf16(icu) == all && toUtf16Facet(icu) == all);
    std::wstring back(all.size(), L'\0');
    std::size_t count = 0;
    EXPECT_EQ(text::utf16ToCodePoints(all, back.data(), count), text::kWhole);
    EXPECT_TRUE(back.substr(0, count) == points);
}

// Every two-byte string, and "x" with every three bytes led by a multi-byte lead: refused at
// the first ill-formed part exactly when ICU replaces one, and replaced as ICU replaces.
TEST(TextTest, ShortByteStringsAgreeWithIcu) {
    int failures = 0;
    const auto check = [&](const std::string& bytes) {
        bool replaced = false;
        const std::u16string expected = icuUtf16(bytes, replaced);
        std::u16string before;
        const std::size_t at = text::utf8ToUtf16(bytes, before, false);
        const bool agrees =
            replaced == (at != text::kWhole) && toUtf16Facet(bytes) == expected &&
            foundation::network::utf8ToUtf16Replacing(bytes) == expected &&
            refusal([&] { utf8ToUtf16(bytes); }) ==
                (replaced ? "invalid UTF-8 at byte " + std::to_string(at) : "") &&
            (!replaced || (expected.substr(0, before.size() + 1) == before + u'\uFFFD' &&
                           at == utf16ToUtf8(before).size()));
        if (!agrees && ++failures < 10) {
            ADD_FAILURE() << testing::PrintToString(bytes);
        }
    };
    for (int a = 0; a < 256; ++a) {
        for (int b = 0; b < 256; ++b) {
            check({static_cast<char>(a), static_cast<char>(b)});
        }
    }
    for (int a = 0xC0; a < 256; ++a) {
        for (int b = 0x70; b < 0xD0; ++b) {
            for (const int c : {0x00, 0x7F, 0x80, 0xA0, 0xBF, 0xC0, 0xE2}) {
                check({'x', static_cast<char>(a), static_cast<char>(b), static_cast<char>(c)});
            }
        }
    }
}

TEST(TextTest, UnpairedSurrogatesAreRefusedAtTheirIndexOrReplaced) {
    const struct {
        std::u16string utf16;
        std::size_t at;
        std::string replaced;
    } cases[] = {{u"\xD800", 0, "\xEF\xBF\xBD"},
                 {u"\xD800z", 0, "\xEF\xBF\xBDz"},
                 {u"a\xDC00", 1, "a\xEF\xBF\xBD"},
                 {u"\xDC00\xD800", 0, "\xEF\xBF\xBD\xEF\xBF\xBD"},
                 {u"\U0001F600\xDBFF", 2, "\xF0\x9F\x98\x80\xEF\xBF\xBD"}};
    for (const auto& c : cases) {
        EXPECT_EQ(refusal([&] { utf16ToUtf8(c.utf16); }),
                  "unpaired UTF-16 surrogate at index " + std::to_string(c.at));
        EXPECT_EQ(toUtf8Facet(c.utf16), c.replaced);
        std::wstring points(c.utf16.size(), L'\0');
        std::size_t count = 0;
        EXPECT_EQ(text::utf16ToCodePoints(c.utf16, points.data(), count), c.at);
    }
    std::u16string out = u"kept";
    EXPECT_EQ(text::codePointsToUtf16(std::wstring{L'a', 0xDFFF}, out), 1u);
    EXPECT_EQ(text::codePointsToUtf16(std::wstring{0x110000}, out), 0u);
    EXPECT_EQ(out, u"kept");
}

// Values beyond Unicode keep their bits in five and six bytes; a repair keeps every sequence
// whole by its lead byte and escapes the rest.
TEST(TextTest, ExtendedBytesRepairAndEscapes) {
    for (const auto& [value, bytes] : std::initializer_list<std::pair<std::uint32_t, std::string>>{
             {0x7F, "\x7F"},
             {0x10FFFF, "\xF4\x8F\xBF\xBF"},
             {0x200000, "\xF8\x88\x80\x80\x80"},
             {0x7FFFFFFF, "\xFD\xBF\xBF\xBF\xBF\xBF"}}) {
        unsigned char out[6];
        const auto length = static_cast<std::size_t>(text::utf8BytesExtended(value, out));
        EXPECT_EQ(std::string(reinterpret_cast<char*>(out), length), bytes);
    }
    EXPECT_EQ(text::escapeBrokenUtf8("a\xC3\xA9\xFF\xC3z\xF8\x88\x80\x80\x80"),
              "a\xC3\xA9%FF%C3z\xF8\x88\x80\x80\x80");
    std::u16string escape;
    text::appendPercentEscape(escape, 0xAB);
    EXPECT_EQ(escape, u"%AB");
    EXPECT_EQ(text::hexValue('f') + text::hexValue('F') + text::hexValue('9'), 39);
    EXPECT_EQ(text::hexValue('g'), -1);
}

TEST(TextTest, CorporaRoundTrip) {
    for (const char* corpus : {"iris.txt", "idn.txt"}) {
        for (const auto& line : fntest::readLines(corpus)) {
            EXPECT_EQ(utf16ToUtf8(utf8ToUtf16(line)), line);
        }
    }
}

// The facets convert through their virtual entry point, so that a subclass takes over.
TEST(TextTest, FacetsConvertThroughTheVirtualEntryPoint) {
    struct Upper : fl::i18n::codecvt_ascii_to_ustring {
        std::u16string do_convert(const char* data, std::size_t length) const override {
            std::u16string out = codecvt_ascii_to_ustring::do_convert(data, length);
            for (auto& c : out) {
                c = (c >= u'a' && c <= u'z') ? static_cast<char16_t>(c - 32) : c;
            }
            return out;
        }
    };
    const Upper upper;
    EXPECT_EQ(static_cast<const fl::i18n::codecvt_ascii_to_ustring&>(upper)("en0"), u"EN0");
}

}  // namespace
