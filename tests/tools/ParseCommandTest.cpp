// End to end: the built fnet's parse subcommand, its exit statuses and its JSON.
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <boost/json/src.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "support/Corpus.h"
#include "support/RunFnet.h"

namespace {

using Outcome = fntest::ToolRun;

Outcome fnet(const std::string& arguments, const std::string& stdinText = "") {
    return fntest::runFnet(arguments, stdinText);
}

TEST(ParseCommandTest, JsonComponentsAndExitStatuses) {
    const Outcome ok = fnet("parse --json -- 'x://u@[::1]:80/p?q#f'");
    EXPECT_EQ(ok.status, 0);
    EXPECT_EQ(ok.out,
              "{\"input\":\"x://u@[::1]:80/p?q#f\",\"valid\":true,\"scheme\":\"x\","
              "\"userInfo\":\"u\",\"host\":\"[::1]\",\"port\":\"80\",\"path\":\"/p\","
              "\"query\":\"q\",\"fragment\":\"f\",\"error\":null}\n");

    const Outcome relative = fnet("parse --json 'caf\xc3\xa9'");
    EXPECT_EQ(relative.status, 0);
    EXPECT_EQ(relative.out,
              "{\"input\":\"caf\xc3\xa9\",\"valid\":true,\"scheme\":null,\"userInfo\":null,"
              "\"host\":null,\"port\":null,\"path\":\"caf\xc3\xa9\",\"query\":null,"
              "\"fragment\":null,\"error\":null}\n");

    // One bad input makes the status 1; the others are still answered.
    const Outcome mixed = fnet("parse --json 'a:b' ' bad' 'x://h'");
    EXPECT_EQ(mixed.status, 1);
    EXPECT_NE(mixed.out.find("\"input\":\"a:b\",\"valid\":true"), std::string::npos);
    EXPECT_NE(mixed.out.find("\"input\":\" bad\",\"valid\":false"), std::string::npos);
    EXPECT_NE(mixed.out.find("\"input\":\"x://h\",\"valid\":true"), std::string::npos);

    EXPECT_EQ(fnet("parse").status, 2);
    EXPECT_EQ(fnet("parse --bogus x").status, 2);
    EXPECT_EQ(fnet("parse --help").status, 0);
}

TEST(ParseCommandTest, StandardInputAndInvalidUtf8) {
    const Outcome lines = fnet("parse --json -", "http://h/\n//x\r\n");
    EXPECT_EQ(lines.status, 0);
    EXPECT_NE(lines.out.find("\"host\":\"h\""), std::string::npos);
    EXPECT_NE(lines.out.find("\"host\":\"x\""), std::string::npos);

    // Bytes that are not UTF-8, in an argument and on standard input: reported, never a crash.
    const Outcome bad = fnet("parse --json \"$(printf 'a\\377\\300b')\"");
    EXPECT_EQ(bad.status, 1);
    EXPECT_NE(bad.out.find("\"valid\":false"), std::string::npos);
    EXPECT_NE(bad.out.find("\"error\":\"input is not valid UTF-8\""), std::string::npos);
    EXPECT_EQ(fnet("parse -", "\xed\xa0\x80\n\xff").status, 1);

    const Outcome plain = fnet("parse 'x://h?'");
    EXPECT_EQ(plain.status, 0);
    EXPECT_NE(plain.out.find("query     \"\""), std::string::npos);
    EXPECT_NE(plain.out.find("userInfo  (absent)"), std::string::npos);
    // A port is a number from 0 to 65535.
    EXPECT_EQ(fnet("parse 'x://h:/' 'x://h:65536/'").status, 1);
}

// parse reads the components off the text it has checked; iri asks the IRI value for them in
// Encoding 1 (as written). Over real URLs and IRIs the two must agree, and on validity too.
TEST(ParseCommandTest, ComponentsAgreeWithTheIriValue) {
    for (const char* corpus : {"urls.txt", "iris.txt"}) {
        SCOPED_TRACE(corpus);
        // Shapes the first lines may lack: IP literals, colons past the scheme, empty parts.
        std::string lines =
            "x://[::1]:80/p\n//u:p@[v1.x]:1?q#f\na:b/c:d\n?q:r#f:g\nx://u:p@h:8/\n//h\n#\nx:\n";
        for (const auto& line : fntest::readLines(corpus, 3000)) {
            lines += line + "\n";
        }
        std::istringstream parsed(fnet("parse --json -", lines).out);
        std::istringstream read(fnet("iri --json -", lines).out);
        std::string parseLine;
        std::string iriLine;
        std::size_t compared = 0;
        while (std::getline(parsed, parseLine) && std::getline(read, iriLine)) {
            const auto parse = boost::json::parse(parseLine).as_object();
            const auto iri = boost::json::parse(iriLine).as_object();
            SCOPED_TRACE(parseLine);
            ASSERT_EQ(parse.at("valid").as_bool(), iri.at("error").is_null());
            if (!parse.at("valid").as_bool()) {
                continue;
            }
            for (const char* key : {"scheme", "port"}) {
                EXPECT_EQ(parse.at(key), iri.at(key)) << key;
            }
            for (const char* key : {"userInfo", "host", "path", "query", "fragment"}) {
                const auto& forms = iri.at(key);
                EXPECT_EQ(parse.at(key), forms.is_null() ? forms : forms.as_object().at("1"))
                    << key;
            }
            ++compared;
        }
        EXPECT_GT(compared, 2900u);
    }
}

// Lines as they come from real files: each gives its own result or its own clear error, and the
// lines after it are still answered. Messages never carry raw control characters.
TEST(ParseCommandTest, UntidyLines) {
    const std::string tenMegabytes = "x://h/" + std::string(10 << 20, 'a');
    const struct {
        std::string stdinText;
        std::string inOut;  ///< expected in standard output
        std::string inErr;  ///< expected in standard error ("" : nothing there)
    } cases[] = {
        {"\xef\xbb\xbfhttp://h/\n", "{\"input\":\"http://h/\",\"valid\":true", ""},
        {"x://h\r\n", "{\"input\":\"x://h\",\"valid\":true", ""},
        {"\n", "{\"input\":\"\",\"valid\":true,\"scheme\":null", ""},
        {std::string("a\0b\n", 4), "{\"input\":\"a\\u0000b\",\"valid\":false",
         "fnet parse: 'a\\u0000b': not an IRI reference\n"},
        {"\x1b[2J\n", "\"input\":\"\\u001b[2J\",\"valid\":false", "'\\u001b[2J'"},
        {"a\xff\n", "\"input\":\"a\xef\xbf\xbd\"",
         "fnet parse: 'a\xef\xbf\xbd': input is not valid UTF-8\n"},
        {tenMegabytes + "\n", "\"path\":\"/" + std::string(10 << 20, 'a') + "\"", ""},
        {"\xef\xbb", "\"input\":\"\xef\xbf\xbd\"", "not valid UTF-8"},  // a cut mark is no mark
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.stdinText.substr(0, 40));
        // The untidy line, then a good one after it.
        const Outcome run = fnet("parse --json - 'x:/after'", c.stdinText);
        EXPECT_EQ(run.status, c.inErr.empty() ? 0 : 1);
        EXPECT_NE(run.out.find(c.inOut), std::string::npos) << run.out.substr(0, 300);
        EXPECT_NE(run.out.find("{\"input\":\"x:/after\",\"valid\":true"), std::string::npos);
        EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 2);
        if (c.inErr.empty()) {
            EXPECT_EQ(run.err, "");
        } else {
            EXPECT_NE(run.err.find(c.inErr), std::string::npos) << run.err;
        }
        for (const char control : {'\0', '\x1b'}) {
            EXPECT_EQ(run.err.find(control), std::string::npos) << run.err;
        }
    }
}

