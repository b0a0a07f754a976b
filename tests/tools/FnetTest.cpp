// End-to-end runs of the built fnet as a user would run it: the runs of tests/data/tool_cases.tsv,
// and what a table cannot say.
#include <gtest/gtest.h>
#include <poll.h>

#include <algorithm>
#include <boost/json/src.hpp>
#include <set>
#include <string>

#include "support/Corpus.h"
#include "support/RunFnet.h"

namespace {

using fntest::runFnet;

TEST(FnetTest, ToolCases) {
    fntest::checkToolTable("tool_cases.tsv");
}

// Every command `fnet --help` lists explains its usage, its JSON and its exit statuses, and
// refuses an unknown option as a usage error.
TEST(FnetTest, EveryListedCommandHasHelpAndRefusesUnknownOptions) {
    const std::string help = runFnet("--help").out;
    std::set<std::string> commands;
    for (const auto& line : fntest::lines(help.substr(help.find("Commands:\n")))) {
        if (line.rfind("  ", 0) == 0) {
            commands.insert(fntest::words(line).at(0));
        }
    }
    EXPECT_GE(commands.size(), 15u) << help;
    for (const auto& command : commands) {
        SCOPED_TRACE(command);
        const auto run = runFnet(command + " --help");
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.out.rfind("usage: fnet " + command + " ", 0), 0u) << run.out;
        for (const char* part : {"--json", "Exit status: 0", "2 on a usage error"}) {
            EXPECT_NE(run.out.find(part), std::string::npos) << part;
        }
        const auto bad = runFnet(command + " --no-such");
        EXPECT_EQ(bad.status, 2);
        EXPECT_NE(bad.err.find("usage: fnet " + command), std::string::npos) << bad.err;
    }
}

// Many inputs on several threads, a line of ten megabytes among them, come out in the order they
// went in, on standard output and on standard error alike.
TEST(FnetTest, JobsKeepTheInputOrder) {
    std::string lines = "x://h/" + std::string(10 << 20, 'a') + "\n";
    for (int i = 0; i < 5000; ++i) {
        lines += (i % 7 == 3 ? " bad" : "x://h/") + std::to_string(i) + "\n";
    }
    const auto one = runFnet("parse --json --jobs 1 -", lines);
    const auto four = runFnet("parse --json --jobs 4 -", lines);
    EXPECT_EQ(one.status, 1);
    EXPECT_EQ(std::count(one.out.begin(), one.out.end(), '\n'), 5001);
    EXPECT_NE(one.out.find("\"path\":\"/" + std::string(10 << 20, 'a') + "\""), std::string::npos);
    EXPECT_TRUE(four.out == one.out && four.err == one.err && four.status == one.status);
}

// A result is written as soon as its line is read, before the input ends: a pipeline sees it at
// once. (Should the tool wait for the end of its input, the poll below gives up after 20 s.)
TEST(FnetTest, AnswersEachLineBeforeTheInputEnds) {
    int toTool[2];
    int fromTool[2];
    ASSERT_EQ(::pipe2(toTool, O_CLOEXEC) | ::pipe2(fromTool, O_CLOEXEC), 0);
    const std::string in = "/dev/fd/" + std::to_string(toTool[0]);
    const std::string out = "/dev/fd/" + std::to_string(fromTool[1]);
    const pid_t child = fntest::spawn({FNET_EXE, "parse", "--json", "-"}, in, out);
    ::close(toTool[0]);
    ::close(fromTool[1]);
    ASSERT_EQ(::write(toTool[1], "x://first\n", 10), 10);
    pollfd ready{fromTool[0], POLLIN, 0};
    char buffer[256] = {};
    EXPECT_EQ(::poll(&ready, 1, 20000), 1);
    EXPECT_GT(::read(fromTool[0], buffer, sizeof buffer - 1), 0);
    ::close(toTool[1]);
    EXPECT_EQ(fntest::waitFor(child), 0);
    ::close(fromTool[0]);
    EXPECT_EQ(std::string(buffer).rfind("{\"input\":\"x://first\",\"valid\":true", 0), 0u)
        << buffer;
}

// parse reads the components off the text it has checked; iri asks the IRI value for them in
// Encoding 1 (as written). Over real URLs and IRIs the two must agree, and on validity too.
TEST(FnetTest, ParseAndIriAgreeOverTheCorpora) {
    std::string input =
        "x://[::1]:80/p\n//u:p@[v1.x]:1?q#f\na:b/c:d\n?q:r#f:g\nx://u:p@h:8/\n//h\n#\nx:\n";
    for (const char* corpus : {"urls.txt", "iris.txt"}) {
        for (const auto& line : fntest::readLines(corpus, 3000)) {
            input += line + "\n";
        }
    }
    const auto parsed = fntest::lines(runFnet("parse --json -", input).out);
    const auto read = fntest::lines(runFnet("iri --json -", input).out);
    ASSERT_EQ(parsed.size(), read.size());
    ASSERT_GT(parsed.size(), 5900u);
    for (std::size_t i = 0; i < parsed.size(); ++i) {
        const auto parse = boost::json::parse(parsed[i]).as_object();
        const auto iri = boost::json::parse(read[i]).as_object();
        SCOPED_TRACE(parsed[i]);
        ASSERT_EQ(parse.at("valid").as_bool(), iri.at("error").is_null());
        for (const char* key :
             {"scheme", "port", "userInfo", "host", "path", "query", "fragment"}) {
            const auto& value = iri.at(key);
            if (parse.at("valid").as_bool()) {
                EXPECT_EQ(parse.at(key), value.is_object() ? value.as_object().at("1") : value)
                    << key;
            }
        }
    }
}

}  // namespace
