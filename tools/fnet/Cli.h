/// @file
/// @brief Command-line conventions shared by every fnet subcommand.
///
/// Every subcommand takes `--help`, `--json` and `--` (end of options); one that reads inputs also
/// takes `--jobs N`, and an input `-` stands for the lines of standard input, one input per line.
/// Exit status: 0 when every input succeeded, 1 when any failed (its message printed, the rest
/// still processed), 2 on a usage error.
#pragma once

#include <map>
#include <optional>
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

/// Parses one subcommand's arguments. `--json` and `--help` are always accepted.
class Cli {
public:
    Cli(std::string command, std::string usage, std::string description,
        std::vector<Option> options = {});

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

    const std::string& command() const { return command_; }

    /// Prints "fnet CMD: message" and the usage line to stderr; returns kExitUsage.
    int usageError(std::string_view message) const;

    /// Prints "fnet CMD: message" to stderr (a failure of a command without inputs).
    void error(std::string_view message) const;

    std::string helpText() const;

    /// Marks a subcommand that reads no inputs (hostname, interfaces, build): its --help then
    /// says "0 on success, 1 on failure" instead of speaking of inputs.
    Cli& takesNoInput() {
        takesInput_ = false;
        return *this;
    }

private:
    std::string command_;
    std::string usage_;
    std::string description_;
    std::vector<Option> options_;
    bool json_ = false;
    bool takesInput_ = true;
    unsigned jobs_ = 1;
    std::map<std::string, std::string> values_;
    std::vector<std::string> arguments_;
};

}  // namespace fnet
