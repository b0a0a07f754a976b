#include "iri/grammar/Port.h"

#include <gtest/gtest.h>

namespace {

using foundation::network::iri::detail::portStringToNumeric;

TEST(PortTest, AcceptsAsciiDigitsUpTo65535) {
    const struct {
        std::wstring text;
        unsigned short value;
    } good[] = {{L"0", 0},     {L"80", 80},       {L"007", 7},
                {L"0080", 80}, {L"65535", 65535}, {L"000000000000443", 443}};
    for (const auto& c : good) {
        unsigned short value = 1;
        EXPECT_TRUE(portStringToNumeric(c.text, value));
        EXPECT_EQ(value, c.value);
    }
    for (const std::wstring bad : {L"", L"65536", L"99999999999", L"+80", L"-1", L" 80", L"80 ",
                                   L"8a", L"0x50", L"\uff18\uff10", L"\u0668\u0660"}) {
        unsigned short value = 0;
        EXPECT_FALSE(portStringToNumeric(bad, value)) << std::string(bad.begin(), bad.end());
    }
}

}  // namespace
