/// @file
/// @brief Command-line conventions shared by every fnet subcommand, parsed with CLI11.
///
/// Every subcommand takes `--help`, `--json` and `--` (end of options); one that reads inputs also
/// takes `--jobs N`, and an input `-` stands for the lines of standard input, one input per line.
/// An option's value may follow it or be joined to it (`--jobs=4`). Exit status: 0 when every
/// input succeeded, 1 when any failed (its message printed, the rest still processed), 2 on a
/// usage error.
#pragma once

#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace fnet {

constexpr int kExitOk = 0;
constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;

/// An option of a subcommand, such as `--first` or `--scheme S`.
struct Option {
    std::string name;   ///< with its dashes: "--first"
    std::string value;  ///< name of its value for --help ("S"), empty for a flag
    std::string help;
};

/// What a command's set-up throws for options that do not go together: the runner prints it
/// as a usage error (exit status 2).
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct Command;

/// One subcommand's arguments, parsed after its description. `--json` and `--help` are always
/// accepted.
class Cli {
public:
    explicit Cli(const Command& command);

    /// Parses argv (argv[0] is the subcommand's name). Returns an exit status when the caller
    /// must stop at once (--help printed: 0; usage error printed: 2), else nothing.
    std::optional<int> parse(int argc, char** argv);

    bool json() const { return json_; }
    bool has(const std::string& option) const { return values_.count(option) != 0; }
    const std::string& value(const std::string& option) const { return values_.at(option); }

    /// The positional arguments as given.
    const std::vector<std::string>& arguments() const { return arguments_; }

    /// How many threads may process inputs (--jobs; default: the number of cores).
    unsigned jobs() const { return jobs_; }

    const std::string& command() const { return name_; }

    /// Prints "fnet CMD: message" and the usage line to stderr; returns kExitUsage.
    int usageError(std::string_view message) const;

    /// Prints "fnet CMD: message" to stderr (a failure of a command without inputs).
    void error(std::string_view message) const;

private:
    const Command& command_;
    std::string name_;
    bool json_ = false;
    unsigned jobs_ = 1;
    std::map<std::string, std::string> values_;
    std::vector<std::string> arguments_;
};

/// Runs a subcommand: parses its arguments after its description, checks the number of inputs,
/// then runs its inputs through the runner (or, for a command without inputs, the command).
/// Returns the exit status.
int runCommand(const Command& command, int argc, char** argv);

}  // namespace fnet
