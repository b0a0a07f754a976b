// End to end: the built fnet's iri subcommand, its exit statuses, its JSON keys and values.
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include <gtest/gtest.h>

namespace {

struct Outcome {
    int status;
    std::string out;
};

// Runs fnet with `arguments` (shell words) and `stdinText` on its standard input.
Outcome fnet(const std::string& arguments, const std::string& stdinText = "") {
    char inputPath[] = "/tmp/fnet_iri_test_XXXXXX";
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

TEST(IriCommandTest, JsonCarriesEveryKeyInOrder) {
    const Outcome ok = fnet("iri --json -- 'x://u@[::1]:80/caf\xc3\xa9?q#f%'");
    EXPECT_EQ(ok.status, 0);
    EXPECT_EQ(ok.out,
              "{\"input\":\"x://u@[::1]:80/caf\xc3\xa9?q#f%\",\"error\":null,\"empty\":false,"
              "\"absolute\":true,\"opaque\":false,\"hasAuthority\":true,\"hasAbsolutePath\":true,"
              "\"scheme\":\"x\",\"port\":\"80\",\"portNumber\":80,"
              "\"userInfo\":{\"0\":\"u\",\"1\":\"u\",\"2\":\"u\",\"3\":\"u\",\"4\":\"u\"},"
              "\"host\":{\"0\":\"[::1]\",\"1\":\"[::1]\",\"2\":\"[::1]\",\"3\":\"[::1]\",\"4\":\"[:"
              ":1]\"},"
              "\"path\":{\"0\":\"/caf\xc3\xa9\",\"1\":\"/caf\xc3\xa9\",\"2\":\"/caf\xc3\xa9\","
              "\"3\":\"/caf%C3%A9\",\"4\":\"/caf%C3%A9\"},"
              "\"query\":{\"0\":\"q\",\"1\":\"q\",\"2\":\"q\",\"3\":\"q\",\"4\":\"q\"},"
              "\"fragment\":{\"0\":\"f%\",\"1\":\"f%\",\"2\":\"f%25\",\"3\":\"f%\",\"4\":\"f%25\"},"
              "\"authority\":{\"0\":\"u@[::1]:80\",\"1\":\"u@[::1]:80\",\"2\":\"u@[::1]:80\","
              "\"3\":\"u@[::1]:80\",\"4\":\"u@[::1]:80\"},"
              "\"schemeSpecificPart\":{\"0\":\"//u@[::1]:80/caf\xc3\xa9?q\",\"1\":\"//u@[::1]:80/"
              "caf\xc3\xa9?q\","
              "\"2\":\"//u@[::1]:80/caf\xc3\xa9?q\",\"3\":\"//u@[::1]:80/caf%C3%A9?q\","
              "\"4\":\"//u@[::1]:80/caf%C3%A9?q\"},"
              "\"toString\":\"x://u@[::1]:80/caf\xc3\xa9?q#f%\","
              "\"toStringStrict\":\"x://u@[::1]:80/caf\xc3\xa9?q#f%25\","
              "\"toAsciiString\":\"x://u@[::1]:80/caf%C3%A9?q#f%\","
              "\"toAsciiStringStrict\":\"x://u@[::1]:80/caf%C3%A9?q#f%25\"}\n");
}

TEST(IriCommandTest, FailuresAreReportedAndTheRestAnswered) {
    const Outcome mixed = fnet("iri --json 'a:b' ' bad' 'x://h:99999/' '' -", "s://h\n\xff\n");
    EXPECT_EQ(mixed.status, 1);
    std::size_t lines = 0;
    for (std::size_t at = mixed.out.find('\n'); at != std::string::npos;
         at = mixed.out.find('\n', at + 1)) {
        ++lines;
    }
    EXPECT_EQ(lines, 6u);
    EXPECT_NE(mixed.out.find("{\"input\":\" bad\",\"error\":\"IRI parsing failed\",\"empty\":null"),
              std::string::npos);
    EXPECT_NE(mixed.out.find("{\"input\":\"x://h:99999/\",\"error\":\"IRI parsing failed\""),
              std::string::npos);
    EXPECT_NE(mixed.out.find("\"error\":\"input is not valid UTF-8\""), std::string::npos);
    EXPECT_NE(mixed.out.find("{\"input\":\"s://h\",\"error\":null"), std::string::npos);
    EXPECT_NE(mixed.out.find("{\"input\":\"\",\"error\":null,\"empty\":true"), std::string::npos);

    const Outcome plain = fnet("iri 'http://h/%zz'");
    EXPECT_EQ(plain.status, 0);
    EXPECT_NE(plain.out.find("path [2]"), std::string::npos);  // the repair changes the path
    EXPECT_EQ(plain.out.find("host [2]"), std::string::npos);  // and not the host
    EXPECT_NE(plain.out.find("toAsciiString strict    \"http://h/%25zz\""), std::string::npos);

    EXPECT_EQ(fnet("iri").status, 2);
    EXPECT_EQ(fnet("iri --bogus x").status, 2);
    EXPECT_EQ(fnet("iri --help").status, 0);
}

}  // namespace
