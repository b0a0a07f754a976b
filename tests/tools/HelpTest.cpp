// Every fnet subcommand explains itself: --help exits 0 and describes its usage, output and exit
// statuses; an unknown option is a usage error (2).
#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>

#include "support/RunFnet.h"

namespace {

struct Command {
    const char* name;
    const char* output;  ///< a word its --help must use to describe what it prints
};

const Command kCommands[] = {
    {"version", "\"fnet VERSION\""},
    {"parse", "valid"},
    {"iri", "toAsciiStringStrict"},
    {"resolve", "targetAscii"},
    {"relativize", "roundTrip"},
    {"build", "Malformed scheme"},
    {"compare", "hashB"},
    {"normalize", "changed"},
    {"idn", "direction"},
    {"addr", "multicast"},
    {"lookup", "addresses"},
    {"reverse", "ADDRESS<TAB>NAME"},
    {"canonical", "ADDRESS<TAB>NAME"},
    {"hostname", "gethostname"},
    {"interfaces", "addresses"},
};

TEST(FnetHelp, EverySubcommandDescribesUsageOutputAndExitStatus) {
    for (const auto& command : kCommands) {
        SCOPED_TRACE(command.name);
        const fntest::ToolRun run = fntest::runFnet(std::string(command.name) + " --help");
        EXPECT_EQ(run.status, 0) << run.err;
        EXPECT_EQ(run.out.rfind("usage: fnet " + std::string(command.name) + " ", 0), 0u)
            << run.out;
        EXPECT_NE(run.out.find(command.output), std::string::npos) << run.out;
        EXPECT_NE(run.out.find("--json"), std::string::npos) << run.out;
        EXPECT_NE(run.out.find("Exit status: 0"), std::string::npos) << run.out;
        EXPECT_NE(run.out.find("2 on a usage error"), std::string::npos) << run.out;

        const fntest::ToolRun bad = fntest::runFnet(std::string(command.name) + " --no-such");
        EXPECT_EQ(bad.status, 2);
        EXPECT_NE(bad.err.find("usage: fnet " + std::string(command.name)), std::string::npos)
            << bad.err;
    }
}

// The table above covers exactly the commands that `fnet --help` lists.
TEST(FnetHelp, TopLevelHelpListsEveryCommandAndTheConventions) {
    const fntest::ToolRun run = fntest::runFnet("--help");
    ASSERT_EQ(run.status, 0);
    std::set<std::string> listed;
    std::istringstream lines(run.out.substr(run.out.find("Commands:\n")));
    std::string line;
    std::getline(lines, line);
    while (std::getline(lines, line) && line.rfind("  ", 0) == 0) {
        listed.insert(line.substr(2, line.find(' ', 2) - 2));
    }
    std::set<std::string> tested;
    for (const auto& command : kCommands) {
        tested.insert(command.name);
    }
    EXPECT_EQ(listed, tested);
    EXPECT_NE(run.out.find("Exit status: 0"), std::string::npos);

    EXPECT_EQ(fntest::runFnet("").status, 2);
    EXPECT_EQ(fntest::runFnet("no-such-command").status, 2);
}

}  // namespace
