// fnet addr: parse address literals and show how the library classifies and prints them.
#include <boost/json/array.hpp>
#include <optional>
#include <string>

#include "Commands.h"
#include "Json.h"
#include "Runner.h"
#include "foundation/network/InetAddress.h"

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

Job prepare(const Cli& cli) {
    const bool json = cli.json();
    const auto handler = [json](std::span<const std::string_view> items, Outcome& out) {
        const foundation::network::InetAddress address{std::string(items[0])};
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
            return;
        }
        out.text = address.toString() + "\tIPv" + std::to_string(address.getVersion());
        for (const Predicate& predicate : kPredicates) {
            out.text += (address.*predicate.test)() ? std::string("\t") + predicate.word : "";
        }
        out.text += unmapped ? "\tunmapped " + *unmapped : "";
        out.text += address.scopeId() != 0 ? "\tscope " + std::to_string(address.scopeId()) : "";
        std::string dotted;
        for (const unsigned char byte : address.bytes()) {
            dotted += (dotted.empty() ? "" : " ") + std::to_string(byte);
        }
        out.text += "\tbytes " + dotted + "\n";
    };
    RecordKeys keys = {"version"};
    for (const Predicate& predicate : kPredicates) {
        keys.push_back(predicate.key);
    }
    keys.insert(keys.end(), {"unmapped", "scopeId", "bytes", "text"});
    return {keys, [handler]() -> Handler { return handler; }};
}

}  // namespace

const Command kAddrCommand{
    .name = "addr",
    .summary = "classify and print IP address literals",
    .usage = "[--json] [--] TEXT...",
    .description =
        "Parses each numeric IPv4 or IPv6 address (no name lookup) and prints its version,\n"
        "the predicates that hold (loopback, multicast, unspecified, link-local, private,\n"
        "v4-mapped: each judges an IPv4-mapped address as IPv6), its scope id, its bytes and\n"
        "its canonical text. Plain output: one line per address, tab-separated: its text,\n"
        "IPv4 or IPv6, the words of the predicates that hold, \"unmapped\" and the IPv4\n"
        "address inside a mapped one, \"scope\" and the scope id when it is not 0, \"bytes\"\n"
        "and the bytes in decimal. With --json: the keys input, version, loopback, multicast,\n"
        "unspecified, linkLocal, private, v4Mapped, unmapped (the IPv4 text, or null),\n"
        "scopeId, bytes (an array of numbers), text and error. Text that is no address\n"
        "literal prints the parser's message and counts as failed.",
    .inputs = {.missing = "no address given"},
    .prepare = prepare,
};

}  // namespace fnet
