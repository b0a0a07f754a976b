/// @file
/// @brief Runs the built fnet binary (FNET_EXE) as a user would, for end-to-end tests.
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

namespace fntest {

struct ToolRun {
    int status = -1;  ///< exit status, -1 when the tool did not exit normally
    std::string out;  ///< standard output
    std::string err;  ///< standard error
};

/// Runs `fnet ARGUMENTS` (shell words, quoted by the caller) with `stdinText` on its standard
/// input.
inline ToolRun runFnet(const std::string& arguments, const std::string& stdinText = "") {
    char directory[] = "/tmp/fnet_test_XXXXXX";
    ToolRun run;
    if (mkdtemp(directory) == nullptr) {
        return run;
    }
    const std::string dir = directory;
    std::ofstream(dir + "/in", std::ios::binary) << stdinText;
    const std::string command =
        "'" FNET_EXE "' " + arguments + " <'" + dir + "/in' >'" + dir + "/out' 2>'" + dir + "/err'";
    const int wait = std::system(command.c_str());
    run.status = WIFEXITED(wait) ? WEXITSTATUS(wait) : -1;
    const auto slurp = [&](const char* name) {
        std::ifstream in(dir + "/" + name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    };
    run.out = slurp("out");
    run.err = slurp("err");
    for (const char* name : {"/in", "/out", "/err"}) {
        unlink((dir + name).c_str());
    }
    rmdir(directory);
    return run;
}

}  // namespace fntest
