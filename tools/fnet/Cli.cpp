#include "Cli.h"

#include <algorithm>
#include <charconv>
#include <iostream>
#include <sstream>
#include <thread>

namespace fnet {

Cli::Cli(std::string command, std::string usage, std::string description,
         std::vector<Option> options)
    : command_(std::move(command)),
      usage_(std::move(usage)),
      description_(std::move(description)),
      options_(std::move(options)) {}

std::optional<int> Cli::parse(int argc, char** argv) {
    if (takesInput_) {
        options_.push_back({"--jobs", "N",
                            "process inputs on N threads (default: the number of cores);\n" +
                                std::string(24, ' ') + "the output keeps the order of the inputs"});
    }
    jobs_ = std::max(1u, std::thread::hardware_concurrency());
    bool optionsEnded = false;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (optionsEnded || arg == "-" || arg.size() < 2 || arg[0] != '-') {
            arguments_.push_back(arg);
            continue;
        }
        if (arg == "--") {
            optionsEnded = true;
        } else if (arg == "--help" || arg == "-h") {
            std::cout << helpText();
            return kExitOk;
        } else if (arg == "--json") {
            json_ = true;
        } else {
            std::string name = arg;
            std::optional<std::string> inlineValue;
            if (const auto eq = arg.find('='); eq != std::string::npos && arg.rfind("--", 0) == 0) {
                name = arg.substr(0, eq);
                inlineValue = arg.substr(eq + 1);
            }
            const Option* option = nullptr;
            for (const auto& candidate : options_) {
                if (candidate.name == name) {
                    option = &candidate;
                }
            }
            if (option == nullptr) {
                return usageError("unknown option '" + arg + "'");
            }
            if (option->value.empty()) {
                if (inlineValue) {
                    return usageError("option '" + name + "' takes no value");
                }
                values_[name] = "";
            } else if (inlineValue) {
                values_[name] = *inlineValue;
            } else if (i + 1 < argc) {
                values_[name] = argv[++i];
            } else {
                return usageError("option '" + name + "' needs a value");
            }
        }
    }
    if (const auto jobs = values_.find("--jobs"); jobs != values_.end()) {
        const std::string& text = jobs->second;
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
    std::cerr << "fnet " << command_ << ": " << message << "\n"
              << "usage: fnet " << command_ << " " << usage_ << "\n"
              << "Try 'fnet " << command_ << " --help'.\n";
    return kExitUsage;
}

void Cli::error(std::string_view message) const {
    std::cerr << "fnet " << command_ << ": " << message << "\n";
}

std::string Cli::helpText() const {
    std::ostringstream out;
    out << "usage: fnet " << command_ << " " << usage_ << "\n\n"
        << description_ << "\n\nOptions:\n";
    for (const auto& option : options_) {
        std::string left = option.name + (option.value.empty() ? "" : " " + option.value);
        out << "  " << left << std::string(left.size() < 22 ? 22 - left.size() : 1, ' ')
            << option.help << "\n";
    }
    if (!takesInput_) {
        out << "  --json                JSON output: one object per line\n"
               "  --help                show this help\n\n"
               "Exit status: 0 on success, 1 on failure (its message on standard error),\n"
               "2 on a usage error.\n";
        return out.str();
    }
    out << "  --json                one JSON object per input, one per line\n"
           "  --help                show this help\n"
           "  --                    end of options: every later argument is an input\n\n"
           "An input '-' reads inputs from standard input, one per line (UTF-8).\n"
           "Exit status: 0 when every input succeeded, 1 when any failed (its message on\n"
           "standard error, the other inputs still processed), 2 on a usage error.\n";
    return out.str();
}

}  // namespace fnet
