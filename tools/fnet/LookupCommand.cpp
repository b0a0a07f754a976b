// fnet lookup: forward name lookup through the system resolver.
#include <string>
#include <vector>

#include "Commands.h"
#include "Json.h"
#include "Runner.h"
#include "foundation/network/InetAddress.h"

namespace fnet {

using foundation::network::InetAddress;

namespace {

Job prepare(const Cli& cli) {
    const bool first = cli.has("--first");
    const bool json = cli.json();
    const auto handler = [first, json](std::span<const std::string_view> items, Outcome& out) {
        const std::string name(items[0]);
        std::vector<std::string> texts;
        if (first) {
            texts.push_back(InetAddress::getByName(name).toString());
        } else {
            for (const auto& address : InetAddress::getAllByName(name)) {
                texts.push_back(address.toString());
            }
        }
        if (json) {
            setTexts(out.keys["addresses"], texts);
            return;
        }
        out.text = name;
        for (const auto& text : texts) {
            out.text += "\t" + text;
        }
        out.text += "\n";
    };
    return {{"addresses"}, [handler]() -> Handler { return handler; }};
}

}  // namespace

const Command kLookupCommand{
    .name = "lookup",
    .summary = "resolve host names to addresses",
    .usage = "[--first] [--json] [--] NAME...",
    .description =
        "Resolves each name and prints every address the system resolver returns, in its\n"
        "order: one line per name, the name then each address, tab-separated. With --json:\n"
        "one object per name with the keys input (the name), addresses (an array of texts)\n"
        "and error. A resolver failure prints the resolver's message (\"Host not found\n"
        "(authoritative)\") and counts as failed. Blocks for as long as the resolver takes;\n"
        "with --jobs N, N names are looked up at once.",
    .options = {{"--first", "", "only the first address (InetAddress::getByName)"}},
    // Each input waits on the resolver: every one may have a thread.
    .inputs = {.missing = "no name given", .shape = {.perThread = 1}},
    .prepare = prepare,
};

}  // namespace fnet
