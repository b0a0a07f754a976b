#include "foundation/network/AddressFactories.h"

#include <cstring>

#include "inet/InetAddressImpl.h"
#include "inet/InterfaceAddressImpl.h"
#include "inet/MakeAddress.h"

namespace foundation::network {

namespace ip = boost::asio::ip;

namespace {

// Leading one bits of one mask byte; a byte that is not such a run counts nothing.
unsigned short leadingOnes(unsigned char byte) {
    switch (byte) {
        case 0xFF:
            return 8;
        case 0xFE:
            return 7;
        case 0xFC:
            return 6;
        case 0xF8:
            return 5;
        case 0xF0:
            return 4;
        case 0xE0:
            return 3;
        case 0xC0:
            return 2;
        case 0x80:
            return 1;
        default:
            return 0;
    }
}

}  // namespace

ip::address makeAddress(const sockaddr_in* address) {
    ip::address_v4::bytes_type bytes;
    std::memcpy(bytes.data(), &address->sin_addr, bytes.size());
    return ip::address_v4(bytes);
}

ip::address makeAddress(const sockaddr_in6* address) {
    ip::address_v6::bytes_type bytes;
    std::memcpy(bytes.data(), &address->sin6_addr, bytes.size());
    return ip::address_v6(bytes);
}

InetAddress makeInetAddress(std::shared_ptr<InetAddressImpl> impl) {
    return InetAddress(std::move(impl), std::string());
}

InterfaceAddress makeInterfaceAddress(std::shared_ptr<InterfaceAddressImpl> impl) {
    return InterfaceAddress(std::move(impl));
}

InterfaceAddress makeInterfaceAddress(const sockaddr_in* address, const sockaddr_in* netmask) {
    return InterfaceAddress(
        std::make_shared<InterfaceAddressImpl>(makeAddress(address), makeAddress(netmask)));
}

InterfaceAddress makeInterfaceAddress(const sockaddr_in6* address, const sockaddr_in6* netmask) {
    // Kept deliberately blind to contiguity across bytes (ffff:0:ffff:: counts 32): systems
    // report IPv6 masks built from a prefix length, so only the count matters.
    unsigned short prefixLength = 0;
    for (const unsigned char byte : netmask->sin6_addr.s6_addr) {
        prefixLength += leadingOnes(byte);
    }
    return makeInterfaceAddress(address, static_cast<unsigned char>(prefixLength));
}

InterfaceAddress makeInterfaceAddress(const sockaddr_in* address, unsigned char prefixLength) {
    return InterfaceAddress(
        std::make_shared<InterfaceAddressImpl>(makeAddress(address), prefixLength));
}

InterfaceAddress makeInterfaceAddress(const sockaddr_in6* address, unsigned char prefixLength) {
    return InterfaceAddress(
        std::make_shared<InterfaceAddressImpl>(makeAddress(address), prefixLength));
}

}  // namespace foundation::network
