#include "iri/grammar/Unicode.h"

#include <stdexcept>

#include <gtest/gtest.h>

namespace {

using namespace foundation::network::iri::detail;

// The message of the std::out_of_range that `f` throws, or "" if it throws none.
template <class F>
std::string outOfRangeText(F f) {
    try {
        f();
    } catch (const std::out_of_range& e) {
        return e.what();
    }
    return "";
}

TEST(UnicodeTest, RoundTripsThroughEveryEncoding) {
    const std::wstring samples[] = {L"",
                                    L"plain ascii",
                                    std::wstring(1, L'\0') + L"x",
                                    L"b\u00fccher",
                                    L"\u4e2d\u6587",
                                    L"\U0001F600 \U0010FFFD",
                                    L"\u007f\u0080\u07ff\u0800\uffff\U00010000"};
    for (const auto& text : samples) {
        EXPECT_EQ(utf16ToCodePoints(codePointsToUtf16(text)), text);
        EXPECT_EQ(utf8ToCodePoints(codePointsToUtf8(text)), text);
        EXPECT_EQ(utf8OctetsToCodePoints(codePointsToUtf8Octets(text)), text);
    }
    EXPECT_EQ(codePointsToUtf16(L"\U0001F600"), u"\U0001F600");
    EXPECT_EQ(codePointsToUtf8(L"\u00e9"), "\xc3\xa9");
    EXPECT_EQ(codePointsToUtf8Octets(L"\u00e9"), (std::wstring{0xC3, 0xA9}));
}

TEST(UnicodeTest, FailuresCarryTheIteratorsTexts) {
    const std::string surrogate = "Misplaced UTF-16 surrogate U+";
    const std::string surrogateTail = " encountered while trying to encode UTF-32 sequence";
    EXPECT_EQ(outOfRangeText([] { utf16ToCodePoints(u"a\xD800"); }),
              surrogate + "0xd800" + surrogateTail);
    EXPECT_EQ(outOfRangeText([] { utf16ToCodePoints(u"\xD800x"); }),
              surrogate + "0x78" + surrogateTail);
    EXPECT_EQ(outOfRangeText([] { utf16ToCodePoints(u"\xDC00"); }),
              surrogate + "0xdc00" + surrogateTail);

    const std::string utf32 = " encountered while trying to encode UTF-16 sequence";
    EXPECT_EQ(outOfRangeText([] { codePointsToUtf16(std::wstring(1, wchar_t(0xD800))); }),
              "Invalid UTF-32 code point U+0xd800" + utf32);
    EXPECT_EQ(outOfRangeText([] { codePointsToUtf16(std::wstring(1, wchar_t(0x110000))); }),
              "Invalid UTF-32 code point U+0x110000" + utf32);
    EXPECT_EQ(outOfRangeText([] { codePointsToUtf8(std::wstring(1, wchar_t(0x110000))); }),
              "Invalid UTF-32 code point U+0x110000" + utf32);

    const std::string utf8 =
        "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character";
    for (const std::string bad :
         {"\xff", "a\x80", "\xc3", "\xe2\x82", "\xc3(", "\xc0\xaf", "\xed\xa0\x80",
          "\xf4\x90\x80\x80", "\xf8\x90\x80\x80", "\xfc\x80\x90\x80\x80\x80"}) {
        EXPECT_EQ(outOfRangeText([&] { utf8ToCodePoints(bad); }), utf8) << bad;
    }
    EXPECT_EQ(outOfRangeText([] { utf8OctetsToCodePoints(std::wstring{0xC3}); }), utf8);
    EXPECT_EQ(outOfRangeText([] { utf8OctetsToCodePoints(std::wstring{0x4E2D}); }), utf8);
}

TEST(UnicodeTest, NarrowingKeepsTheLowByte) {
    EXPECT_EQ(toAsciiStringAssumingAsciiCodePoints(std::wstring{L'a', 0xC3, 0xA9}), "a\xc3\xa9");
    EXPECT_EQ(toAsciiStringAssumingAsciiCodePoints(std::u16string{u'a', 0xFF}), "a\xff");
    EXPECT_EQ(toAsciiStringAssumingAsciiCodePoints(std::wstring{0x141}), "\x41");
}

TEST(UnicodeTest, ValidateRepairsOnlyBrokenBytes) {
    const struct {
        std::string in;
        bool repaired;
        std::string out;
    } cases[] = {
        {"", false, ""},
        {"caf\xc3\xa9 \xf0\x9f\x98\x80", false, "caf\xc3\xa9 \xf0\x9f\x98\x80"},
        {"ab\xff"
         "c",
         true, "ab%FFc"},
        {"\x80x", true, "%80x"},         // stray continuation byte
        {"a\xc3", true, "a%C3"},         // cut short at the end
        {"\xe2\x82(", true, "%E2%82("},  // broken, then resumes
        {"\xfe\xff", true, "%FE%FF"},
        {"\xf8\x90\x80\x80", true, "%F8%90%80%80"},  // Boost alone would read U+10000
        {"\xf8\x88\x80\x80\x80\xff", true, "\xf8\x88\x80\x80\x80%FF"},   // five-byte form kept
        {"\xfc\x84\x80\x80\x80\x80", true, "\xfc\x84\x80\x80\x80\x80"},  // six-byte form kept
        {"\xc0\xaf", true, "\xc0\xaf"},  // overlong: refused by the decoder, kept by shape
    };
    for (const auto& c : cases) {
        const Utf8Check check = validateUTF8String(c.in);
        EXPECT_EQ(check.repaired, c.repaired) << c.in;
        EXPECT_EQ(check.bytes, c.out) << c.in;
    }
}

}  // namespace
