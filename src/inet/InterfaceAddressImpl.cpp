#include "inet/InterfaceAddressImpl.h"

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

}  // namespace foundation::network
