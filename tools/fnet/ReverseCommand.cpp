// fnet reverse and fnet canonical: names of addresses through the system resolver.
#include <string>

#include "Commands.h"
#include "Json.h"
#include "Runner.h"
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
    const bool json = cli.json();
    const auto handler = [json, name](std::span<const std::string_view> items, Outcome& out) {
        const std::string input(items[0]);
        const std::string found = (InetAddress(input).*name)();
        if (json) {
            out.keys["name"] = jsonSafe(found);
        } else {
            out.text = input + "\t" + found + "\n";
        }
    };
    // Each input waits on the resolver: every one may have a thread.
    return runInputs(cli, 0, {"name"}, [&]() -> Handler { return handler; }, {.perThread = 1});
}

}  // namespace

int runReverse(int argc, char** argv) {
    return runNameOfAddress(
        argc, argv, "reverse",
        "Prints the name the system resolver gives each address (its numeric text when it\n"
        "has none): one line per address, ADDRESS<TAB>NAME. With --json: one object per\n"
        "address with the keys input (the address), name and error. Blocks for as long as\n"
        "the resolver takes.",
        &InetAddress::getHostName);
}

int runCanonical(int argc, char** argv) {
    return runNameOfAddress(
        argc, argv, "canonical",
        "Prints the canonical name of each address: its reverse-lookup name resolved with\n"
        "canonical names requested: one line per address, ADDRESS<TAB>NAME. With --json:\n"
        "one object per address with the keys input (the address), name and error. Blocks\n"
        "for as long as the resolver takes.",
        &InetAddress::getCanonicalHostName);
}

}  // namespace fnet
