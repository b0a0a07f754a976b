#include "foundation/network/IdnConverter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "RawIcu.h"
#include "idn/IdnConverterAccess.h"
#include "support/Corpus.h"

namespace {

using foundation::network::ascii_to_idn;
using foundation::network::idn_to_ascii;
using foundation::network::IdnConverter;
using foundation::network::IdnErrors;
using foundation::network::IdnOptions;
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

// Names that the choices of processing tell apart, beside the corpus (which has few of them).
const std::vector<std::u16string> kOptionProbes = {
    u"fa\u00df.de",            // deviation character: kept only by non-transitional processing
    u"\u03b1\u03c2.gr",        // final sigma, a deviation too
    u"a\u200db.com",           // ZERO WIDTH JOINER outside its context
    u"\u0915\u094d\u200d.in",  // the same joiner after a virama: allowed
    u"a_b.com",                // not STD3
    u"a b.com",                // neither
    u"\u05d0a.com",            // a right-to-left label with a left-to-right letter
    u"\u05d0\u05d1.com",       // a right-to-left label that keeps the Bidi rule
    u"a\u00b7b.com",           // MIDDLE DOT outside l\u00b7l
    u"l\u00b7l.cat",           // MIDDLE DOT in its context
    u"\u0660\u06f0.eg",        // Arabic-Indic digits mixed with extended ones
    u"a..b",
    u"-a-.com",
};

// Each choice of processing gives exactly what ICU's engine with the same option bits gives,
// text and errors, in both directions, over the corpus and the probes above.
TEST(IdnConverterTest, OptionsAgreeWithIcuOverTheCorpus) {
    struct Row {
        const char* label;
        IdnOptions options;
        uint32_t icuOptions;
    };
    auto options = [](bool nontransitional, bool std3, bool bidi, bool contextJ, bool contextO) {
        IdnOptions chosen;
        chosen.nontransitional = nontransitional;
        chosen.useStd3Rules = std3;
        chosen.checkBidi = bidi;
        chosen.checkContextJ = contextJ;
        chosen.checkContextO = contextO;
        return chosen;
    };
    const std::vector<Row> rows = {
        {"default", IdnOptions{}, UIDNA_DEFAULT},
        {"nontransitional", options(true, false, false, false, false),
         UIDNA_NONTRANSITIONAL_TO_ASCII | UIDNA_NONTRANSITIONAL_TO_UNICODE},
        {"std3", options(false, true, false, false, false), UIDNA_USE_STD3_RULES},
        {"bidi", options(false, false, true, false, false), UIDNA_CHECK_BIDI},
        {"contextJ", options(true, false, false, true, false),
         UIDNA_NONTRANSITIONAL_TO_ASCII | UIDNA_NONTRANSITIONAL_TO_UNICODE | UIDNA_CHECK_CONTEXTJ},
        {"contextO", options(false, false, false, false, true), UIDNA_CHECK_CONTEXTO},
        {"all", options(true, true, true, true, true),
         UIDNA_NONTRANSITIONAL_TO_ASCII | UIDNA_NONTRANSITIONAL_TO_UNICODE | UIDNA_USE_STD3_RULES |
             UIDNA_CHECK_BIDI | UIDNA_CHECK_CONTEXTJ | UIDNA_CHECK_CONTEXTO},
    };
    std::vector<std::u16string> names = kOptionProbes;
    for (const std::string& line : fntest::readLines("idn.txt")) {
        names.push_back(fntest::fromUtf8(line));
    }
    for (const Row& row : rows) {
        SCOPED_TRACE(row.label);
        const IdnConverter converter(row.options);
        std::size_t differences = 0;  // from the default engine: the option did something
        for (const std::u16string& name : names) {
            const icu::UnicodeString source = fntest::icuString(name);
            SCOPED_TRACE(fntest::utf8(source));
            const fntest::RawIcuResult ascii = fntest::rawToAscii(source, row.icuOptions);
            IdnErrors errors(0xdead);  // overwritten, also with "no error"
            EXPECT_EQ(converter.toAscii(name, errors), fntest::utf8(ascii.text));
            EXPECT_EQ(errors.bits(), ascii.errors);
            EXPECT_EQ(converter.toAscii(name), fntest::utf8(ascii.text));

            const std::string narrow = fntest::utf8(source);
            const fntest::RawIcuResult unicode = fntest::rawToUnicode(source, row.icuOptions);
            EXPECT_EQ(converter.toUnicode(narrow, errors), fntest::u16(unicode.text));
            EXPECT_EQ(errors.bits(), unicode.errors);

            const fntest::RawIcuResult plain = fntest::rawToAscii(source);
            differences += plain.text != ascii.text || plain.errors != ascii.errors ? 1 : 0;
        }
        EXPECT_EQ(differences == 0, row.icuOptions == UIDNA_DEFAULT) << differences;
    }
}

TEST(IdnConverterTest, ErrorsAreNamedAfterIcusConstants) {
    IdnOptions strict;
    strict.nontransitional = strict.useStd3Rules = strict.checkBidi = strict.checkContextJ =
        strict.checkContextO = true;
    const struct {
        std::u16string name;
        bool strict;
        std::string errors;
    } cases[] = {
        {u"b\u00fccher.example", true, ""},
        {u"a..b", false, "EMPTY_LABEL"},
        {std::u16string(64, u'a') + u".com", false, "LABEL_TOO_LONG"},
        {std::u16string(254, u'a'), false, "LABEL_TOO_LONG, DOMAIN_NAME_TOO_LONG"},
        {u"-a-.com", false, "LEADING_HYPHEN, TRAILING_HYPHEN"},
        {u"ab--c.com", false, "HYPHEN_3_4"},
        {u"\u0301x.com", false, "LEADING_COMBINING_MARK"},
        {u"a\uE000b.com", false, "DISALLOWED"},
        {u"a_b.com", false, ""},
        {u"a_b.com", true, "DISALLOWED"},
        {u"xn--a.com", false, "INVALID_ACE_LABEL"},
        {u"xn--999999999999.com", false, "PUNYCODE"},
        {u"\u05d0a.com", true, "BIDI"},
        {u"a\u200db.com", true, "CONTEXTJ"},
        {u"a\u00b7b.com", true, "CONTEXTO_PUNCTUATION"},
        {u"\u0660\u06f0.eg", true, "BIDI, CONTEXTO_DIGITS"},
    };
    const IdnConverter lenient;
    const IdnConverter checking(strict);
    for (const auto& c : cases) {
        SCOPED_TRACE(fntest::utf8(fntest::icuString(c.name)));
        IdnErrors errors;
        (c.strict ? checking : lenient).toAscii(c.name, errors);
        EXPECT_EQ(errors.toString(), c.errors);
        EXPECT_EQ(errors.empty(), c.errors.empty());
    }
    const IdnErrors several(IdnErrors::EMPTY_LABEL | IdnErrors::DISALLOWED | 0x8000u);
    EXPECT_EQ(several.names(), (std::vector<std::string>{"EMPTY_LABEL", "DISALLOWED", "0x8000"}));
    EXPECT_TRUE(several.has(IdnErrors::DISALLOWED | IdnErrors::EMPTY_LABEL));
    EXPECT_FALSE(several.has(IdnErrors::DISALLOWED | IdnErrors::BIDI));
    EXPECT_FALSE(IdnErrors().has(0));
    EXPECT_EQ(IdnErrors().toString(), "");
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
