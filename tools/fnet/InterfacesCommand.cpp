// fnet interfaces: the host's network interfaces, as NetworkInterface::list() gives them, or with
// --all every one the system lists (listAll), each that list() leaves out marked with why.
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

// Why list() leaves the interface out; nothing when it lists it.
std::vector<std::string> leftOutBecause(const NetworkInterface& interface) {
    std::vector<std::string> reasons;
    if (!interface.isAdminUp()) {
        reasons.emplace_back("down");
    } else if (!interface.isUp()) {
        reasons.emplace_back("not running");
    }
    if (interface.getInterfaceAddresses().empty()) {
        reasons.emplace_back("no IP address");
    }
    return reasons;
}

Outcome describe(const NetworkInterface& interface, bool all) {
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
    if (all) {
        const std::vector<std::string> reasons = leftOutBecause(interface);
        if (reasons.empty()) {
            outcome.keys["leftOut"] = nullptr;
        } else {
            setTexts(outcome.keys["leftOut"], reasons);
            line << " (left out:";
            for (std::size_t i = 0; i < reasons.size(); ++i) {
                line << (i == 0 ? " " : ", ") << reasons[i];
            }
            line << ")";
        }
    }
    outcome.text = line.str() + "\n";
    return outcome;
}

int run(const Cli& cli) {
    const bool all = cli.has("--all");
    RecordKeys keys = kKeys;
    if (all) {
        keys.push_back("leftOut");
    }
    std::vector<NetworkInterface> interfaces;
    try {
        interfaces = all ? NetworkInterface::listAll() : NetworkInterface::list();
    } catch (const std::exception& e) {
        Outcome failed;
        failed.fail(e.what());
        return writeOutcome(cli, keys, failed);
    }
    for (const auto& interface : interfaces) {
        writeOutcome(cli, keys, describe(interface, all));
    }
    return kExitOk;
}

}  // namespace

const Command kInterfacesCommand{
    .name = "interfaces",
    .summary = "the host's network interfaces and addresses",
    .usage = "[--all] [--json]",
    .description =
        "Lists the host's interfaces that are up and running and carry an IP address: name,\n"
        "state, link-layer address, \"index\" and the kernel's index, \"mtu\" and the MTU,\n"
        "and addresses with prefix lengths, in the system's order, one line per interface\n"
        "(in the manner of `ip -br addr`). With --json: one object per interface with the\n"
        "keys name, index, mtu, up, loopback, multicast, mac (\"\" when none), addresses\n"
        "(\"ADDRESS/PREFIX\" texts) and error (null, or the system's message). With --all:\n"
        "every interface the system lists, and those left out without it end their line\n"
        "with \"(left out: REASONS)\": down, not running (up without a carrier), no IP\n"
        "address; with --json the key leftOut holds the reasons (null for one listed).",
    .options = {{"--all", "", "every interface, those left out marked with why"}},
    .run = run,
};

}  // namespace fnet
