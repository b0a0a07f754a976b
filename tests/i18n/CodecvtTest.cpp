#include "fl/i18n/codecvt.h"

#include <gtest/gtest.h>

namespace {

using fl::i18n::codecvt_ascii_to_ustring;
using fl::i18n::codecvt_ustring_to_ascii;

TEST(CodecvtTest, AsciiMapsOneToOneBothWays) {
    std::string all;
    for (int c = 0; c < 0x80; ++c) {
        all += static_cast<char>(c);
    }
    const std::u16string wide = codecvt_ascii_to_ustring()(all);
    ASSERT_EQ(wide.size(), all.size());
    for (std::size_t i = 0; i < all.size(); ++i) {
        EXPECT_EQ(wide[i], static_cast<char16_t>(all[i]));
    }
    EXPECT_EQ(codecvt_ustring_to_ascii()(wide), all);
}

TEST(CodecvtTest, NonAsciiTravelsAsUtf8) {
    const struct {
        std::u16string wide;
        std::string narrow;
    } cases[] = {
        {u"b\u00fccher",
         "b\xc3\xbc"
         "cher"},
        {u"\u4e2d\u6587", "\xe4\xb8\xad\xe6\x96\x87"},
        {u"\U0001F600", "\xf0\x9f\x98\x80"},  // a surrogate pair
        {u"", ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(codecvt_ustring_to_ascii()(c.wide), c.narrow);
        EXPECT_EQ(codecvt_ascii_to_ustring()(c.narrow), c.wide);
    }
}

TEST(CodecvtTest, BrokenInputBecomesReplacementCharacter) {
    // An unpaired surrogate cannot be UTF-8: it becomes U+FFFD.
    EXPECT_EQ(codecvt_ustring_to_ascii()(std::u16string(u"a") + char16_t(0xD800) + u"b"),
              "a\xef\xbf\xbd"
              "b");
    // Invalid UTF-8 sequences become U+FFFD; the valid text around them stays.
    EXPECT_EQ(codecvt_ascii_to_ustring()(std::string("a\xff"
                                                     "b")),
              u"a\ufffdb");
    EXPECT_EQ(codecvt_ascii_to_ustring()(std::string("a\xc3")), u"a\ufffd");
}

TEST(CodecvtTest, ConvertsThroughTheVirtualEntryPoint) {
    struct Upper : codecvt_ascii_to_ustring {
        std::u16string do_convert(const char* data, std::size_t length) const override {
            std::u16string out = codecvt_ascii_to_ustring::do_convert(data, length);
            for (auto& c : out) {
                c = (c >= u'a' && c <= u'z') ? static_cast<char16_t>(c - 32) : c;
            }
            return out;
        }
    };
    const Upper upper;
    const codecvt_ascii_to_ustring& facet = upper;
    EXPECT_EQ(facet("en0"), u"EN0");
}

}  // namespace
