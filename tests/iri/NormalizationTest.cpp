#include <gtest/gtest.h>
#include <unicode/errorcode.h>
#include <unicode/idna.h>

#include <memory>
#include <stdexcept>
#include <string>

#include "foundation/network/IRI.h"
#include "foundation/network/IdnConverter.h"
#include "foundation/network/Normalization.h"
#include "support/Table.h"
#include "support/Text.h"

namespace foundation::network {
namespace {

using fntest::u16;
using fntest::utf8;

// The steps a table row names ("+characters", "+host", "-path"), over the defaults.
iri::Normalization steps(const std::string& names) {
    iri::Normalization how;
    how.characters = names.find("+characters") != std::string::npos;
    how.host = names.find("+host") != std::string::npos;
    how.pathSegments = names.find("-path") == std::string::npos;
    return how;
}

// The cases of tests/data/normalization.tsv: RFC 3986 section 6.2.2's and RFC 3987 section 5.3's
// examples, then the edges each step has.
TEST(IRINormalize, Table) {
    for (const auto& row : fntest::readTable("normalization.tsv", 2)) {
        const std::string& input = row.fields[0];
        const iri::Normalization how = steps(row.fields.size() > 2 ? row.fields[2] : "");
        const IRI iri(u16(input));
        const IRI normal = iri.normalize(how);
        const std::string where = "normalization.tsv:" + std::to_string(row.line);
        EXPECT_EQ(utf8(normal.toString()), row.fields[1]) << where;
        EXPECT_EQ(utf8(iri.toString()), input) << where << ": operand changed";
        EXPECT_EQ(normal.normalize(how), normal) << where;
    }
}

TEST(IRINormalize, StepsSwitchOff) {
    iri::Normalization none;
    none.letterCase = none.percentEncoding = none.pathSegments = none.schemeBased = false;
    const IRI iri(u16("HTTP://A:80/./%7e%c3%a9"));
    EXPECT_EQ(iri.normalize(none), iri);
    iri::Normalization caseOnly = none;
    caseOnly.letterCase = true;
    EXPECT_EQ(utf8(iri.normalize(caseOnly).toString()), "http://a:80/./%7E%C3%A9");
    iri::Normalization decodeOnly = none;
    decodeOnly.percentEncoding = true;
    EXPECT_EQ(utf8(iri.normalize(decodeOnly).toString()), "HTTP://A:80/./~é");
}

// The host as ICU's own UTS #46 engine writes it, with ICU's default options.
std::string icuAscii(const std::u16string& host) {
    icu::ErrorCode status;
    std::unique_ptr<icu::IDNA> idna(icu::IDNA::createUTS46Instance(UIDNA_DEFAULT, status));
    icu::IDNAInfo info;
    icu::UnicodeString out;
    idna->nameToASCII(icu::UnicodeString(host.data(), static_cast<int32_t>(host.size())), out, info,
                      status);
    std::string ascii;
    out.toUTF8String(ascii);
    return ascii;
}

TEST(IRIToUriString, HostsAsDnsWantsThem) {
    const IdnConverter idn;
    const struct {
        const char* input;
        const char* host;  // as given to ICU
        const char* rest;  // what follows the host
    } rows[] = {
        {"http://bücher.example/ä?ö#ü", "bücher.example", "/%C3%A4?%C3%B6#%C3%BC"},
        {"https://user@Faß.DE:8080/", "Faß.DE", ":8080/"},
        {"http://%E2%82%AC.example", "€.example", ""},
        {"ftp://例え.テスト/x", "例え.テスト", "/x"},
    };
    for (const auto& row : rows) {
        const IRI iri(u16(row.input));
        const std::string text = utf8(iri.toUriString(idn));
        const std::string scheme = utf8(iri.getScheme()) + "://";
        const std::string user = iri.hasUserInfo() ? "user@" : "";
        EXPECT_EQ(text, scheme + user + icuAscii(u16(row.host)) + row.rest) << row.input;
    }
    for (const char* unchanged : {"http://[::1]:8/ä", "mailto:a@b", "file:///ä", "/p", ""}) {
        const IRI iri(u16(unchanged));
        EXPECT_EQ(iri.toUriString(idn), iri.toAsciiString(false)) << unchanged;
    }
    for (const char* bad : {"http://a..b/", "http://xn--a.example/", "http://-ab-.c/"}) {
        try {
            (void)IRI(u16(bad)).toUriString(idn);
            ADD_FAILURE() << bad << " converted";
        } catch (const std::invalid_argument& e) {
            const std::string host = utf8(IRI(u16(bad)).getHost(iri::Encoding::decoded()));
            EXPECT_NE(std::string(e.what()).find(host), std::string::npos) << e.what();
        }
    }
}

}  // namespace
}  // namespace foundation::network
