/// @file
/// @brief The subcommands of fnet: each is one description (name, summary, usage, help, options,
/// inputs) and the code for its own work; runCommand (Cli.h) does the rest for all of them.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "Cli.h"
#include "Runner.h"

namespace fnet {

/// What a command with inputs hands the runner: its record's keys and a handler per worker.
struct Job {
    RecordKeys keys;
    std::function<Handler()> makeHandler;
};

/// How many positional arguments a command with inputs needs, and how the runner feeds them.
struct Inputs {
    /// The fewest positional arguments, and the usage error when there are fewer.
    std::size_t fewest = 1;
    const char* missing = "no input";
    /// The positional arguments before this index are not inputs (the base of `resolve`).
    std::size_t from = 0;
    InputShape shape = {};
};

struct Command {
    const char* name;
    const char* summary;      ///< its line in `fnet --help`
    const char* usage;        ///< what follows "usage: fnet NAME "
    const char* description;  ///< the paragraph of `fnet NAME --help`
    std::vector<Option> options = {};
    Inputs inputs = {};
    /// A command with inputs: reads its options and says what to do with each input (throws
    /// UsageError for options that do not go together).
    Job (*prepare)(const Cli& cli) = nullptr;
    /// A command without inputs: does its work and returns the exit status.
    int (*run)(const Cli& cli) = nullptr;

    bool takesInput() const { return prepare != nullptr; }
};

extern const Command kVersionCommand;
extern const Command kParseCommand;
extern const Command kIriCommand;
extern const Command kResolveCommand;
extern const Command kRelativizeCommand;
extern const Command kBuildCommand;
extern const Command kCompareCommand;
extern const Command kNormalizeCommand;
extern const Command kIdnCommand;
extern const Command kAddrCommand;
extern const Command kLookupCommand;
extern const Command kReverseCommand;
extern const Command kCanonicalCommand;
extern const Command kHostnameCommand;
extern const Command kInterfacesCommand;

}  // namespace fnet
