#include "iri/Utf16.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using foundation::network::iri::detail::findUnit;

// The word-at-a-time search agrees with the character traits' one at every length, position and
// start, also beside units that differ from the one sought only in their high bits.
TEST(Utf16Test, FindUnitAgreesWithFind) {
    const char16_t fillers[] = {u'a', u'\u802E', u'\u2E2E', u'\uFFFF', u'\u002F'};
    for (const char16_t filler : fillers) {
        for (std::size_t length = 0; length <= 13; ++length) {
            for (std::size_t at = 0; at <= length; ++at) {
                std::u16string text(length, filler);
                if (at < length) {
                    text[at] = u'.';
                }
                for (std::size_t from = 0; from <= length; ++from) {
                    EXPECT_EQ(findUnit(text, u'.', from),
                              std::u16string_view(text).find(u'.', from))
                        << length << " " << at << " " << from;
                }
            }
        }
    }
}

}  // namespace
