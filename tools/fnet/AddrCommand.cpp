// fnet addr: parse address literals and show how the library classifies and prints them, and
// for ADDRESS/PREFIX the network around the address.
#include <array>
#include <boost/json/array.hpp>
#include <optional>
#include <string>

#include "AddressInput.h"
#include "Commands.h"
#include "Json.h"
#include "Runner.h"
#include "foundation/network/InetAddress.h"
#include "foundation/network/InterfaceAddress.h"

namespace fnet {

namespace {

// The predicates in the order both outputs give them: JSON key and plain word.
struct Predicate {
    const char* key;
    const char* word;
    bool (foundation::network::InetAddress::*test)() const;
};
const Predicate kPredicates[] = {
    {"loopback", "loopback", &foundation::network::InetAddress::isLoopback},
    {"multicast", "multicast", &foundation::network::InetAddress::isMulticast},
    {"unspecified", "unspecified", &foundation::network::InetAddress::isUnspecified},
    {"linkLocal", "link-local", &foundation::network::InetAddress::isLinkLocal},
    {"private", "private", &foundation::network::InetAddress::isPrivate},
    {"v4Mapped", "v4-mapped", &foundation::network::InetAddress::isV4Mapped},
};

using foundation::network::InetAddress;
using foundation::network::InterfaceAddress;

// The network of an address with a prefix length, in the order both outputs give it: JSON key
// and plain word, then the text.
struct Network {
    std::vector<std::pair<const char*, std::string>> parts;
    std::optional<std::string> broadcast;  ///< IPv4 only
};

Network networkOf(const InterfaceAddress& given) {
    const unsigned short prefix = given.prefixLength();
    const bool v4 = given.getInetAddress().getVersion() == 4;
    // The netmask is the network of the address with every bit set.
    std::array<unsigned char, 16> ones{};
    ones.fill(0xFF);
    const InetAddress allOnes =
        v4 ? InetAddress(std::array<unsigned char, 4>{0xFF, 0xFF, 0xFF, 0xFF}) : InetAddress(ones);
    const InetAddress network = given.network();
    const InetAddress last = given.broadcast();
    // The addresses of hosts: in IPv4 networks of more than two addresses the network and
    // broadcast addresses are not among them (RFC 3021 gives /31 both).
    std::string first = network.toString();
    std::string lastHost = last.toString();
    if (v4 && prefix <= 30) {
        auto low = network.bytes();
        low.back() |= 1U;
        auto high = last.bytes();
        high.back() &= 0xFEU;
        first = InetAddress(low).toString();
        lastHost = InetAddress(high).toString();
    }
    return {{{"network", network.toString()},
             {"prefix", std::to_string(prefix)},
             {"netmask", InterfaceAddress(allOnes, prefix).network().toString()},
             {"first", first},
             {"last", lastHost}},
            v4 ? std::optional(last.toString()) : std::nullopt};
}

Job prepare(const Cli& cli) {
    const bool json = cli.json();
    const auto handler = [json](std::span<const std::string_view> items, Outcome& out) {
        const AddressInput input = readAddressInput(items[0]);
        const InetAddress& address = input.address;
        const std::optional<Network> network =
            input.network ? std::optional(networkOf(*input.network)) : std::nullopt;
        const std::optional<std::string> unmapped =
            address.isV4Mapped() ? std::optional(address.unmapped().toString()) : std::nullopt;
        if (json) {
            boost::json::array bytes;
            for (const unsigned char byte : address.bytes()) {
                bytes.emplace_back(byte);
            }
            out.keys["version"] = address.getVersion();
            for (const Predicate& predicate : kPredicates) {
                out.keys[predicate.key] = (address.*predicate.test)();
            }
            setText(out.keys["unmapped"], unmapped);
            out.keys["scopeId"] = address.scopeId();
            out.keys["bytes"] = std::move(bytes);
            out.keys["text"] = jsonSafe(address.toString());
            if (network) {
                out.keys["prefixLength"] = input.network->prefixLength();
                for (const auto& [word, text] : network->parts) {
                    if (std::string_view(word) != "prefix") {
                        out.keys[word] = text;
                    }
                }
                setText(out.keys["broadcast"], network->broadcast);
            }
            return;
        }
        out.text = (input.network ? input.network->toString() : address.toString()) + "\tIPv" +
                   std::to_string(address.getVersion());
        for (const Predicate& predicate : kPredicates) {
            out.text += (address.*predicate.test)() ? std::string("\t") + predicate.word : "";
        }
        out.text += unmapped ? "\tunmapped " + *unmapped : "";
        out.text += address.scopeId() != 0 ? "\tscope " + std::to_string(address.scopeId()) : "";
        std::string dotted;
        for (const unsigned char byte : address.bytes()) {
            dotted += (dotted.empty() ? "" : " ") + std::to_string(byte);
        }
        out.text += "\tbytes " + dotted;
        if (network) {
            for (const auto& [word, text] : network->parts) {
                out.text += std::string("\t") + word + " " + text;
            }
            out.text += network->broadcast ? "\tbroadcast " + *network->broadcast : "";
        }
        out.text += "\n";
    };
    RecordKeys keys = {"version"};
    for (const Predicate& predicate : kPredicates) {
        keys.push_back(predicate.key);
    }
    keys.insert(keys.end(), {"unmapped", "scopeId", "bytes", "text", "prefixLength", "network",
                             "netmask", "first", "last", "broadcast"});
    return {keys, [handler]() -> Handler { return handler; }};
}

}  // namespace

const Command kAddrCommand{
    .name = "addr",
    .summary = "classify and print IP address literals",
    .usage = "[--json] [--] ADDRESS[/PREFIX]...",
    .description =
        "Parses each numeric IPv4 or IPv6 address (no name lookup) and prints its version,\n"
        "the predicates that hold (loopback, multicast, unspecified, link-local, private,\n"
        "v4-mapped: each judges an IPv4-mapped address as IPv6), its scope id, its bytes and\n"
        "its canonical text. Plain output: one line per address, tab-separated: its text,\n"
        "IPv4 or IPv6, the words of the predicates that hold, \"unmapped\" and the IPv4\n"
        "address inside a mapped one, \"scope\" and the scope id when it is not 0, \"bytes\"\n"
        "and the bytes in decimal. With --json: the keys input, version, loopback, multicast,\n"
        "unspecified, linkLocal, private, v4Mapped, unmapped (the IPv4 text, or null),\n"
        "scopeId, bytes (an array of numbers), text, prefixLength, network, netmask, first,\n"
        "last, broadcast (null without a prefix; broadcast null for IPv6) and error.\n"
        "ADDRESS/PREFIX (an interface address: 192.168.1.20/24) adds its network: the plain\n"
        "line goes on with \"network\", \"prefix\", \"netmask\", \"first\" and \"last\" (the\n"
        "first and last host address: an IPv4 network of more than two addresses leaves out\n"
        "its network and broadcast addresses) and for IPv4 \"broadcast\", each with its\n"
        "value. Text that is no address literal fails with \"not an IPv4 or IPv6 address\", a\n"
        "prefix length too large with \"prefix length above 32\" (128 for IPv6).",
    .inputs = {.missing = "no address given"},
    .prepare = prepare,
};

}  // namespace fnet
