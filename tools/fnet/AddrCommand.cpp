// fnet addr: parse address literals and show how the library classifies and prints them.
#include <boost/json/array.hpp>
#include <string>

#include "Commands.h"
#include "Json.h"
#include "Runner.h"
#include "foundation/network/InetAddress.h"

namespace fnet {

int runAddr(int argc, char** argv) {
    Cli cli("addr", "[--json] [--] TEXT...",
            "Parses each numeric IPv4 or IPv6 address (no name lookup) and prints its version,\n"
            "whether it is loopback or multicast, its bytes and its canonical text. Plain output:\n"
            "one line per address, tab-separated: its text, IPv4 or IPv6, \"loopback\" and\n"
            "\"multicast\" when they hold, \"bytes\" and the bytes in decimal. With --json: the\n"
            "keys input, version, loopback, multicast, bytes (an array of numbers), text and\n"
            "error. Text that is no address literal prints the parser's message and counts as\n"
            "failed.");
    if (const auto status = cli.parse(argc, argv)) {
        return *status;
    }
    if (cli.arguments().empty()) {
        return cli.usageError("no address given");
    }
    const bool json = cli.json();
    const auto handler = [json](std::span<const std::string_view> items, Outcome& out) {
        const foundation::network::InetAddress address{std::string(items[0])};
        if (json) {
            boost::json::array bytes;
            for (const unsigned char byte : address.bytes()) {
                bytes.emplace_back(byte);
            }
            out.keys["version"] = address.getVersion();
            out.keys["loopback"] = address.isLoopback();
            out.keys["multicast"] = address.isMulticast();
            out.keys["bytes"] = std::move(bytes);
            out.keys["text"] = jsonSafe(address.toString());
            return;
        }
        std::string dotted;
        for (const unsigned char byte : address.bytes()) {
            dotted += (dotted.empty() ? "" : " ") + std::to_string(byte);
        }
        out.text = address.toString() + "\tIPv" + std::to_string(address.getVersion()) +
                   (address.isLoopback() ? "\tloopback" : "") +
                   (address.isMulticast() ? "\tmulticast" : "") + "\tbytes " + dotted + "\n";
    };
    return runInputs(cli, 0, {"version", "loopback", "multicast", "bytes", "text"},
                     [&]() -> Handler { return handler; });
}

}  // namespace fnet