// Many inputs on several threads come out in the order they went in, on standard output and on
// standard error alike.
TEST(ParseCommandTest, JobsKeepTheInputOrder) {
    std::string lines;
    for (int i = 0; i < 5000; ++i) {
        const std::string line = (i % 7 == 3 ? " bad" : "x://h/") + std::to_string(i);
        lines += line + "\n";
    }
    const Outcome one = fnet("parse --json --jobs 1 -", lines);
    const Outcome four = fnet("parse --json --jobs 4 -", lines);
    EXPECT_EQ(one.status, 1);
    EXPECT_EQ(four.status, 1);
    EXPECT_EQ(std::count(one.out.begin(), one.out.end(), '\n'), 5000);
    EXPECT_EQ(four.out, one.out);
    EXPECT_EQ(four.err, one.err);
    EXPECT_EQ(fnet("parse --jobs 0 x").status, 2);
}

// A result is written as soon as its line is read, before the input ends: a pipeline sees it at
// once. (Should the tool wait for the end of its input, the poll below gives up after 20 s.)
TEST(ParseCommandTest, AnswersEachLineBeforeTheInputEnds) {
    int toTool[2];
    int fromTool[2];
    ASSERT_EQ(pipe(toTool), 0);
    ASSERT_EQ(pipe(fromTool), 0);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        dup2(toTool[0], STDIN_FILENO);
        dup2(fromTool[1], STDOUT_FILENO);
        for (const int fd : {toTool[0], toTool[1], fromTool[0], fromTool[1]}) {
            close(fd);
        }
        execl(FNET_EXE, FNET_EXE, "parse", "--json", "-", static_cast<char*>(nullptr));
        _exit(127);
    }
    close(toTool[0]);
    close(fromTool[1]);
    ASSERT_EQ(write(toTool[1], "x://first\n", 10), 10);
    pollfd ready{fromTool[0], POLLIN, 0};
    std::string out;
    while (out.find('\n') == std::string::npos && poll(&ready, 1, 20000) == 1) {
        char buffer[256];
        const ssize_t got = read(fromTool[0], buffer, sizeof buffer);
        if (got <= 0) {
            break;
        }
        out.append(buffer, static_cast<std::size_t>(got));
    }
    close(toTool[1]);
    int status = 0;
    waitpid(child, &status, 0);
    close(fromTool[0]);
    EXPECT_EQ(out.rfind("{\"input\":\"x://first\",\"valid\":true", 0), 0u) << out;
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
}

}  // namespace
