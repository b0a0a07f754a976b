// End-to-end tests of `fnet idn`: the built tool run through the shell.
#include <gtest/gtest.h>

#include <string>

#include "support/RunFnet.h"

namespace {

using fntest::ToolRun;

// Runs `fnet idn ARGS` with `stdinText` on its standard input.
ToolRun fnetIdn(const std::string& args, const std::string& stdinText = "") {
    return fntest::runFnet("idn " + args, stdinText);
}

TEST(IdnCommandTest, ConvertsBothWaysOneResultPerLine) {
    const struct {
        std::string args;
        std::string stdinText;
        std::string out;
    } cases[] = {
        {"B\xc3\xbc"
         "cher.example fa\xc3\x9f.de",
         "", "xn--bcher-kva.example\nfass.de\n"},
        {"--to-ascii -- -",
         "B\xc3\xbc"
         "cher.example\n\na..b\n",
         "xn--bcher-kva.example\n\na..b\n"},
        {"--to-unicode xn--bcher-kva.example XN--E28H.com", "",
         "b\xc3\xbc"
         "cher.example\n\xf0\x9f\x98\x80.com\n"},
    };
    for (const auto& c : cases) {
        const ToolRun run = fnetIdn(c.args, c.stdinText);
        EXPECT_EQ(run.status, 0) << c.args;
        EXPECT_EQ(run.out, c.out) << c.args;
    }
}

TEST(IdnCommandTest, JsonShowsInputDirectionOutputAndError) {
    const ToolRun run = fnetIdn("--json --to-unicode - xn--bcher-kva.example", "a\xff\n");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out,
              "{\"input\":\"a\xef\xbf\xbd\",\"direction\":\"toUnicode\",\"output\":null,"
              "\"errors\":null,\"error\":\"input is not valid UTF-8\"}\n"
              "{\"input\":\"xn--bcher-kva.example\",\"direction\":\"toUnicode\","
              "\"output\":\"b\xc3\xbc"
              "cher.example\",\"errors\":[],\"error\":null}\n");
    const ToolRun ascii = fnetIdn("--json x.com");
    EXPECT_EQ(ascii.status, 0);
    EXPECT_EQ(ascii.out,
              "{\"input\":\"x.com\",\"direction\":\"toAscii\",\"output\":\"x.com\",\"errors\":[],"
              "\"error\":null}\n");
}

TEST(IdnCommandTest, FailedInputIsReportedAndTheRestConverted) {
    const ToolRun run = fnetIdn("- fa\xc3\x9f.de", "\xc3\n");
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find("input is not valid UTF-8"), std::string::npos) << run.err;
    EXPECT_NE(run.out.find("fass.de\n"), std::string::npos) << run.out;
}

// The processing flags: non-transitional keeps the sharp s, STD3 refuses '_' (printed as ICU
// marks it unless --strict), --strict fails a name with any label error and names them.
TEST(IdnCommandTest, ProcessingFlagsAndStrictRefusals) {
    const struct {
        std::string args;
        int status;
        std::string out;
        std::string err;
    } cases[] = {
        {"fa\xc3\x9f.de", 0, "fass.de\n", ""},
        {"--nontransitional fa\xc3\x9f.de", 0, "xn--fa-hia.de\n", ""},
        {"--nontransitional --to-unicode xn--fa-hia.de", 0, "fa\xc3\x9f.de\n", ""},
        {"a_b.com", 0, "a_b.com\n", ""},
        {"--std3 a_b.com", 0,
         "a\xef\xbf\xbd"
         "b.com\n",
         ""},
        {"--std3 --strict a_b.com x.com", 1, "x.com\n", "'a_b.com': label errors: DISALLOWED"},
        {"--strict -- -a..b", 1, "", "'-a..b': label errors: EMPTY_LABEL, LEADING_HYPHEN"},
        {"--strict a\xe2\x80\x8d"
         "b.com",
         0, "ab.com\n", ""},  // transitional: ZWJ removed
        {"--strict --nontransitional a\xe2\x80\x8d"
         "b.com",
         1, "", "label errors: CONTEXTJ"},
        {"--strict --json a..b", 1,
         "{\"input\":\"a..b\",\"direction\":\"toAscii\",\"output\":null,"
         "\"errors\":[\"EMPTY_LABEL\"],\"error\":\"label errors: EMPTY_LABEL\"}\n",
         ""},
        {"--json a..b", 0,
         "{\"input\":\"a..b\",\"direction\":\"toAscii\",\"output\":\"a..b\","
         "\"errors\":[\"EMPTY_LABEL\"],\"error\":null}\n",
         ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.args);
        const ToolRun run = fnetIdn(c.args);
        EXPECT_EQ(run.status, c.status);
        EXPECT_EQ(run.out, c.out);
        EXPECT_NE(run.err.find(c.err), std::string::npos) << run.err;
    }
}

TEST(IdnCommandTest, UsageErrors) {
    for (const char* args : {"--to-ascii --to-unicode x.com", "", "--bogus x.com"}) {
        EXPECT_EQ(fnetIdn(args).status, 2) << args;
    }
    EXPECT_EQ(fnetIdn("--help").status, 0);
}

}  // namespace
