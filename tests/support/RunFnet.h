/// @file
/// @brief Runs the built fnet (FNET_EXE) as a user would, and checks it against the tool tables
/// of tests/data/.
///
/// A tool table has one run a line: ARGUMENTS (shell words), STDIN, STATUS, STDOUT, STDERR. An
/// expected output is found in the actual one, or with a leading "=" is the whole of it ("="
/// alone: empty); an empty field checks nothing. Fields write \n, \r, \t, \\ and \xHH for the
/// characters; any other backslash stays as it is.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "support/NetworkNamespace.h"
#include "support/Table.h"

namespace fntest {

/// Runs `fnet ARGUMENTS` through the shell with `input` on its standard input.
inline CommandResult runFnet(const std::string& arguments, const std::string& input = "") {
    return run({"/bin/sh", "-c", "'" FNET_EXE "' " + arguments}, input);
}

inline std::string unescape(const std::string& field) {
    std::string out;
    for (std::size_t i = 0; i < field.size(); ++i) {
        const char next = i + 1 < field.size() ? field[i + 1] : '\0';
        if (field[i] != '\\' || std::string("nrt\\x").find(next) == std::string::npos) {
            out += field[i];
        } else if (next == 'x') {
            out += static_cast<char>(std::stoi(field.substr(i + 2, 2), nullptr, 16));
            i += 3;
        } else {
            out += next == 'n' ? '\n' : next == 'r' ? '\r' : next == 't' ? '\t' : '\\';
            ++i;
        }
    }
    return out;
}

inline void expectOutput(const std::string& actual, const std::string& field, const char* what) {
    const std::string expected = unescape(field);
    if (!expected.empty() && expected[0] == '=') {
        EXPECT_EQ(actual, expected.substr(1)) << what;
    } else {
        EXPECT_NE(actual.find(expected), std::string::npos) << what << " lacks " << expected << "\n"
                                                            << actual.substr(0, 2000);
    }
}

/// Runs every row of the tool table `name` (in the namespace the process is in).
inline void checkToolTable(const std::string& name) {
    for (const TableRow& row : readTable(name, 5)) {
        SCOPED_TRACE(name + ":" + std::to_string(row.line) + ": fnet " + row.fields[0]);
        const CommandResult result = runFnet(unescape(row.fields[0]), unescape(row.fields[1]));
        EXPECT_EQ(std::to_string(result.status), row.fields[2]) << result.err;
        expectOutput(result.out, row.fields[3], "standard output");
        expectOutput(result.err, row.fields[4], "standard error");
    }
}

}  // namespace fntest
