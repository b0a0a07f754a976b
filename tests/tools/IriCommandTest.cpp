// End to end: the built fnet's iri subcommand, its exit statuses, its JSON keys and values.
#include <gtest/gtest.h>

#include <string>

#define FNET_EXE FNET_BINARY
#include "support/RunFnet.h"

namespace {

using Outcome = fntest::ToolRun;

Outcome fnet(const std::string& arguments, const std::string& stdinText = "") {
    return fntest::runFnet(arguments, stdinText);
}

// The values themselves are the library's (checked in tests/iri); here: every key, in order,
// each component as one object keyed by encoding, the port number as a JSON number.
TEST(IriCommandTest, JsonCarriesEveryKeyInOrder) {
    const Outcome ok = fnet("iri --json -- 'x://u@[::1]:80/caf\xc3\xa9?q#f%'");
    EXPECT_EQ(ok.status, 0);
    std::size_t at = 0;
    for (const char* key :
         {"{\"input\":\"x://u@[::1]:80/caf\xc3\xa9?q#f%\",\"empty\":false,"
          "\"absolute\":true,\"opaque\":false,\"hasAuthority\":true,\"hasAbsolutePath\":true,"
          "\"scheme\":\"x\",\"port\":\"80\",\"portNumber\":80,",
          "\"userInfo\":{\"0\":\"u\",\"1\":\"u\",\"2\":\"u\",\"3\":\"u\",\"4\":\"u\"},",
          "\"host\":{", "\"path\":{", "\"3\":\"/caf%C3%A9\"", "\"query\":{",
          "\"fragment\":{\"0\":\"f%\",\"1\":\"f%\",\"2\":\"f%25\",\"3\":\"f%\",\"4\":\"f%25\"},",
          "\"authority\":{", "\"schemeSpecificPart\":{",
          "\"toString\":", "\"toStringStrict\":", "\"toAsciiString\":",
          "\"toAsciiStringStrict\":\"x://u@[::1]:80/caf%C3%A9?q#f%25\",\"error\":null}\n"}) {
        const auto found = ok.out.find(key, at);
        ASSERT_NE(found, std::string::npos) << key << " after " << at << " in " << ok.out;
        at = found + std::string(key).size();
    }
    EXPECT_EQ(at, ok.out.size());
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
    EXPECT_NE(mixed.out.find("{\"input\":\" bad\",\"empty\":null"), std::string::npos);
    EXPECT_NE(mixed.out.find("\"toAsciiStringStrict\":null,\"error\":\"IRI parsing failed\"}\n"
                             "{\"input\":\"x://h:99999/\",\"empty\":null"),
              std::string::npos);
    EXPECT_NE(mixed.out.find("\"error\":\"input is not valid UTF-8\""), std::string::npos);
    EXPECT_NE(mixed.out.find("{\"input\":\"s://h\",\"empty\":false"), std::string::npos);
    EXPECT_NE(mixed.out.find("{\"input\":\"\",\"empty\":true"), std::string::npos);

    const Outcome plain = fnet("iri 'http://h/%zz'");
    EXPECT_EQ(plain.status, 0);
    EXPECT_NE(plain.out.find("path [2]"), std::string::npos);  // the repair changes the path
    EXPECT_EQ(plain.out.find("host [2]"), std::string::npos);  // and not the host
    EXPECT_NE(plain.out.find("toAsciiString strict    \"http://h/%25zz\""), std::string::npos);

    // --uri: the host as a resolver wants it, or the input failed naming the host.
    const Outcome uri = fnet(
        "iri --uri 'http://B\xc3\xbc"
        "cher.example/\xc3\xa4' http://a..b/");
    EXPECT_EQ(uri.status, 1);
    EXPECT_NE(uri.out.find("\nuri                     \"http://xn--bcher-kva.example/%C3%A4\"\n\n"),
              std::string::npos)
        << uri.out;
    EXPECT_NE(uri.err.find("Host has no ASCII form: a..b"), std::string::npos) << uri.err;
    EXPECT_NE(fnet("iri --uri --json http://[::1]/")
                  .out.find(",\"uri\":\"http://[::1]/\",\"error\":null}"),
              std::string::npos);

    EXPECT_EQ(fnet("iri").status, 2);
    EXPECT_EQ(fnet("iri --bogus x").status, 2);
    EXPECT_EQ(fnet("iri --help").status, 0);
}

}  // namespace
