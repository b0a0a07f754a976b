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
              "\"error\":\"input is not valid UTF-8\"}\n"
              "{\"input\":\"xn--bcher-kva.example\",\"direction\":\"toUnicode\","
              "\"output\":\"b\xc3\xbc"
              "cher.example\",\"error\":null}\n");
    const ToolRun ascii = fnetIdn("--json x.com");
    EXPECT_EQ(ascii.status, 0);
    EXPECT_EQ(
        ascii.out,
        "{\"input\":\"x.com\",\"direction\":\"toAscii\",\"output\":\"x.com\",\"error\":null}\n");
}

TEST(IdnCommandTest, FailedInputIsReportedAndTheRestConverted) {
    const ToolRun run = fnetIdn("- fa\xc3\x9f.de", "\xc3\n");
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.err.find("input is not valid UTF-8"), std::string::npos) << run.err;
    EXPECT_NE(run.out.find("fass.de\n"), std::string::npos) << run.out;
}

TEST(IdnCommandTest, UsageErrors) {
    for (const char* args : {"--to-ascii --to-unicode x.com", "", "--bogus x.com"}) {
        EXPECT_EQ(fnetIdn(args).status, 2) << args;
    }
    EXPECT_EQ(fnetIdn("--help").status, 0);
}

}  // namespace
