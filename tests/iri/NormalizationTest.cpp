#include <gtest/gtest.h>
#include <unicode/errorcode.h>
#include <unicode/idna.h>

#include <memory>
#include <stdexcept>
#include <string>

#include "foundation/network/IRI.h"
#include "foundation/network/IdnConverter.h"
#include "foundation/network/Normalization.h"
#include "support/Text.h"

namespace foundation::network {
namespace {

using fntest::u16;
using fntest::utf8;

iri::Normalization with(bool characters, bool host, bool path = true) {
    iri::Normalization how;
    how.characters = characters;
    how.host = host;
    how.pathSegments = path;
    return how;
}

struct Row {
    const char* input;
    const char* expected;
    iri::Normalization how;
};

// Examples of RFC 3986 section 6.2.2 and RFC 3987 section 5.3, then the edges each step has.
const Row kRows[] = {
    {"HTTP://www.Example.com/", "http://www.example.com/", {}},
    {"eXAMPLE://a/./b/../b/%63/%7bfoo%7d", "example://a/b/c/%7Bfoo%7D", {}},
    {"http://example.org/%7euser", "http://example.org/~user", {}},
    {"http://example.org/%7Euser", "http://example.org/~user", {}},
    {"http://example.com", "http://example.com/", {}},
    {"http://example.com:80/", "http://example.com/", {}},
    {"http://www.example.org/red%09ros%C3%A9#red", "http://www.example.org/red%09rosé#red", {}},
    {"http://www.example.org/re%CC%81sum%C3%A9.html", "http://www.example.org/résumé.html",
     with(true, false)},
    {"http://www.example.org/re\u0301sume\u0301", "http://www.example.org/re\u0301sume\u0301", {}},
    {"http://xn--bcher-kva.example/", "http://bücher.example/", with(false, true)},
    {"http://B%C3%BCcher.Example/", "http://bücher.example/", {}},
    {"http://xn--a.example/", "http://xn--a.example/", with(false, true)},
    // An escape whose character would make a new escape with a stray "%" stays.
    {"s:?%%333%4%31%%41x", "s:?%%333%4%31%%41x", {}},
    // A Unicode form that could not stand as a host ("\uFE38" maps to "}") is not taken.
    {"ts://\u00C3\uFE38", "ts://\u00C3\uFE38", with(false, true)},
    // Escapes: hex case, delimiters and invalid UTF-8 kept, overlong and surrogate forms kept.
    {"s:%2f%3a%25%41%2D", "s:%2F%3A%25A-", {}},
    {"s:%c3%28%C3", "s:%C3%28%C3", {}},
    {"s:%C0%AF%ED%A0%80", "s:%C0%AF%ED%A0%80", {}},
    {"s:%ee%80%80", "s:%EE%80%80", {}},
    {"s:%F0%90%80%80", "s:\U00010000", {}},
    {"http://H%41st/", "http://hast/", {}},
    {"http://[FE80::1]/", "http://[FE80::1]/", {}},
    // Dot segments: above the root, an authority-like result, relative paths, switched off.
    {"http://a/../../b/./c/..", "http://a/b/", {}},
    {"s:/.//a/../b", "s:/.//b", {}},
    {"s:/a/..//b", "s:/.//b", {}},
    {"../a/./b", "../a/./b", {}},
    {"/a/../b?x#y", "/b?x#y", {}},
    {"//h/a/%2E%2E/b", "//h/b", {}},
    {"http://a/./b", "http://a/./b", with(false, false, false)},
    // Scheme defaults: only well-known schemes, only their own port.
    {"HTTPS://a:443", "https://a/", {}},
    {"wss://a:80/", "wss://a:80/", {}},
    {"ftp://a:21", "ftp://a", {}},
    {"foo://a:80", "foo://a:80", {}},
    // Values already normal but for one detail behind another component.
    {"http://[::1]:80", "http://[::1]/", {}},
    {"http://u@h:8080", "http://u@h:8080/", {}},
    {"http://u:P@h:80/a", "http://u:P@h/a", {}},
    {"file:///a/./b", "file:///a/b", {}},
    {"s://u@H", "s://u@h", {}},
    {"", "", {}},
};

TEST(IRINormalize, Table) {
    for (const Row& row : kRows) {
        const IRI iri(u16(row.input));
        const IRI normal = iri.normalize(row.how);
        EXPECT_EQ(utf8(normal.toString()), row.expected) << row.input;
        EXPECT_EQ(utf8(iri.toString()), row.input) << "operand changed";
        EXPECT_EQ(normal.normalize(row.how), normal) << row.input;
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
