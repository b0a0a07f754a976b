#include "Cli.h"

#include <iostream>
#include <sstream>

namespace fnet {

Cli::Cli(std::string command, std::string usage, std::string description,
         std::vector<Option> options)
    : command_(std::move(command)),
      usage_(std::move(usage)),
      description_(std::move(description)),
      options_(std::move(options)) {}

std::optional<int> Cli::parse(int argc, char** argv) {
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
    return std::nullopt;
}

std::vector<std::string> Cli::inputs(std::size_t from) const {
    std::vector<std::string> result;
    for (std::size_t i = from; i < arguments_.size(); ++i) {
        if (arguments_[i] != "-") {
            result.push_back(arguments_[i]);
            continue;
        }
        std::string line;
        while (std::getline(std::cin, line)) {
            if (!line.empty() && line.back() == '\r') {
                line.pop_back();
            }
            result.push_back(line);
        }
    }
    return result;
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

int forEachInput(const std::vector<std::string>& inputs,
                 const std::function<bool(const std::string&)>& one) {
    bool allOk = true;
    for (const auto& input : inputs) {
        allOk = one(input) && allOk;
    }
    return allOk ? kExitOk : kExitFailed;
}

}  // namespace fnet
