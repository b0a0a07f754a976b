// fnet reverse and fnet canonical: names of addresses through the system resolver.
#include <string>

#include "AddressInput.h"
#include "Commands.h"
#include "Json.h"
#include "Runner.h"
#include "foundation/network/InetAddress.h"

namespace fnet {
namespace {

using foundation::network::InetAddress;

// The job of reverse and canonical: `name` of each address.
template <std::string (InetAddress::*name)() const>
Job prepare(const Cli& cli) {
    const bool json = cli.json();
    const auto handler = [json](std::span<const std::string_view> items, Outcome& out) {
        const std::string input(items[0]);
        const std::string found = (readAddress(input).*name)();
        if (json) {
            out.keys["name"] = jsonSafe(found);
        } else {
            out.text = input + "\t" + found + "\n";
        }
    };
    return {{"name"}, [handler]() -> Handler { return handler; }};
}

// Each input waits on the resolver: every one may have a thread.
constexpr Inputs kAddresses = {.missing = "no address given", .shape = {.perThread = 1}};

}  // namespace

const Command kReverseCommand{
    .name = "reverse",
    .summary = "the name of each address (reverse lookup)",
    .usage = "[--json] [--] ADDRESS...",
    .description =
        "Prints the name the system resolver gives each address (its numeric text when it\n"
        "has none): one line per address, ADDRESS<TAB>NAME. With --json: one object per\n"
        "address with the keys input (the address), name and error. Blocks for as long as\n"
        "the resolver takes.",
    .inputs = kAddresses,
    .prepare = prepare<&InetAddress::getHostName>,
};

const Command kCanonicalCommand{
    .name = "canonical",
    .summary = "the canonical name of each address",
    .usage = "[--json] [--] ADDRESS...",
    .description =
        "Prints the canonical name of each address: its reverse-lookup name resolved with\n"
        "canonical names requested: one line per address, ADDRESS<TAB>NAME. With --json:\n"
        "one object per address with the keys input (the address), name and error. Blocks\n"
        "for as long as the resolver takes.",
    .inputs = kAddresses,
    .prepare = prepare<&InetAddress::getCanonicalHostName>,
};

}  // namespace fnet
