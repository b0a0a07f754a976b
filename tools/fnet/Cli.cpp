#include "Cli.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <iostream>
#include <memory>
#include <sstream>
#include <thread>

#include "Commands.h"

namespace fnet {
namespace {

// Where the help of an option starts on its line.
constexpr std::size_t kHelpColumn = 22;

// The tool's --help layout: usage, the command's paragraph, one line per option in the order
// they were added, then what holds for inputs and exit statuses.
class HelpFormatter : public CLI::FormatterBase {
public:
    explicit HelpFormatter(const Command& command) : command_(command) {}

    std::string make_help(const CLI::App* app, std::string /*name*/,
                          CLI::AppFormatMode /*mode*/) const override {
        std::ostringstream out;
        out << "usage: fnet " << command_.name << " " << command_.usage << "\n\n"
            << command_.description << "\n\nOptions:\n";
        for (const CLI::Option* option : app->get_options()) {
            if (!option->get_positional()) {
                const std::string value = option->get_type_name();
                line(out, option->get_name() + (value.empty() ? "" : " " + value),
                     option->get_description());
            }
        }
        if (!command_.takesInput()) {
            out << "\nExit status: 0 on success, 1 on failure (its message on standard error),\n"
                   "2 on a usage error.\n";
            return out.str();
        }
        line(out, "--", "end of options: every later argument is an input");
        out << "\nAn input '-' reads inputs from standard input, one per line (UTF-8).\n"
               "Exit status: 0 when every input succeeded, 1 when any failed (its message on\n"
               "standard error, the other inputs still processed), 2 on a usage error.\n";
        return out.str();
    }

private:
    static void line(std::ostream& out, const std::string& left, const std::string& help) {
        out << "  " << left
            << std::string(left.size() < kHelpColumn ? kHelpColumn - left.size() : 1, ' ') << help
            << "\n";
    }

    const Command& command_;
};

}  // namespace

Cli::Cli(const Command& command) : command_(command), name_(command.name) {}

std::optional<int> Cli::parse(int argc, char** argv) {
    CLI::App app(command_.description, "fnet " + name_);
    app.set_help_flag();  // added last, so that --help lists it last
    app.allow_extras();   // the inputs, and unknown options (reported below in our words)
    app.formatter(std::make_shared<HelpFormatter>(command_));
    for (const Option& option : command_.options) {
        if (option.value.empty()) {
            app.add_flag(option.name)->description(option.help)->disable_flag_override();
        } else {
            app.add_option(option.name)
                ->description(option.help)
                ->type_name(option.value)
                ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
        }
    }
    CLI::Option* jobs = nullptr;
    if (command_.takesInput()) {
        jobs = app.add_option("--jobs")
                   ->description("process inputs on N threads (default: the number of cores);\n" +
                                 std::string(kHelpColumn + 2, ' ') +
                                 "the output keeps the order of the inputs")
                   ->type_name("N")
                   ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    }
    const CLI::Option* json =
        app.add_flag("--json")
            ->description(command_.takesInput() ? "one JSON object per input, one per line"
                                                : "JSON output: one object per line")
            ->disable_flag_override();
    app.set_help_flag("-h,--help", "show this help");
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        std::cout << app.help();
        return kExitOk;
    } catch (const CLI::ParseError& e) {
        // CLI11 names a flag given a value by its bare name ("json was given a disallowed flag
        // override"): said here as for any option.
        const std::string_view message = e.what();
        if (const auto end = message.find(" was given a disallowed flag override");
            end != std::string_view::npos) {
            return usageError("option '--" + std::string(message.substr(0, end)) +
                              "' takes no value");
        }
        return usageError(message);
    }
    // What CLI11 did not take are the inputs, as given (a CLI11 positional would read "[a,b]" as
    // a list), and unknown options; "--" is kept in its place: after it, all are inputs.
    bool optionsEnded = false;
    for (std::string& extra : app.remaining()) {
        if (!optionsEnded && extra == "--") {
            optionsEnded = true;
        } else if (!optionsEnded && extra.size() > 1 && extra[0] == '-') {
            return usageError("unknown option '" + extra + "'");
        } else {
            arguments_.push_back(std::move(extra));
        }
    }
    for (const Option& option : command_.options) {
        if (const CLI::Option* given = app.get_option(option.name); given->count() != 0) {
            values_[option.name] = option.value.empty() ? "" : given->results().back();
        }
    }
    json_ = json->count() != 0;
    jobs_ = std::max(1u, std::thread::hardware_concurrency());
    if (jobs != nullptr && jobs->count() != 0) {
        const std::string& text = jobs->results().back();
        unsigned value = 0;
        const auto [end, code] = std::from_chars(text.data(), text.data() + text.size(), value);
        if (code != std::errc() || end != text.data() + text.size() || value < 1 || value > 256) {
            return usageError("--jobs needs a number from 1 to 256");
        }
        jobs_ = value;
    }
    return std::nullopt;
}

int Cli::usageError(std::string_view message) const {
    std::cerr << "fnet " << name_ << ": " << message << "\n"
              << "usage: fnet " << name_ << " " << command_.usage << "\n"
              << "Try 'fnet " << name_ << " --help'.\n";
    return kExitUsage;
}

void Cli::error(std::string_view message) const {
    std::cerr << "fnet " << name_ << ": " << message << "\n";
}

int runCommand(const Command& command, int argc, char** argv) {
    Cli cli(command);
    if (const auto status = cli.parse(argc, argv)) {
        return *status;
    }
    const std::size_t given = cli.arguments().size();
    if (!command.takesInput() && given != 0) {
        return cli.usageError("takes no input");
    }
    if (command.takesInput() && given < command.inputs.fewest) {
        return cli.usageError(command.inputs.missing);
    }
    try {
        if (!command.takesInput()) {
            return command.run(cli);
        }
        const Job job = command.prepare(cli);
        return runInputs(cli, command.inputs.from, job.keys, job.makeHandler, command.inputs.shape);
    } catch (const UsageError& e) {
        return cli.usageError(e.what());
    }
}

}  // namespace fnet
