// fnet interfaces: the host's network interfaces, as NetworkInterface::list() gives them.
#include <ifaddrs.h>

#include <cerrno>
#include <iomanip>
#include <iostream>
#include <system_error>

#include "Cli.h"
#include "Commands.h"
#include "Json.h"
#include "foundation/network/NetworkInterface.h"
#include "inet/posix/ListNetworkInterfaces.h"

namespace fnet {
namespace {

using foundation::network::NetworkInterface;

void print(const Cli& cli, const NetworkInterface& interface, bool listed, bool showAll) {
    std::vector<std::string> addresses;
    for (const auto& address : interface.getInterfaceAddresses()) {
        addresses.push_back(address.toString());
    }
    const std::string mac = interface.getHardwareAddress().toString();
    if (cli.json()) {
        std::cout << JsonObject()
                         .text("name", interface.getIdentifier())
                         .boolean("up", interface.isUp())
                         .boolean("loopback", interface.isLoopback())
                         .boolean("multicast", interface.supportsMulticast())
                         .text("mac", mac)
                         .texts("addresses", addresses)
                         .boolean("listed", listed)
                         .str()
                  << "\n";
        return;
    }
    // In the manner of `ip -br addr`: name, state, link-layer address, addresses.
    std::cout << std::left << std::setw(16) << interface.getIdentifier() << " " << std::setw(6)
              << (interface.isUp() ? "UP" : "DOWN") << " " << std::setw(17)
              << (mac.empty() ? "-" : mac);
    for (const auto& address : addresses) {
        std::cout << " " << address;
    }
    if (showAll && !listed) {
        std::cout << "  (not listed)";
    }
    std::cout << "\n";
}

}  // namespace

int runInterfaces(int argc, char** argv) {
    Cli cli("interfaces", "[--all] [--json]",
            "Lists the host's interfaces that are up and running and carry an IP address: name,\n"
            "state, link-layer address and addresses with prefix lengths, in the system's order,\n"
            "one line per interface (in the manner of `ip -br addr`). With --json: one object per\n"
            "interface with the keys name, up, loopback, multicast, mac (\"\" when none),\n"
            "addresses (\"ADDRESS/PREFIX\" texts) and listed (false only with --all).",
            {{"--all", "", "also the interfaces the list leaves out, marked \"(not listed)\""}});
    cli.takesNoInput();
    if (const auto status = cli.parse(argc, argv)) {
        return *status;
    }
    if (!cli.arguments().empty()) {
        return cli.usageError("takes no input");
    }
    try {
        if (!cli.has("--all")) {
            for (const auto& interface : NetworkInterface::list()) {
                print(cli, interface, true, false);
            }
            return kExitOk;
        }
        ifaddrs* list = nullptr;
        if (::getifaddrs(&list) != 0) {
            throw std::system_error(errno, std::system_category(), "Call to getifaddrs failed");
        }
        const foundation::network::posix::OwnedInterfaceList owner(list, &::freeifaddrs);
        for (const auto& impl : foundation::network::posix::listNetworkInterfaces(list)) {
            print(cli, NetworkInterface(impl), foundation::network::posix::isListed(*impl), true);
        }
        return kExitOk;
    } catch (const std::exception& e) {
        if (cli.json()) {
            std::cout << JsonObject().text("error", e.what()).str() << "\n";
        }
        cli.error(e.what());
        return kExitFailed;
    }
}

}  // namespace fnet
