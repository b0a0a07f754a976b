#include "inet/InterfaceAddressImpl.h"

#include <algorithm>

#include <boost/asio/ip/network_v4.hpp>
#include <boost/asio/ip/network_v6.hpp>

namespace foundation::network {

namespace ip = boost::asio::ip;

namespace {

// The network of the address with the prefix: Boost checks the prefix and writes "address/len".
std::string networkText(const ip::address& address, unsigned short prefixLength) {
    return address.is_v4() ? ip::network_v4(address.to_v4(), prefixLength).to_string()
                           : ip::network_v6(address.to_v6(), prefixLength).to_string();
}

}  // namespace

InterfaceAddressImpl::InterfaceAddressImpl(const ip::address& address, const ip::address& netmask)
    : address_(address) {
    const ip::network_v4 network(address.to_v4(), netmask.to_v4());
    prefixLength_ = network.prefix_length();
    text_ = network.to_string();
}

InterfaceAddressImpl::InterfaceAddressImpl(const ip::address& address, unsigned short prefixLength)
    : address_(address), prefixLength_(prefixLength), text_(networkText(address, prefixLength)) {}

ip::address InterfaceAddressImpl::withHostBits(bool hostBits) const {
    if (address_.is_v4()) {
        const ip::network_v4 network(address_.to_v4(), prefixLength_);
        return hostBits ? network.broadcast() : network.network();
    }
    const ip::address_v6 v6 = address_.to_v6();
    ip::address_v6::bytes_type bytes = v6.to_bytes();
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const std::size_t before = i * 8;  // prefix bits in the bytes before this one
        const std::size_t kept =
            prefixLength_ > before ? std::min<std::size_t>(prefixLength_ - before, 8) : 0;
        const auto hostMask = static_cast<unsigned char>(0xFFu >> kept);
        bytes[i] =
            static_cast<unsigned char>(hostBits ? bytes[i] | hostMask : bytes[i] & ~hostMask);
    }
    return ip::address_v6(bytes, v6.scope_id());
}

bool InterfaceAddressImpl::contains(const ip::address& address) const {
    if (address.is_v4() != address_.is_v4()) {
        return false;
    }
    if (address.is_v4()) {
        return ip::network_v4(address.to_v4(), prefixLength_).network() ==
               ip::network_v4(address_.to_v4(), prefixLength_).network();
    }
    const auto scope = address.to_v6().scope_id();
    const auto ownScope = address_.to_v6().scope_id();
    if (scope != 0 && ownScope != 0 && scope != ownScope) {
        return false;
    }
    return ip::network_v6(address.to_v6(), prefixLength_).network().to_bytes() ==
           ip::network_v6(address_.to_v6(), prefixLength_).network().to_bytes();
}

}  // namespace foundation::network
