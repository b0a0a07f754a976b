// End to end: the built fnet's parse subcommand, its exit statuses and its JSON.
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

namespace {

struct Outcome {
    int status;
    std::string out;
};

// Runs fnet with `arguments` (shell words) and `stdinText` on its standard input.
Outcome fnet(const std::string& arguments, const std::string& stdinText = "") {
    char inputPath[] = "/tmp/fnet_parse_test_XXXXXX";
    const int fd = mkstemp(inputPath);
    if (fd < 0 ||
        write(fd, stdinText.data(), stdinText.size()) != static_cast<ssize_t>(stdinText.size())) {
        return {-1, ""};
    }
    close(fd);
    const std::string command =
        "'" FNET_BINARY "' " + arguments + " < " + inputPath + " 2>/dev/null";
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) {
        return {-1, ""};
    }
    std::string out;
    char buffer[4096];
    while (const std::size_t n = fread(buffer, 1, sizeof buffer, pipe)) {
        out.append(buffer, n);
    }
    const int status = pclose(pipe);
    unlink(inputPath);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, out};
}

TEST(ParseCommandTest, JsonComponentsAndExitStatuses) {
    const Outcome ok = fnet("parse --json -- 'x://u@[::1]:80/p?q#f'");
    EXPECT_EQ(ok.status, 0);
    EXPECT_EQ(ok.out,
              "{\"input\":\"x://u@[::1]:80/p?q#f\",\"valid\":true,\"scheme\":\"x\","
              "\"userInfo\":\"u\",\"host\":\"[::1]\",\"port\":\"80\",\"path\":\"/p\","
              "\"query\":\"q\",\"fragment\":\"f\"}\n");

    const Outcome relative = fnet("parse --json 'caf\xc3\xa9'");
    EXPECT_EQ(relative.status, 0);
    EXPECT_EQ(relative.out,
              "{\"input\":\"caf\xc3\xa9\",\"valid\":true,\"scheme\":null,\"userInfo\":null,"
              "\"host\":null,\"port\":null,\"path\":\"caf\xc3\xa9\",\"query\":null,"
              "\"fragment\":null}\n");

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

    const Outcome plain = fnet("parse 'x://h:/'");
    EXPECT_EQ(plain.status, 0);
    EXPECT_NE(plain.out.find("port      \"\""), std::string::npos);
    EXPECT_NE(plain.out.find("userInfo  (absent)"), std::string::npos);
}

}  // namespace
