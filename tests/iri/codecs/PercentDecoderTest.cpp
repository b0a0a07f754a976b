#include "iri/codecs/PercentDecoder.h"

#include <gtest/gtest.h>

#include "iri/codecs/DoNotDecodeSets.h"

namespace {

using namespace foundation::network::iri::detail;

TEST(PercentDecoderTest, DoNotDecodeSetsAreTheStoredOnes) {
    EXPECT_EQ(kUserInfoDoNotDecode.size(), 19u);
    EXPECT_EQ(kHostDoNotDecode.size(), 10u);
    EXPECT_EQ(kPathDoNotDecode.size(), 12u);
    EXPECT_EQ(kQueryDoNotDecode.size(), 7u);
    EXPECT_EQ(kFragmentDoNotDecode.size(), 6u);
    for (const auto set : {kUserInfoDoNotDecode, kHostDoNotDecode, kPathDoNotDecode,
                           kQueryDoNotDecode, kFragmentDoNotDecode}) {
        EXPECT_EQ(set.front(), L' ');
        EXPECT_NE(set.find(L'%'), std::wstring_view::npos);
    }
}

TEST(PercentDecoderTest, DecodesEscapesOutsideTheSet) {
    const struct {
        std::wstring in;
        std::wstring_view set;
        std::wstring out;
    } cases[] = {
        {L"a%3Ab", kUserInfoDoNotDecode, L"a:b"},
        {L"a%40b", kUserInfoDoNotDecode, L"a%40b"},
        {L"a%40b", kQueryDoNotDecode, L"a@b"},
        {L"%2f%2F", kPathDoNotDecode, L"//"},
        {L"%3f%3F", kPathDoNotDecode, L"%3f%3F"},
        {L"%25%2541", kQueryDoNotDecode, L"%25%2541"},  // no second round
        {L"%2541", L"", L"%41"},
        {L"%e2%80%8e", kFragmentDoNotDecode, std::wstring{0xE2, 0x80, 0x8E}},
        {L"%00%FF", L"", std::wstring{0x00, 0xFF}},
        {L"%", L"", L"%"},
        {L"%4", L"", L"%4"},
        {L"%%41", L"", L"%A"},
        {L"%G1%1G", L"", L"%G1%1G"},
        {L"%\uff11\uff11", L"", L"%\uff11\uff11"},  // fullwidth digits are not hex here
        {L"\u00e9%41\U0001F600", L"", L"\u00e9A\U0001F600"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(percentDecode(c.in, c.set), c.out);
    }
}

}  // namespace
