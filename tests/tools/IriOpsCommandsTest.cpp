// End to end: the built fnet's resolve, relativize, normalize, build and compare subcommands, their
// exit statuses and JSON keys.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#define FNET_EXE FNET_BINARY
#include "support/RunFnet.h"

namespace {

using Outcome = fntest::ToolRun;

Outcome fnet(const std::string& arguments, const std::string& stdinText = "") {
    return fntest::runFnet(arguments, stdinText);
}

TEST(IriOpsCommandsTest, Resolve) {
    const Outcome plain = fnet("resolve 'http://a/b/c/d;p?q' g ../g '' - '#s'", "?y\n");
    EXPECT_EQ(plain.status, 0);
    EXPECT_EQ(plain.out,
              "http://a/b/c/g\nhttp://a/b/g\nhttp://a/b/c/d;p?q\nhttp://a/b/c/d;p?y\n"
              "http://a/b/c/d;p?q#s\n");
    EXPECT_EQ(fnet("resolve --ascii 'http://h/\xc3\xa4/' x%2F 'http://%C3%A4.h/%7e'").out,
              "http://h/%C3%A4/x%2F\nhttp://%C3%A4.h/%7e\n");
    const Outcome json = fnet("resolve --json -- 'http://h/a' ':x' 'b'");
    EXPECT_EQ(json.status, 1);
    EXPECT_EQ(json.out,
              "{\"input\":\":x\",\"base\":\"http://h/a\",\"target\":null,\"targetAscii\":null,"
              "\"error\":\"IRI parsing failed\"}\n"
              "{\"input\":\"b\",\"base\":\"http://h/a\",\"target\":\"http://h/b\","
              "\"targetAscii\":\"http://h/b\",\"error\":null}\n");
    // A bad base: every reference fails, and the message names the base.
    const Outcome badBase = fnet("resolve --json ':bad' a");
    EXPECT_NE(badBase.out.find("\"error\":\"base: IRI parsing failed\""), std::string::npos);
    EXPECT_EQ(badBase.err, "fnet resolve: ':bad': base: IRI parsing failed\n");
    EXPECT_EQ(fnet("resolve 'http://h/'").status, 2);
    EXPECT_EQ(fnet("resolve --bogus a b").status, 2);
}

TEST(IriOpsCommandsTest, Normalize) {
    EXPECT_EQ(
        fnet("normalize 'HTTP://A:80/./b/../%7e%c3%a9' - 'eXAMPLE://a/./b/../b/%63/%7bfoo%7d'",
             "http://xn--bcher-kva.example\n")
            .out,
        "http://a/~\xc3\xa9\nhttp://xn--bcher-kva.example/\nexample://a/b/c/%7Bfoo%7D\n");
    EXPECT_EQ(fnet("normalize --host --no-path http://xn--bcher-kva.example/./").out,
              "http://b\xc3\xbc"
              "cher.example/./\n");
    EXPECT_EQ(fnet("normalize --characters --json http://h/e%CC%81 :x http://h/").out,
              "{\"input\":\"http://h/e%CC%81\",\"normalized\":\"http://h/\xc3\xa9\","
              "\"uri\":\"http://h/%C3%A9\",\"changed\":true,\"error\":null}\n"
              "{\"input\":\":x\",\"normalized\":null,\"uri\":null,\"changed\":null,"
              "\"error\":\"IRI parsing failed\"}\n"
              "{\"input\":\"http://h/\",\"normalized\":\"http://h/\",\"uri\":\"http://h/\","
              "\"changed\":false,\"error\":null}\n");
    EXPECT_EQ(fnet("normalize").status, 2);
}

TEST(IriOpsCommandsTest, Relativize) {
    const Outcome plain = fnet("relativize 'http://h/a/b/' 'http://h/a/c' 'http://h/a/b/x?q#f'");
    EXPECT_EQ(plain.status, 0);
    EXPECT_EQ(plain.out, "../c\n./x?q#f\n");
    const Outcome json = fnet("relativize --json 'http://h/a/b/e/d' 'http://h/a/c' rel");
    EXPECT_EQ(json.status, 1);
    EXPECT_EQ(json.out,
              "{\"input\":\"http://h/a/c\",\"base\":\"http://h/a/b/e/d\",\"relative\":\"../c\","
              "\"roundTrip\":false,\"error\":null}\n"
              "{\"input\":\"rel\",\"base\":\"http://h/a/b/e/d\",\"relative\":null,"
              "\"roundTrip\":null,\"error\":\"Cannot make relative to base. Already relative\"}\n");
    EXPECT_EQ(fnet("relativize --json 'http://h/a' 'http://h/%2F?%3F'").out,
              "{\"input\":\"http://h/%2F?%3F\",\"base\":\"http://h/a\",\"relative\":\"%2F?%3F\","
              "\"roundTrip\":true,\"error\":null}\n");
    // roundTrip reads the printed text back: it must not name the scheme "isbn".
    EXPECT_EQ(fnet("relativize --json urn: urn:isbn:foo").out,
              "{\"input\":\"urn:isbn:foo\",\"base\":\"urn:\",\"relative\":\"./isbn:foo\","
              "\"roundTrip\":true,\"error\":null}\n");
    EXPECT_EQ(fnet("relativize").status, 2);
}

TEST(IriOpsCommandsTest, Build) {
    const Outcome json =
        fnet("build --json --scheme http --host '[::1]' --port 8080 --path '/a b' --query q");
    EXPECT_EQ(json.status, 0);
    EXPECT_NE(json.out.find("\"error\":null"), std::string::npos);
    EXPECT_NE(json.out.find("\"toString\":\"http://[::1]:8080/a%20b?q\""), std::string::npos);
    const Outcome refused = fnet("build --json --user-info u --port 1 --path p");
    EXPECT_EQ(refused.status, 1);
    EXPECT_NE(refused.out.find("\"error\":\"User Info requires a host\""), std::string::npos);
    EXPECT_EQ(fnet("build --scheme 1x").status, 1);
    EXPECT_EQ(fnet("build --port 65536").status, 2);
    EXPECT_EQ(fnet("build positional").status, 2);
    EXPECT_NE(fnet("build --host h --path /p").out.find("//h/p"), std::string::npos);
}

TEST(IriOpsCommandsTest, Compare) {
    const Outcome plain = fnet("compare a a");
    EXPECT_EQ(plain.status, 0);
    EXPECT_EQ(plain.out.rfind("equal=true less=false hashA=", 0), 0u);
    const Outcome json = fnet("compare --json 'http://h:080/' 'http://h:80/' - ", "x y\nb\n");
    EXPECT_EQ(json.status, 1);
    EXPECT_NE(json.out.find("{\"input\":[\"http://h:080/\",\"http://h:80/\"],\"equal\":false,"
                            "\"less\":true,\"hashA\":"),
              std::string::npos);
    EXPECT_NE(json.out.find("{\"input\":[\"x y\",\"b\"],\"equal\":null,\"less\":null,"
                            "\"hashA\":null,\"hashB\":null,\"error\":\"a: IRI parsing failed\"}"),
              std::string::npos);
    // Pairs straddle arguments and standard input; an unpaired last input is a usage error.
    const Outcome straddling = fnet("compare a - d", "b\nc\n");
    EXPECT_EQ(straddling.status, 0);
    EXPECT_EQ(straddling.out.rfind("equal=false less=true", 0), 0u);
    EXPECT_EQ(std::count(straddling.out.begin(), straddling.out.end(), '\n'), 2);
    EXPECT_EQ(fnet("compare a").status, 2);
    EXPECT_EQ(fnet("compare a b -", "c\n").status, 2);
}

}  // namespace
