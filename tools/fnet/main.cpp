// fnet: every capability of foundation-network on the command line.
#include <cstring>
#include <exception>
#include <iostream>

#include "Cli.h"
#include "Commands.h"

namespace fnet {
namespace {

// Subcommands in the order --help lists them.
const Command* const kCommands[] = {
    &kVersionCommand, &kParseCommand,   &kIriCommand,       &kResolveCommand,  &kRelativizeCommand,
    &kBuildCommand,   &kCompareCommand, &kNormalizeCommand, &kIdnCommand,      &kAddrCommand,
    &kLookupCommand,  &kReverseCommand, &kCanonicalCommand, &kHostnameCommand, &kInterfacesCommand,
};

void printHelp(std::ostream& out) {
    out << "usage: fnet COMMAND [OPTIONS] [--] INPUT...\n\nCommands:\n";
    for (const Command* command : kCommands) {
        const std::size_t width = std::strlen(command->name);
        out << "  " << command->name << std::string(width < 14 ? 14 - width : 1, ' ')
            << command->summary << "\n";
    }
    out << "\nInputs are UTF-8 text: the arguments after the options, and with '-' the lines of\n"
           "standard input, one input per line. Every command takes --help (what it prints) and\n"
           "--json (one JSON object per input, one per line); '--' ends the options. Results go\n"
           "to standard output as each input is done, failures to standard error (with --json\n"
           "also in the object's key error). --jobs N spreads the inputs over N threads; the\n"
           "output keeps their order. Exit status: 0 when every input succeeded, 1 when any\n"
           "failed (the rest are still processed), 2 on a usage error. 'fnet COMMAND --help'\n"
           "for more.\n";
}

}  // namespace
}  // namespace fnet

int main(int argc, char** argv) {
    using namespace fnet;
    if (argc < 2) {
        printHelp(std::cerr);
        return kExitUsage;
    }
    const std::string name = argv[1];
    if (name == "--help" || name == "-h" || name == "help") {
        printHelp(std::cout);
        return kExitOk;
    }
    for (const Command* command : kCommands) {
        if (name == command->name) {
            try {
                return runCommand(*command, argc - 1, argv + 1);
            } catch (const std::exception& e) {
                std::cerr << "fnet " << name << ": " << e.what() << "\n";
                return kExitFailed;
            }
        }
    }
    std::cerr << "fnet: unknown command '" << name << "'\n";
    printHelp(std::cerr);
    return kExitUsage;
}
