// fnet lookup: forward name lookup through the system resolver.
#include <iostream>

#include "Cli.h"
#include "Commands.h"
#include "Json.h"
#include "foundation/network/InetAddress.h"

namespace fnet {

using foundation::network::InetAddress;

int runLookup(int argc, char** argv) {
    Cli cli("lookup", "[--first] [--json] [--] NAME...",
            "Resolves each name and prints every address the system resolver returns, in its\n"
            "order: one line per name, the name then each address, tab-separated. With --json:\n"
            "one object per name with the keys name and addresses (an array of texts). A\n"
            "resolver failure prints the resolver's message (\"Host not found (authoritative)\")\n"
            "(JSON: name, error) and counts as failed. Blocks for as long as the resolver takes.",
            {{"--first", "", "only the first address (InetAddress::getByName)"}});
    if (const auto status = cli.parse(argc, argv)) {
        return *status;
    }
    if (cli.arguments().empty()) {
        return cli.usageError("no name given");
    }
    const bool first = cli.has("--first");
    return forEachInput(cli.inputs(), [&](const std::string& name) {
        try {
            std::vector<std::string> texts;
            if (first) {
                texts.push_back(InetAddress::getByName(name).toString());
            } else {
                for (const auto& address : InetAddress::getAllByName(name)) {
                    texts.push_back(address.toString());
                }
            }
            if (cli.json()) {
                std::cout << JsonObject().text("name", name).texts("addresses", texts).str()
                          << "\n";
            } else {
                std::cout << name;
                for (const auto& text : texts) {
                    std::cout << "\t" << text;
                }
                std::cout << "\n";
            }
            return true;
        } catch (const std::exception& e) {
            if (cli.json()) {
                std::cout << JsonObject().text("name", name).text("error", e.what()).str() << "\n";
            }
            cli.error(name + ": " + e.what());
            return false;
        }
    });
}

}  // namespace fnet
