// fnet addr: parse address literals and show how the library classifies and prints them.
#include <iostream>

#include "Cli.h"
#include "Commands.h"
#include "Json.h"
#include "foundation/network/InetAddress.h"

namespace fnet {

int runAddr(int argc, char** argv) {
    Cli cli("addr", "[--json] [--] TEXT...",
            "Parses each numeric IPv4 or IPv6 address (no name lookup) and prints its version,\n"
            "whether it is loopback or multicast, its bytes and its canonical text. Plain output:\n"
            "one line per address, tab-separated: its text, IPv4 or IPv6, \"loopback\" and\n"
            "\"multicast\" when they hold, \"bytes\" and the bytes in decimal. With --json: the\n"
            "keys input, version, loopback, multicast, bytes (an array of numbers) and text.\n"
            "Text that is no address literal prints the parser's message (JSON: input, error)\n"
            "and counts as failed.");
    if (const auto status = cli.parse(argc, argv)) {
        return *status;
    }
    if (cli.arguments().empty()) {
        return cli.usageError("no address given");
    }
    return forEachInput(cli.inputs(), [&](const std::string& input) {
        try {
            const foundation::network::InetAddress address(input);
            std::string bytes = "[";
            std::string dotted;
            for (const unsigned char byte : address.bytes()) {
                bytes += (bytes.size() > 1 ? "," : "") + std::to_string(byte);
                dotted += (dotted.empty() ? "" : " ") + std::to_string(byte);
            }
            bytes += "]";
            if (cli.json()) {
                std::cout << JsonObject()
                                 .text("input", input)
                                 .number("version", address.getVersion())
                                 .boolean("loopback", address.isLoopback())
                                 .boolean("multicast", address.isMulticast())
                                 .raw("bytes", bytes)
                                 .text("text", address.toString())
                                 .str()
                          << "\n";
            } else {
                std::cout << address.toString() << "\tIPv" << address.getVersion()
                          << (address.isLoopback() ? "\tloopback" : "")
                          << (address.isMulticast() ? "\tmulticast" : "") << "\tbytes " << dotted
                          << "\n";
            }
            return true;
        } catch (const std::exception& e) {
            if (cli.json()) {
                std::cout << JsonObject().text("input", input).text("error", e.what()).str()
                          << "\n";
            }
            cli.error(input + ": " + e.what());
            return false;
        }
    });
}

}  // namespace fnet
