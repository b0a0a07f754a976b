// fnet reverse and fnet canonical: names of addresses through the system resolver.
#include <iostream>

#include "Cli.h"
#include "Commands.h"
#include "Json.h"
#include "foundation/network/InetAddress.h"

namespace fnet {
namespace {

using foundation::network::InetAddress;

int runNameOfAddress(int argc, char** argv, const char* command, const char* description,
                     std::string (InetAddress::*name)() const) {
    Cli cli(command, "[--json] [--] ADDRESS...", description);
    if (const auto status = cli.parse(argc, argv)) {
        return *status;
    }
    if (cli.arguments().empty()) {
        return cli.usageError("no address given");
    }
    return forEachInput(cli.inputs(), [&](const std::string& input) {
        try {
            const std::string found = (InetAddress(input).*name)();
            if (cli.json()) {
                std::cout << JsonObject().text("address", input).text("name", found).str() << "\n";
            } else {
                std::cout << input << "\t" << found << "\n";
            }
            return true;
        } catch (const std::exception& e) {
            if (cli.json()) {
                std::cout << JsonObject().text("address", input).text("error", e.what()).str()
                          << "\n";
            }
            cli.error(input + ": " + e.what());
            return false;
        }
    });
}

}  // namespace

int runReverse(int argc, char** argv) {
    return runNameOfAddress(
        argc, argv, "reverse",
        "Prints the name the system resolver gives each address (its numeric text when it\n"
        "has none): one line per address, ADDRESS<TAB>NAME. With --json: one object per\n"
        "address with the keys address and name (on failure: address, error). Blocks for as\n"
        "long as the resolver takes.",
        &InetAddress::getHostName);
}

int runCanonical(int argc, char** argv) {
    return runNameOfAddress(
        argc, argv, "canonical",
        "Prints the canonical name of each address: its reverse-lookup name resolved with\n"
        "canonical names requested: one line per address, ADDRESS<TAB>NAME. With --json:\n"
        "one object per address with the keys address and name (on failure: address,\n"
        "error). Blocks for as long as the resolver takes.",
        &InetAddress::getCanonicalHostName);
}

}  // namespace fnet
