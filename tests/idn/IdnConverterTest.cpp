#include "foundation/network/IdnConverter.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "RawIcu.h"
#include "idn/IdnConverterAccess.h"
#include "support/Corpus.h"

namespace {

using foundation::network::ascii_to_idn;
using foundation::network::idn_to_ascii;
using foundation::network::IdnConverter;
using foundation::network::detail::IdnConverterAccess;

bool isAscii(const std::string& text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

TEST(IdnConverterTest, EmptyNamesGiveEmptyResults) {
    const IdnConverter converter;
    EXPECT_EQ(converter.toAscii(u""), "");
    EXPECT_EQ(converter.toUnicode(""), u"");
    EXPECT_EQ(idn_to_ascii(u""), "");
    EXPECT_EQ(ascii_to_idn(""), u"");
}

// Under the default options processing is transitional: sharp s becomes "ss" and upper case is
// folded. Names with characters outside the BMP (surrogate pairs) must reach ICU whole.
TEST(IdnConverterTest, ToAsciiMapsAndEncodes) {
    const struct {
        std::u16string unicode;
        std::string ascii;
    } cases[] = {
        {u"B\u00fccher.example", "xn--bcher-kva.example"},
        {u"B\u00dcCHER.EXAMPLE", "xn--bcher-kva.example"},
        {u"fa\u00df.de", "fass.de"},
        {u"STRA\u00dfE.de", "strasse.de"},
        {u"www.Example.COM", "www.example.com"},
        {u"\U0001F600.com", "xn--e28h.com"},
        {u"\U0001D400bc.com", "abc.com"},  // MATHEMATICAL BOLD CAPITAL A
        {u"\U00020000.cn", "xn--j50i.cn"},
        {u"xn--bcher-kva.example", "xn--bcher-kva.example"},
    };
    const IdnConverter converter;
    for (const auto& c : cases) {
        EXPECT_EQ(converter.toAscii(c.unicode), c.ascii)
            << fntest::utf8(fntest::icuString(c.unicode));
        EXPECT_EQ(idn_to_ascii(c.unicode), c.ascii);
    }
}

TEST(IdnConverterTest, ToUnicodeDecodes) {
    const struct {
        std::string ascii;
        std::u16string unicode;
    } cases[] = {
        {"xn--bcher-kva.example", u"b\u00fccher.example"},
        {"XN--BCHER-KVA.Example", u"b\u00fccher.example"},
        {"xn--e28h.com", u"\U0001F600.com"},
        {"xn--j50i.cn", u"\U00020000.cn"},
        {"fass.de", u"fass.de"},
        // Narrow input is read as UTF-8, so a Unicode name is accepted and mapped.
        {"B\xc3\x9c"
         "cher.example",
         u"b\u00fccher.example"},
        {"fa\xc3\x9f.de", u"fass.de"},
    };
    const IdnConverter converter;
    for (const auto& c : cases) {
        EXPECT_EQ(converter.toUnicode(c.ascii), c.unicode) << c.ascii;
        EXPECT_EQ(ascii_to_idn(c.ascii), c.unicode) << c.ascii;
    }
}

// Label errors never throw; the caller gets ICU's own text, and non-ASCII characters ICU leaves
// in a toward-ASCII result arrive as UTF-8.
TEST(IdnConverterTest, LabelErrorsPassThroughAsIcuText) {
    const std::u16string names[] = {
        u"a\uE000b.com",                     // private use: disallowed
        u"a\u0080b.com",                     // C1 control character: disallowed
        u"a..b",                             // empty label
        u".example",                         // empty first label
        std::u16string(64, u'a') + u".com",  // label over 63 characters
        std::u16string(300, u'a'),           // name over 253 characters
        u"xn--a.com",                        // Punycode that decodes to ASCII only
        u"xn--999999999999.com",             // Punycode that overflows
        u"-start.com",                       // leading hyphen
        u"ab--c.com",                        // hyphens in the third and fourth places
        u"\u0301x.com",                      // label starting with a combining mark
        u"\xD800x.com",                      // unpaired surrogate
        u"B\u00fccher\uE000.example",        // stays Unicode: its result is UTF-8
    };
    const IdnConverter converter;
    for (const auto& name : names) {
        const icu::UnicodeString source = fntest::icuString(name);
        SCOPED_TRACE(fntest::utf8(source));
        const fntest::RawIcuResult toAscii = fntest::rawToAscii(source);
        ASSERT_NE(toAscii.errors, 0u) << "not a label error case";
        EXPECT_EQ(converter.toAscii(name), fntest::utf8(toAscii.text));

        const std::string narrow = fntest::utf8(source);
        const fntest::RawIcuResult toUnicode =
            fntest::rawToUnicode(icu::UnicodeString::fromUTF8(narrow));
        EXPECT_EQ(converter.toUnicode(narrow), fntest::u16(toUnicode.text));
    }
}

// Unicode -> ASCII -> Unicode over real names: the same as ICU gives, and the identity for names
// already in their mapped form.
TEST(IdnConverterTest, RoundTripsTheCorpusLikeIcu) {
    const IdnConverter converter;
    std::size_t unicodeNames = 0;
    std::size_t mappedNames = 0;
    for (const std::string& line : fntest::readLines("idn.txt")) {
        if (isAscii(line)) {
            continue;
        }
        ++unicodeNames;
        const std::u16string name = fntest::fromUtf8(line);
        SCOPED_TRACE(line);

        const fntest::RawIcuResult ascii = fntest::rawToAscii(fntest::icuString(name));
        const std::u16string expected = fntest::u16(fntest::rawToUnicode(ascii.text).text);
        const std::string ours = converter.toAscii(name);
        EXPECT_EQ(ours, fntest::utf8(ascii.text));
        EXPECT_EQ(converter.toUnicode(ours), expected);

        const fntest::RawIcuResult mapped = fntest::rawToUnicode(fntest::icuString(name));
        if (mapped.errors == 0 && fntest::u16(mapped.text) == name) {
            ++mappedNames;
            EXPECT_EQ(converter.toUnicode(ours), name);
        }
    }
    EXPECT_GT(unicodeNames, 0u);
    EXPECT_GT(mappedNames, unicodeNames / 2) << "too few names in mapped form to mean anything";
}

TEST(IdnConverterTest, CopiesShareOneEngine) {
    std::weak_ptr<const foundation::network::IdnConverterImpl> shared;
    {
        const IdnConverter first;
        shared = IdnConverterAccess::impl(first);
        EXPECT_EQ(IdnConverterAccess::useCount(first), 1);
        IdnConverter second = first;
        IdnConverter third;
        EXPECT_NE(IdnConverterAccess::impl(third).lock(), shared.lock());
        third = second;
        IdnConverter moved = std::move(second);  // a move copies: `second` still converts
        EXPECT_EQ(IdnConverterAccess::useCount(first), 4);
        for (const IdnConverter* copy : {&second, &third, &moved}) {
            const auto impl = IdnConverterAccess::impl(*copy).lock();
            EXPECT_EQ(impl, shared.lock());
            EXPECT_EQ(&impl->engine(), &shared.lock()->engine());
        }
        EXPECT_EQ(second.toAscii(u"B\u00fccher.example"), "xn--bcher-kva.example");
    }
    EXPECT_TRUE(shared.expired()) << "the last copy must release the engine";
}

}  // namespace
