// fnet interfaces: the host's network interfaces, as NetworkInterface::list() gives them.
#include <exception>
#include <iomanip>
#include <sstream>
#include <string>
#include <vector>

#include "Commands.h"
#include "Json.h"
#include "Runner.h"
#include "foundation/network/NetworkInterface.h"

namespace fnet {
namespace {

using foundation::network::NetworkInterface;

const RecordKeys kKeys = {"name",     "index",     "mtu", "up",
                          "loopback", "multicast", "mac", "addresses"};

Outcome describe(const NetworkInterface& interface) {
    std::vector<std::string> addresses;
    for (const auto& address : interface.getInterfaceAddresses()) {
        addresses.push_back(address.toString());
    }
    const std::string mac = interface.getHardwareAddress().toString();
    Outcome outcome;
    outcome.keys["name"] = jsonSafe(interface.getIdentifier());
    outcome.keys["index"] = interface.getIndex();
    outcome.keys["mtu"] = interface.getMtu();
    outcome.keys["up"] = interface.isUp();
    outcome.keys["loopback"] = interface.isLoopback();
    outcome.keys["multicast"] = interface.supportsMulticast();
    outcome.keys["mac"] = jsonSafe(mac);
    setTexts(outcome.keys["addresses"], addresses);
    // In the manner of `ip -br addr`: name, state, link-layer address, then the index and MTU,
    // then the addresses.
    std::ostringstream line;
    line << std::left << std::setw(16) << interface.getIdentifier() << " " << std::setw(6)
         << (interface.isUp() ? "UP" : "DOWN") << " " << std::setw(17) << (mac.empty() ? "-" : mac)
         << " index " << interface.getIndex() << " mtu " << interface.getMtu();
    for (const auto& address : addresses) {
        line << " " << address;
    }
    outcome.text = line.str() + "\n";
    return outcome;
}

int run(const Cli& cli) {
    std::vector<NetworkInterface> interfaces;
    try {
        interfaces = NetworkInterface::list();
    } catch (const std::exception& e) {
        Outcome failed;
        failed.fail(e.what());
        return writeOutcome(cli, kKeys, failed);
    }
    for (const auto& interface : interfaces) {
        writeOutcome(cli, kKeys, describe(interface));
    }
    return kExitOk;
}

}  // namespace

const Command kInterfacesCommand{
    .name = "interfaces",
    .summary = "the host's network interfaces and addresses",
    .usage = "[--json]",
    .description =
        "Lists the host's interfaces that are up and running and carry an IP address: name,\n"
        "state, link-layer address, \"index\" and the kernel's index, \"mtu\" and the MTU,\n"
        "and addresses with prefix lengths, in the system's order, one line per interface\n"
        "(in the manner of `ip -br addr`). With --json: one object per interface with the\n"
        "keys name, index, mtu, up, loopback, multicast, mac (\"\" when none), addresses\n"
        "(\"ADDRESS/PREFIX\" texts) and error (null, or the system's message).",
    .run = run,
};

}  // namespace fnet
