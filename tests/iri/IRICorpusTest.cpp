#include "foundation/network/IRI.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "iri/IRIAccess.h"
#include "iri/grammar/ComponentCodecs.h"
#include "iri/grammar/IriGrammar.h"
#include "iri/grammar/Unicode.h"
#include "support/Corpus.h"

namespace foundation::network {
namespace {

using iri::Encoding;
using iri::detail::codePointsToUtf16;
using iri::detail::ComponentKind;
using iri::detail::ComponentOptions;
using iri::detail::decodedToIri;
using iri::detail::IRIAccess;
using iri::detail::utf16ToCodePoints;
using iri::detail::utf8ToCodePoints;

class IRICorpus : public ::testing::TestWithParam<const char*> {};

// The lines that parse. The only lines allowed to fail are those with an empty port
// ("http://h:/"): the grammar accepts them, but an empty port is no port number.
std::vector<std::pair<std::string, IRI>> parsedLines(const char* corpus) {
    std::vector<std::pair<std::string, IRI>> parsed;
    for (const std::string& line : fntest::readLines(corpus)) {
        const std::wstring codePoints = utf8ToCodePoints(line);
        try {
            parsed.emplace_back(line, IRI(codePointsToUtf16(codePoints)));
        } catch (const std::logic_error& e) {
            iri::detail::Parts<std::wstring> parts;
            EXPECT_TRUE(iri::detail::irigrammar::parseString<std::wstring>(
                            codePoints.cbegin(), codePoints.cend(), parts) &&
                        parts.port.present && parts.port.empty())
                << line << ": " << e.what();
        }
    }
    return parsed;
}

// Parsed text comes back as it was; the ASCII form parses to the same ASCII form; the
// assembled forms equal the text; the strict forms parse again.
TEST_P(IRICorpus, SerialisationsRoundTrip) {
    std::size_t count = 0;
    for (const auto& [line, iri] : parsedLines(GetParam())) {
        const std::u16string text = codePointsToUtf16(utf8ToCodePoints(line));
        ASSERT_EQ(iri.toString(false), text) << line;
        const std::u16string ascii = iri.toAsciiString(false);
        ASSERT_EQ(IRI(ascii).toAsciiString(false), ascii) << line;
        IRI assembled(iri);
        IRIAccess::assembleFromParts(IRIAccess::impl(assembled));
        ASSERT_EQ(assembled.toString(false), text) << line;
        ASSERT_EQ(IRI(iri.toString(true)).toString(true), iri.toString(true)) << line;
        ASSERT_EQ(IRI(iri.toAsciiString(true)).toAsciiString(true), iri.toAsciiString(true))
            << line;
        ++count;
    }
    EXPECT_GT(count, 0u);
}

// Every decoded component written back in IRI form decodes to itself, and an IRI assembled
// from those IRI forms parses to the same components.
TEST_P(IRICorpus, DecodedComponentsComeBackThroughTheIriForm) {
    const Encoding decoded(0);
    for (const auto& [line, iri] : parsedLines(GetParam())) {
        ComponentOptions pathOptions;
        pathOptions.schemePresent = iri.hasScheme();
        pathOptions.userInfoPresent = iri.hasUserInfo();
        pathOptions.hostPresent = iri.hasHost();
        const auto encode = [](ComponentKind kind, const ComponentOptions& options,
                               const std::u16string& value) {
            return codePointsToUtf16(decodedToIri(kind, options, utf16ToCodePoints(value)));
        };
        std::u16string rebuilt;
        if (iri.hasScheme()) {
            rebuilt += iri.getScheme() + u":";
        }
        if (iri.hasAuthority()) {
            rebuilt += u"//";
            if (iri.hasUserInfo()) {
                rebuilt += encode(ComponentKind::UserInfo, {}, iri.getUserInfo(decoded)) + u"@";
            }
            rebuilt += encode(ComponentKind::Host, {}, iri.getHost(decoded));
            if (iri.hasPort()) {
                rebuilt += u":" + iri.getPort();
            }
        }
        rebuilt += encode(ComponentKind::Path, pathOptions, iri.getPath(decoded));
        if (iri.hasQuery()) {
            rebuilt += u"?" + encode(ComponentKind::Query, {}, iri.getQuery(decoded));
        }
        if (iri.hasFragment()) {
            rebuilt += u"#" + encode(ComponentKind::Fragment, {}, iri.getFragment(decoded));
        }
        const IRI again(rebuilt);
        ASSERT_EQ(again.hasUserInfo(), iri.hasUserInfo()) << line;
        ASSERT_EQ(again.hasQuery(), iri.hasQuery()) << line;
        ASSERT_EQ(again.hasFragment(), iri.hasFragment()) << line;
        if (iri.hasUserInfo()) {
            ASSERT_EQ(again.getUserInfo(decoded), iri.getUserInfo(decoded)) << line;
        }
        if (iri.hasHost()) {
            ASSERT_EQ(again.getHost(decoded), iri.getHost(decoded)) << line;
        }
        ASSERT_EQ(again.getPath(decoded), iri.getPath(decoded)) << line;
        if (iri.hasQuery()) {
            ASSERT_EQ(again.getQuery(decoded), iri.getQuery(decoded)) << line;
        }
        if (iri.hasFragment()) {
            ASSERT_EQ(again.getFragment(decoded), iri.getFragment(decoded)) << line;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Corpora, IRICorpus, ::testing::Values("urls.txt", "iris.txt"),
                         [](const auto& info) { return std::string(info.param).substr(0, 4); });

}  // namespace
}  // namespace foundation::network
