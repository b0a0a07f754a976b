#include "foundation/network/IRI.h"

#include <gtest/gtest.h>

#include <boost/url/parse.hpp>

#include <map>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "foundation/network/IRIArgs.h"
#include "foundation/network/Normalization.h"

#include "iri/IRIAccess.h"
#include "iri/IRIReads.h"
#include "iri/grammar/IriGrammar.h"
#include "iri/grammar/Unicode.h"
#include "support/Corpus.h"
#include "support/RelativisationCases.h"
#include "support/Table.h"

namespace foundation::network {
namespace {

using fntest::reads;
using fntest::u16;
using fntest::utf8;
using iri::Encoding;

class IRICorpus : public ::testing::TestWithParam<const char*> {};

// The lines that parse, of a corpus, of the targets of refs.tsv or of 20000 random lines from the
// characters that matter to the grammar and the encoders. The only corpus lines allowed to fail are
// those with an empty port ("http://h:/"): the grammar accepts them, but an empty port is no port
// number.
std::vector<std::pair<std::string, IRI>> parsedLines(const std::string& corpus) {
    std::vector<std::string> lines;
    const std::wstring alphabet =
        L"aZ09:/?#[]@!$&'()*+,;=-._~% \"<>\\^`{|}\u00E9\u0663\u200E\uE000"
        L"\uFFFF\U0001F600";
    std::mt19937 random(20260521);
    for (int round = 0; corpus == "random" && round < 20000; ++round) {
        std::wstring text;
        for (std::size_t i = 0, length = random() % 24; i < length; ++i) {
            text += alphabet[random() % alphabet.size()];
            text += random() % 8 == 0 ? L"%C3%A9" : L"";
        }
        lines.push_back(utf8(iri::detail::codePointsToUtf16(text)));
    }
    for (const std::string& line :
         corpus == "refs.tsv" ? fntest::readLines(corpus) : std::vector<std::string>()) {
        try {  // the target of a reference resolved: its text reads back to an equal value
            const auto tab = line.find('\t');
            const IRI target =
                IRI(u16(line.substr(tab + 1))).resolveAgainst(IRI(u16(line.substr(0, tab))));
            const IRI again(target.toString(false));
            EXPECT_TRUE(again == target && !(again != target) &&
                        again.hashValue() == target.hashValue())
                << line;
            lines.push_back(utf8(target.toString(false)));
        } catch (const std::logic_error&) {  // an empty port, as below
        }
    }
    std::vector<std::pair<std::string, IRI>> parsed;
    for (const std::string& line : lines.empty() ? fntest::readLines(corpus) : lines) {
        const std::wstring codePoints = iri::detail::utf8ToCodePoints(line);
        try {
            parsed.emplace_back(line, IRI(iri::detail::codePointsToUtf16(codePoints)));
        } catch (const std::logic_error& e) {
            iri::detail::Parts<std::wstring> parts;
            EXPECT_TRUE(corpus == "random" || (iri::detail::irigrammar::parseString<std::wstring>(
                                                   codePoints.cbegin(), codePoints.cend(), parts) &&
                                               parts.port.present && parts.port.empty()))
                << line << ": " << e.what();
        }
    }
    EXPECT_GT(parsed.size(), corpus == "random" ? 1000u : 0u);
    return parsed;
}

// Parsed text comes back as it was, also assembled from its parts, and every read answers; the
// strict and ASCII texts parse to the same texts. The decoded components, built again through
// IRIArgs (each written back in IRI form), make an IRI with the same decoded components.
// Normalising gives text that reads back to the same value and is a fixed point; with every step,
// the Unicode and ASCII texts of one line normalise alike.
TEST_P(IRICorpus, TextsComponentsAndNormalFormsReadBack) {
    iri::Normalization all;
    all.characters = all.host = true;
    std::size_t changed = 0;
    for (const auto& [line, iri] : parsedLines(GetParam())) {
        const std::u16string text = u16(line);
        ASSERT_EQ(iri.toString(false), text) << line;
        IRI assembled(iri);
        iri::detail::IRIAccess::assembleFromParts(iri::detail::IRIAccess::impl(assembled));
        ASSERT_EQ(assembled.toString(false), text) << line;
        if (GetParam() == std::string("random")) {
            fntest::readEverything(iri);  // no getter fails but by its refusal
        }
        for (const bool strict : {false, true}) {
            ASSERT_EQ(IRI(iri.toString(strict)).toString(strict), iri.toString(strict)) << line;
            const std::u16string ascii = iri.toAsciiString(strict);
            ASSERT_EQ(IRI(ascii).toAsciiString(strict), ascii) << line;
        }
        ASSERT_EQ(reads(IRI(IRIArgs(iri)), Encoding(0)), reads(iri, Encoding(0))) << line;
        for (const iri::Normalization& how : {iri::Normalization{}, all}) {
            const IRI normal = iri.normalize(how);
            ASSERT_EQ(IRI(normal.toString()), normal) << line;
            ASSERT_EQ(normal.normalize(how).toString(), normal.toString()) << line;
            ASSERT_EQ(IRI(iri.toAsciiString()).normalize(how).toAsciiString(),
                      normal.toAsciiString())
                << line;
            changed += normal != iri;
        }
    }
    EXPECT_GT(changed, 0u);
}

// Values mixed the way a store or a crawler mixes them: parsed, resolved (against absolute and
// against relative bases), made relative, and rebuilt through IRIArgs, each with a parsed twin;
// among them the pairs of the resolution and relativisation tables, shapes that once broke the
// contracts checked below.
std::vector<IRI> mixedValues() {
    std::vector<IRI> values;
    const auto keep = [&values](auto make) {
        try {
            IRI value = make();
            values.push_back(IRI(value.toString(false)));
            values.push_back(std::move(value));
        } catch (const std::logic_error&) {
            // a refusal (relativisation, IRIArgs) or a line that does not parse
        }
    };
    const auto pair = [&](const std::u16string& base, const std::u16string& reference) {
        keep([&] { return IRI(base); });
        keep([&] { return IRI(reference); });
        keep([&] { return IRI(reference).resolveAgainst(IRI(base)); });
        keep([&] { return IRI(base).resolveAgainst(IRI(reference)); });
        keep([&] { return IRI(reference).resolveAgainst(IRI(base)).makeRelativeTo(IRI(base)); });
        keep([&] { return IRI(reference).makeRelativeTo(IRI(base)); });
        keep([&] { return IRI(IRIArgs(IRI(reference).resolveAgainst(IRI(base)))); });
    };
    for (const std::string& line : fntest::readLines("refs.tsv", 1200)) {
        pair(u16(line.substr(0, line.find('\t'))), u16(line.substr(line.find('\t') + 1)));
    }
    const auto urls = fntest::readLines("urls.txt", 500);
    for (std::size_t i = 1; i < urls.size(); ++i) {
        pair(u16(urls[i - 1]), u16(urls[i]));
    }
    for (const std::string& line : fntest::readLines("iris.txt", 300)) {
        keep([&] { return IRI(IRIArgs(IRI(u16(line)))); });
    }
    for (const char* table : {"resolution.tsv", "relativisation.tsv"}) {
        for (const auto& row : fntest::readTable(table, 2)) {
            pair(fntest::unescaped(row.fields[0]), fntest::unescaped(row.fields[1]));
        }
    }
    return values;
}

// Every value's four texts parse back to the same components in that form; the IRI text to an
// equal value with the same hash. Over a sample (twins are neighbours, short texts the odd shapes)
// order, equality and hash
// follow the text; over the whole mix, an ordered and a hashed set keep the same values.
TEST(MixedValues, TextsReadBackAndOrderEqualityAndHashFollowTheText) {
    const std::vector<IRI> values = mixedValues();
    ASSERT_GT(values.size(), 5000u);
    std::vector<IRI> sample;
    for (const IRI& value : values) {
        const std::string text = utf8(value.toString(false));
        const IRI again(value.toString(false));
        ASSERT_TRUE(again == value && again.hashValue() == value.hashValue()) << text;
        unsigned form = 1;
        for (const auto& written : {value.toString(false), value.toString(true),
                                    value.toAsciiString(false), value.toAsciiString(true)}) {
            EXPECT_EQ(reads(IRI(written), Encoding(form)), reads(value, Encoding(form))) << text;
            EXPECT_EQ(IRI(written).toStringFromParts(Encoding(form++)), written) << text;
        }
        if ((&value - values.data()) % 16 < 2 || text.size() < 12) {
            sample.push_back(value);
        }
    }
    fntest::expectOrderedByText(sample);
    const std::set<IRI> ordered(values.begin(), values.end());
    EXPECT_EQ(ordered.size(), std::unordered_set<IRI>(values.begin(), values.end()).size());
    EXPECT_LT(ordered.size(), values.size());  // the twins
}

// On ASCII URLs the parser finds the components that Boost.URL's parser finds.
TEST(UrlCorpus, ComponentsAgreeWithBoostUrl) {
    for (const auto& [line, iri] : parsedLines("urls.txt")) {
        const auto url = boost::urls::parse_uri_reference(line);
        ASSERT_TRUE(url.has_value()) << line;
        const auto text = [](bool has, boost::core::string_view part) {
            return has ? std::optional(u16(std::string(part))) : std::nullopt;
        };
        const fntest::Reads theirs = {text(url->has_scheme(), url->scheme()),
                                      text(url->has_port(), url->port()),
                                      text(url->has_userinfo(), url->encoded_userinfo()),
                                      text(url->has_authority(), url->encoded_host()),
                                      text(true, url->encoded_path()),
                                      text(url->has_query(), url->encoded_query()),
                                      text(url->has_fragment(), url->encoded_fragment())};
        const fntest::Reads ours = reads(iri, Encoding(1));
        EXPECT_EQ(fntest::Reads(ours.begin(), ours.begin() + 7), theirs) << line;
    }
}

// Neighbouring URLs of one scheme and authority, made relative to each other, resolve back to the
// target, but for the kept case of one ".." too few (support/RelativisationCases.h) and targets no
// reference reaches.
TEST(UrlCorpus, RelativisedPairsResolveBack) {
    std::map<std::u16string, std::vector<IRI>> bySite;
    for (const auto& [line, iri] : parsedLines("urls.txt")) {
        if (iri.hasAuthority()) {
            bySite[iri.getScheme() + u"://" + iri.getAuthority(Encoding(1))].push_back(iri);
        }
    }
    std::size_t pairs = 0, kept = 0;
    for (const auto& [site, group] : bySite) {
        for (std::size_t i = 0; i + 1 < group.size(); ++i) {
            for (const auto& [target, base] :
                 {std::pair{&group[i], &group[i + 1]}, std::pair{&group[i + 1], &group[i]}}) {
                if (fntest::unreachableByResolution(*target, *base)) {
                    continue;
                }
                ++pairs;
                const IRI relative = target->makeRelativeTo(*base);
                const bool back = relative.resolveAgainst(*base) == *target;
                kept += back ? 0 : 1;
                EXPECT_TRUE(back || fntest::isOneDotDotTooFew(relative, *target, *base))
                    << utf8(target->toString()) << " against " << utf8(base->toString()) << ": "
                    << utf8(relative.toString());
            }
        }
    }
    EXPECT_GT(pairs, 10000u);
    EXPECT_GT(kept, 0u);
    EXPECT_LT(kept, pairs / 10);
}

INSTANTIATE_TEST_SUITE_P(Corpora, IRICorpus,
                         ::testing::Values("urls.txt", "iris.txt", "refs.tsv", "random"),
                         [](const auto& info) { return std::string(info.param).substr(0, 4); });

}  // namespace
}  // namespace foundation::network
