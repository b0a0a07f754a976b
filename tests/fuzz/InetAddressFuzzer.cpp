// InetAddress from fuzz text. A refusal is the std::invalid_argument-based exception and nothing
// else; an accepted text prints a form that parses back to the same bytes and an equal value
// with the same hash; every text the system's inet_pton accepts is accepted with the same bytes;
// unmapped() works exactly for mapped addresses; and an interface address over the value (the
// prefix from the text's length) contains it, its network and its broadcast address.
#include <arpa/inet.h>
#include <sys/socket.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "foundation/network/InetAddress.h"
#include "foundation/network/InterfaceAddress.h"
#include "fuzz/FuzzSupport.h"

namespace {

using foundation::network::InetAddress;

std::optional<std::vector<unsigned char>> parse(const std::string& text) {
    try {
        const InetAddress address(text);
        return address.bytes();
    } catch (const std::invalid_argument&) {
        return std::nullopt;
    } catch (const std::exception& e) {
        fnfuzz::unexpected(e, "InetAddress(text)");
    }
}

std::optional<std::vector<unsigned char>> reference(const std::string& text) {
    unsigned char buffer[16];
    if (inet_pton(AF_INET, text.c_str(), buffer) == 1) {
        return std::vector<unsigned char>(buffer, buffer + 4);
    }
    if (inet_pton(AF_INET6, text.c_str(), buffer) == 1) {
        return std::vector<unsigned char>(buffer, buffer + 16);
    }
    return std::nullopt;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const auto bytes = parse(text);
    const auto expected = text.find('\0') == std::string::npos ? reference(text) : std::nullopt;
    if (expected) {
        FNFUZZ_CHECK(bytes == expected);
    }
    if (!bytes) {
        return 0;
    }
    const InetAddress address(text);
    FNFUZZ_CHECK(bytes->size() == (address.getVersion() == 4 ? 4u : 16u));
    const std::string printed = address.toString();
    FNFUZZ_CHECK(printed == address.getHostAddress());
    FNFUZZ_CHECK(parse(printed) == bytes);
    FNFUZZ_CHECK(InetAddress(*bytes).bytes() == *bytes);
    (void)address.isLoopback();
    (void)address.isMulticast();
    (void)address.isUnspecified();
    (void)address.isLinkLocal();
    (void)address.isPrivate();

    const InetAddress reparsed(printed);
    FNFUZZ_CHECK(reparsed == address && !(reparsed < address) && !(address < reparsed));
    FNFUZZ_CHECK(reparsed.hashValue() == address.hashValue());
    FNFUZZ_CHECK((InetAddress(*bytes) == address) == (address.scopeId() == 0));

    bool mapped = true;
    try {
        const InetAddress inside = address.unmapped();
        FNFUZZ_CHECK(inside.getVersion() == 4);
        FNFUZZ_CHECK(std::equal(bytes->end() - 4, bytes->end(), inside.bytes().begin()));
    } catch (const std::invalid_argument&) {
        mapped = false;
    }
    FNFUZZ_CHECK(mapped == address.isV4Mapped());

    const auto prefix = static_cast<unsigned short>(size % (bytes->size() * 8 + 1));
    const foundation::network::InterfaceAddress network(address, prefix);
    FNFUZZ_CHECK(network.contains(address));
    FNFUZZ_CHECK(network.contains(network.network()) && network.contains(network.broadcast()));
    FNFUZZ_CHECK(!(network.broadcast() < network.network()));
    return 0;
}
