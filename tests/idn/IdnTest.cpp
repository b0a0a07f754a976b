// The IDN converter against ICU's own engine: the cases of tests/data/idn_cases.tsv, then every
// choice of processing over those names and the corpus, and one converter shared by threads.
#include <gtest/gtest.h>

#include <map>
#include <thread>
#include <type_traits>
#include <vector>

#include "RawIcu.h"
#include "foundation/core/except/Exception.h"
#include "foundation/network/IdnConverter.h"
#include "support/Corpus.h"
#include "support/Table.h"

namespace {

using namespace foundation::network;

static_assert(std::is_base_of_v<std::exception, IdnConverterException>);
static_assert(!std::is_base_of_v<std::runtime_error, IdnConverterException>);
static_assert(!std::is_base_of_v<std::logic_error, IdnConverterException>);
static_assert(!std::is_base_of_v<foundation::core::except::IException, IdnConverterException>);

// Options named as in the table ("-" for none, else words joined by ","), with ICU's bits.
std::pair<IdnOptions, uint32_t> options(const std::string& names) {
    static const std::map<std::string, std::pair<bool IdnOptions::*, uint32_t>> kOptions = {
        {"nontransitional",
         {&IdnOptions::nontransitional,
          UIDNA_NONTRANSITIONAL_TO_ASCII | UIDNA_NONTRANSITIONAL_TO_UNICODE}},
        {"std3", {&IdnOptions::useStd3Rules, UIDNA_USE_STD3_RULES}},
        {"bidi", {&IdnOptions::checkBidi, UIDNA_CHECK_BIDI}},
        {"contextj", {&IdnOptions::checkContextJ, UIDNA_CHECK_CONTEXTJ}},
        {"contexto", {&IdnOptions::checkContextO, UIDNA_CHECK_CONTEXTO}},
    };
    std::pair<IdnOptions, uint32_t> chosen{IdnOptions{}, UIDNA_DEFAULT};
    for (const auto& [name, option] : kOptions) {
        if (names == "all" || ("," + names + ",").find("," + name + ",") != std::string::npos) {
            chosen.first.*option.first = true;
            chosen.second |= option.second;
        }
    }
    return chosen;
}

// UTF-8 text with \uXXXX for single UTF-16 units (unpaired surrogates).
std::u16string u16Field(const std::string& field) {
    std::u16string out;
    for (std::size_t start = 0;;) {
        const std::size_t at = field.find("\\u", start);
        out += fntest::fromUtf8(field.substr(start, at - start));
        if (at == std::string::npos) {
            return out;
        }
        out += static_cast<char16_t>(std::stoi(field.substr(at + 2, 4), nullptr, 16));
        start = at + 6;
    }
}

// OPTIONS DIRECTION INPUT OUTPUT ERRORS; "*" leaves a result to the comparison with ICU below.
TEST(IdnConverterTest, TableCases) {
    for (const auto& row : fntest::readTable("idn_cases.tsv", 5)) {
        SCOPED_TRACE("idn_cases.tsv:" + std::to_string(row.line) + ": " + row.fields[2]);
        const auto& f = row.fields;
        const IdnConverter converter(options(f[0]).first);
        const std::u16string input = u16Field(f[2]);
        IdnErrors errors(0xdead);  // overwritten, also with "no error"
        std::string output;
        if (f[1] == "toAscii") {
            output = converter.toAscii(input, errors);
            EXPECT_EQ(converter.toAscii(input), output);
            EXPECT_EQ(f[0] == "-" ? idn_to_ascii(input) : output, output);
        } else {
            const std::string narrow = fntest::utf8(fntest::icuString(input));
            const std::u16string unicode = converter.toUnicode(narrow, errors);
            EXPECT_EQ(converter.toUnicode(narrow), unicode);
            EXPECT_EQ(f[0] == "-" ? ascii_to_idn(narrow) : unicode, unicode);
            output = fntest::utf8(fntest::icuString(unicode));
        }
        EXPECT_TRUE(f[3] == "*" || output == f[3]) << output;
        EXPECT_TRUE(f[4] == "*" || errors.toString() == f[4]) << errors.toString();
        EXPECT_EQ(errors.empty(), errors.toString().empty());
    }
}

// Each choice of processing gives exactly what ICU's engine with the same option bits gives,
// text and errors, in both directions and back from the ASCII form, over the names of the table
// and the corpus.
TEST(IdnConverterTest, OptionsAgreeWithIcu) {
    std::vector<std::u16string> names;
    for (const auto& row : fntest::readTable("idn_cases.tsv", 5)) {
        names.push_back(u16Field(row.fields[2]));
    }
    for (const std::string& line : fntest::readLines("idn.txt")) {
        names.push_back(fntest::fromUtf8(line));
    }
    for (const char* choice :
         {"-", "nontransitional", "std3", "bidi", "nontransitional,contextj", "contexto", "all"}) {
        SCOPED_TRACE(choice);
        const auto [chosen, bits] = options(choice);
        const IdnConverter converter(chosen);
        std::size_t differences = 0;  // from the default engine: the option did something
        for (const std::u16string& name : names) {
            const icu::UnicodeString source = fntest::icuString(name);
            SCOPED_TRACE(fntest::utf8(source));
            const fntest::RawIcuResult ascii = fntest::rawToAscii(source, bits);
            IdnErrors errors;
            const std::string ours = converter.toAscii(name, errors);
            EXPECT_EQ(ours, fntest::utf8(ascii.text));
            EXPECT_EQ(errors.bits(), ascii.errors);

            const fntest::RawIcuResult unicode = fntest::rawToUnicode(source, bits);
            EXPECT_EQ(converter.toUnicode(fntest::utf8(source), errors), fntest::u16(unicode.text));
            EXPECT_EQ(errors.bits(), unicode.errors);
            const auto back = fntest::rawToUnicode(icu::UnicodeString::fromUTF8(ours), bits);
            EXPECT_EQ(converter.toUnicode(ours), fntest::u16(back.text));

            const fntest::RawIcuResult plain = fntest::rawToAscii(source);
            differences += plain.text != ascii.text || plain.errors != ascii.errors ? 1 : 0;
        }
        EXPECT_EQ(differences == 0, bits == UIDNA_DEFAULT) << differences;
    }
}

TEST(IdnConverterTest, ErrorNamesExceptionsAndCopies) {
    const IdnErrors several(IdnErrors::EMPTY_LABEL | IdnErrors::DISALLOWED | 0x8000u);
    EXPECT_EQ(several.names(), (std::vector<std::string>{"EMPTY_LABEL", "DISALLOWED", "0x8000"}));
    EXPECT_EQ(several.toString(), "EMPTY_LABEL, DISALLOWED, 0x8000");
    EXPECT_TRUE(several.has(IdnErrors::DISALLOWED | IdnErrors::EMPTY_LABEL));
    EXPECT_FALSE(several.has(IdnErrors::DISALLOWED | IdnErrors::BIDI) || IdnErrors().has(0));
    EXPECT_STREQ(IdnConverterException("U_ILLEGAL_ARGUMENT_ERROR").what(),
                 "U_ILLEGAL_ARGUMENT_ERROR");

    IdnConverter first;
    IdnConverter second = first;
    second = IdnConverter(first);
    IdnConverter moved = std::move(second);  // a move copies: `second` still converts
    for (const IdnConverter* copy : {&first, &second, &moved}) {
        EXPECT_EQ(copy->toAscii(u"B\u00fccher.example"), "xn--bcher-kva.example");
    }
}

// One converter, its copies (made, assigned and dropped while others convert) and the free
// functions used from several threads at once: every thread gets what a single thread gets.
// Meant for the tsan preset.
TEST(IdnConverterTest, OneEngineServesSeveralThreads) {
    std::vector<std::u16string> names;
    std::vector<std::pair<std::string, std::u16string>> expected;
    for (const std::string& line : fntest::readLines("idn.txt", 600)) {
        names.push_back(fntest::fromUtf8(line));
        const auto ascii = fntest::rawToAscii(fntest::icuString(names.back()));
        expected.emplace_back(fntest::utf8(ascii.text),
                              fntest::u16(fntest::rawToUnicode(ascii.text).text));
    }
    const IdnConverter converter;
    std::vector<int> mismatches(6, 0);
    std::vector<std::thread> threads;
    for (int t = 0; t < 6; ++t) {
        // 0 and 3 share the original; 1 and 4 take a copy of their own; 2 copies it again for
        // every name; 5 uses the free functions, which make an engine per call.
        threads.emplace_back([&, t] {
            IdnConverter copy = converter;
            for (std::size_t i = 0; i < names.size(); ++i) {
                copy = t == 2 ? IdnConverter(converter) : copy;
                const IdnConverter& use = t % 3 == 0 ? converter : copy;
                const std::string out = t == 5 ? idn_to_ascii(names[i]) : use.toAscii(names[i]);
                const std::u16string back = t == 5 ? ascii_to_idn(out) : use.toUnicode(out);
                mismatches[t] += (out != expected[i].first) + (back != expected[i].second);
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(mismatches, std::vector<int>(6, 0));
}

}  // namespace
