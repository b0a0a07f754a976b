#include "iri/grammar/CharacterRules.h"

#include <cstring>

#include <gtest/gtest.h>

namespace {

using namespace foundation::network::iri::detail::irigrammar::chars;

// The ASCII table is a fast path only: it must answer as Spirit's Unicode tables do.
TEST(CharacterRulesTest, AsciiTableAgreesWithTheUnicodeTables) {
    for (std::uint32_t c = 0; c < 128; ++c) {
        EXPECT_EQ(alphaTest(c), Unicode::isalpha(c)) << c;
        EXPECT_EQ(digitTest(c), Unicode::isdigit(c)) << c;
        EXPECT_EQ(xdigitTest(c), Unicode::isxdigit(c)) << c;
        EXPECT_EQ(isIunreserved(c), Unicode::isalnum(c) || (c != 0 && std::strchr("-._~", int(c))))
            << c;
    }
}

TEST(CharacterRulesTest, UnicodeClassesBeyondAscii) {
    const struct {
        std::uint32_t c;
        bool alpha, digit, xdigit, unreserved, iprivate;
    } cases[] = {
        {0x00AA, true, false, false, true, false},     // feminine ordinal: a letter
        {0x0663, false, true, false, true, false},     // Arabic-indic three
        {0xFF21, true, false, true, true, false},      // fullwidth A
        {0xFF10, false, true, true, true, false},      // fullwidth 0
        {0x00A0, false, false, false, true, false},    // first ucschar
        {0x009F, false, false, false, false, false},   // C1 control
        {0xD800, false, false, false, false, false},   // surrogate
        {0xE000, false, false, false, false, true},    // private use
        {0xFDD0, false, false, false, false, false},   // noncharacter
        {0xFFF0, false, false, false, false, false},   // specials
        {0x1FFFE, false, false, false, false, false},  // plane end
        {0x1D7CE, false, true, false, true, false},    // mathematical bold zero
        {0xE0000, false, false, false, false, true},   // the extra private range
        {0xE1000, false, false, false, true, false},
        {0x10FFFD, false, false, false, false, true},
        {0x110000, false, false, false, false, false},
        {0xFFFFFFFF, false, false, false, false, false},
    };
    for (const auto& k : cases) {
        EXPECT_EQ(alphaTest(k.c), k.alpha) << std::hex << k.c;
        EXPECT_EQ(digitTest(k.c), k.digit) << std::hex << k.c;
        EXPECT_EQ(xdigitTest(k.c), k.xdigit) << std::hex << k.c;
        EXPECT_EQ(isIunreserved(k.c), k.unreserved) << std::hex << k.c;
        EXPECT_EQ(isIprivate(k.c), k.iprivate) << std::hex << k.c;
    }
}

}  // namespace
