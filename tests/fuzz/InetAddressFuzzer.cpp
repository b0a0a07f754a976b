// InetAddress from fuzz text. A refusal is the std::invalid_argument-based exception and nothing
// else; an accepted text prints a form that parses back to the same bytes and an equal value
// with the same hash; every text the system's inet_pton accepts is accepted with the same bytes;
// unmapped() works exactly for mapped addresses; and an interface address over the value (the
// prefix from the text's length) contains it, its network and its broadcast address.
#include <arpa/inet.h>
#include <sys/socket.h>

#include "foundation/network/InterfaceAddress.h"
#include "fuzz/FuzzSupport.h"

using foundation::network::InetAddress;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const auto parse = [](const std::string& in) {
        return fnfuzz::attempt<std::invalid_argument>([&] { return InetAddress(in); }, "parsing");
    };
    const auto address = parse(text);
    unsigned char buffer[16];  // what the system's parser makes of the text
    for (const auto& [family, length] : {std::pair{AF_INET, 4}, std::pair{AF_INET6, 16}}) {
        if (text.find('\0') == std::string::npos && inet_pton(family, text.c_str(), buffer) == 1) {
            FNFUZZ_CHECK(address &&
                         address->bytes() == std::vector<unsigned char>(buffer, buffer + length));
        }
    }
    if (!address) {
        return 0;
    }
    const std::vector<unsigned char> bytes = address->bytes();
    FNFUZZ_CHECK(bytes.size() == (address->getVersion() == 4 ? 4u : 16u));
    FNFUZZ_CHECK(address->toString() == address->getHostAddress());
    const auto reparsed = parse(address->toString());
    FNFUZZ_CHECK(reparsed && reparsed->bytes() == bytes && *reparsed == *address);
    FNFUZZ_CHECK(!(*reparsed < *address) && !(*address < *reparsed));
    FNFUZZ_CHECK(reparsed->hashValue() == address->hashValue());
    FNFUZZ_CHECK(InetAddress(bytes).bytes() == bytes);
    FNFUZZ_CHECK((InetAddress(bytes) == *address) == (address->scopeId() == 0));
    (void)address->isLoopback(), (void)address->isMulticast(), (void)address->isUnspecified();
    (void)address->isLinkLocal(), (void)address->isPrivate();

    const auto inside =
        fnfuzz::attempt<std::invalid_argument>([&] { return address->unmapped(); }, "unmapped");
    FNFUZZ_CHECK(inside.has_value() == address->isV4Mapped());
    FNFUZZ_CHECK(!inside || (inside->getVersion() == 4 &&
                             std::equal(bytes.end() - 4, bytes.end(), inside->bytes().begin())));

    const auto prefix = static_cast<unsigned short>(size % (bytes.size() * 8 + 1));
    const foundation::network::InterfaceAddress network(*address, prefix);
    FNFUZZ_CHECK(network.contains(*address) && network.contains(network.network()));
    FNFUZZ_CHECK(network.contains(network.broadcast()) &&
                 !(network.broadcast() < network.network()));
    return 0;
}
