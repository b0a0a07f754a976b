#include "foundation/network/Utf8.h"

#include <gtest/gtest.h>
#include <unicode/ustring.h>

#include <stdexcept>
#include <string>

#include "foundation/core/except/Exception.h"
#include "support/Corpus.h"

namespace {

using foundation::network::utf16ToUtf8;
using foundation::network::utf8ToUtf16;
using foundation::network::utf8ToUtf16Replacing;

// The message of what `convert` throws, or "" when it throws nothing.
template <class Convert>
std::string refusal(Convert convert) {
    try {
        convert();
    } catch (const std::invalid_argument& e) {
        return e.what();
    }
    return "";
}

TEST(Utf8Test, WellFormedUtf8AtEveryBoundary) {
    struct Case {
        std::string_view utf8;
        std::u16string utf16;
    };
    const Case cases[] = {
        {"", u""},
        {"abc", u"abc"},
        {std::string_view("a\0b", 3), std::u16string(u"a\0b", 3)},
        {"\x7F", u"\u007F"},
        {"\xC2\x80", u"\u0080"},
        {"\xDF\xBF", u"\u07FF"},
        {"\xE0\xA0\x80", u"\u0800"},
        {"\xED\x9F\xBF", u"\uD7FF"},  // last before the surrogates
        {"\xEE\x80\x80", u"\uE000"},  // first after them
        {"\xEF\xB7\x90", u"\uFDD0"},  // noncharacters are allowed
        {"\xEF\xBF\xBE", u"\uFFFE"},
        {"\xEF\xBF\xBF", u"\uFFFF"},
        {"\xF0\x90\x80\x80", u"\U00010000"},
        {"\xF0\x9F\x98\x80", u"\U0001F600"},
        {"\xF4\x8F\xBF\xBF", u"\U0010FFFF"},
        {"B\xC3\xBC"
         "cher.example",
         u"B\u00FCcher.example"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(utf8ToUtf16(c.utf8), c.utf16) << c.utf8;
        EXPECT_EQ(utf8ToUtf16Replacing(c.utf8), c.utf16) << c.utf8;
        EXPECT_EQ(utf16ToUtf8(c.utf16), c.utf8) << c.utf8;
    }
}

TEST(Utf8Test, IllFormedUtf8IsRefusedAtItsFirstByteAndReplacedByMaximalSubpart) {
    struct Case {
        std::string_view utf8;
        std::size_t at;
        std::u16string replaced;
    };
    const Case cases[] = {
        {"\x80", 0, u"\uFFFD"},  // stray continuation
        {"ab\xBF", 2, u"ab\uFFFD"},
        {"\xC0\xAF", 0, u"\uFFFD\uFFFD"},  // overlong "/"
        {"\xC1\xBF", 0, u"\uFFFD\uFFFD"},
        {"\xE0\x80\xAF", 0, u"\uFFFD\uFFFD\uFFFD"},            // overlong, three bytes
        {"\xF0\x80\x80\xAF", 0, u"\uFFFD\uFFFD\uFFFD\uFFFD"},  // overlong, four bytes
        {"\xED\xA0\x80", 0, u"\uFFFD\uFFFD\uFFFD"},            // U+D800 encoded
        {"x\xED\xBF\xBF", 1, u"x\uFFFD\uFFFD\uFFFD"},          // U+DFFF encoded
        {"\xF4\x90\x80\x80", 0, u"\uFFFD\uFFFD\uFFFD\uFFFD"},  // above U+10FFFF
        {"\xF5\x80\x80\x80", 0, u"\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"\xFE\xFF", 0, u"\uFFFD\uFFFD"},
        {"\xC2", 0, u"\uFFFD"},  // cut short by the end
        {"\xE2\x82", 0, u"\uFFFD"},
        {"\xF0\x9F\x98", 0, u"\uFFFD"},
        {"\xE2\x82"
         "a",
         0,
         u"\uFFFD"
         "a"},                                             // cut short by ASCII
        {"ab\xE2\x82\xE2\x82\xAC", 2, u"ab\uFFFD\u20AC"},  // ... by another lead byte
        {"\xF0\x9F\x98\x80\xF0\x9F", 4, u"\U0001F600\uFFFD"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(refusal([&] { utf8ToUtf16(c.utf8); }),
                  "invalid UTF-8 at byte " + std::to_string(c.at))
            << testing::PrintToString(std::string(c.utf8));
        EXPECT_EQ(utf8ToUtf16Replacing(c.utf8), c.replaced)
            << testing::PrintToString(std::string(c.utf8));
    }
}

TEST(Utf8Test, UnpairedSurrogatesAreRefusedAtTheirIndex) {
    struct Case {
        std::u16string utf16;
        std::size_t at;
    };
    const Case cases[] = {
        {u"\xD800", 0},  // high surrogate at the end
        {u"\xD800"
         u"a",
         0},                         // ... before a non-surrogate
        {u"a\xDC00", 1},             // low surrogate alone
        {u"\xDC00\xD800", 0},        // a pair in the wrong order
        {u"\xD800\xD800\xDC00", 0},  // two highs, then one low
        {u"\U0001F600\xDBFF", 2},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(refusal([&] { utf16ToUtf8(c.utf16); }),
                  "unpaired UTF-16 surrogate at index " + std::to_string(c.at));
    }
}

TEST(Utf8Test, RefusalsBelongToTheLibrarysExceptionFamily) {
    EXPECT_THROW(utf8ToUtf16("\xFF"), foundation::core::except::IInternalException);
    EXPECT_THROW(utf16ToUtf8(u"\xD800"), foundation::core::except::IInternalException);
}

// Every scalar value, U+0000 to U+10FFFF without the surrogates, both ways, against ICU.
TEST(Utf8Test, EveryScalarValueAgreesWithIcu) {
    std::u16string all;
    for (UChar32 c = 0; c <= 0x10FFFF; ++c) {
        if (U_IS_SURROGATE(c)) {
            continue;
        }
        if (U_IS_BMP(c)) {
            all.push_back(static_cast<char16_t>(c));
        } else {
            all.push_back(static_cast<char16_t>(U16_LEAD(c)));
            all.push_back(static_cast<char16_t>(U16_TRAIL(c)));
        }
    }
    std::string icu(all.size() * 3, '\0');
    int32_t written = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strToUTF8(icu.data(), static_cast<int32_t>(icu.size()), &written,
                reinterpret_cast<const UChar*>(all.data()), static_cast<int32_t>(all.size()),
                &status);
    ASSERT_TRUE(U_SUCCESS(status));
    icu.resize(static_cast<std::size_t>(written));

    const std::string utf8 = utf16ToUtf8(all);
    EXPECT_EQ(utf8, icu);
    EXPECT_EQ(utf8ToUtf16(utf8), all);
}

// Every two-byte string, and every three-byte string led by a multi-byte lead: refused exactly
// when ICU refuses it, and replaced exactly as ICU replaces it.
TEST(Utf8Test, ShortByteStringsAgreeWithIcu) {
    const auto icuReplacing = [](const std::string& bytes) {
        std::u16string out(bytes.size(), u'\0');
        int32_t written = 0;
        int32_t replaced = 0;
        UErrorCode status = U_ZERO_ERROR;
        u_strFromUTF8WithSub(reinterpret_cast<UChar*>(out.data()), static_cast<int32_t>(out.size()),
                             &written, bytes.data(), static_cast<int32_t>(bytes.size()), 0xFFFD,
                             &replaced, &status);
        out.resize(static_cast<std::size_t>(written));
        return std::make_pair(out, replaced);
    };
    int disagreements = 0;
    const auto check = [&](const std::string& bytes) {
        const auto [expected, replaced] = icuReplacing(bytes);
        const bool refused = !refusal([&] { utf8ToUtf16(bytes); }).empty();
        if (refused != (replaced != 0) || utf8ToUtf16Replacing(bytes) != expected) {
            ADD_FAILURE() << testing::PrintToString(bytes);
            ++disagreements;
        }
    };
    for (int a = 0; a < 256 && disagreements < 10; ++a) {
        for (int b = 0; b < 256; ++b) {
            check({static_cast<char>(a), static_cast<char>(b)});
        }
    }
    for (int a = 0xC0; a < 256 && disagreements < 10; ++a) {
        for (int b = 0x70; b < 0xD0; ++b) {
            for (const int c : {0x00, 0x7F, 0x80, 0xA0, 0xBF, 0xC0, 0xE2}) {
                check({static_cast<char>(a), static_cast<char>(b), static_cast<char>(c)});
            }
        }
    }
}

TEST(Utf8Test, CorporaRoundTrip) {
    for (const char* corpus : {"iris.txt", "idn.txt"}) {
        for (const auto& line : fntest::readLines(corpus)) {
            EXPECT_EQ(utf16ToUtf8(utf8ToUtf16(line)), line);
        }
    }
}

}  // namespace
