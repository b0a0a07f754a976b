#include "inet/InetAddressImpl.h"

#include <stdexcept>
#include <utility>

#include <boost/system/system_error.hpp>

#include "foundation/core/except/Exception.h"

namespace foundation::network {

namespace {

using foundation::core::except::detail::AnonymousInternalException;
namespace ip = boost::asio::ip;

ip::address fromVector(const std::vector<unsigned char>& bytes) {
    if (bytes.size() == 16) {
        ip::address_v6::bytes_type v6{};
        std::copy(bytes.begin(), bytes.end(), v6.begin());
        return ip::address_v6(v6);
    }
    if (bytes.size() == 4) {
        return ip::address_v4({bytes[0], bytes[1], bytes[2], bytes[3]});
    }
    if (bytes.empty()) {
        return ip::address_v4();
    }
    throw AnonymousInternalException<std::invalid_argument>(
        "Can not create InetAddress from " + std::to_string(bytes.size()) +
        " elements. Vector must have 0, 4 or 16 elements.");
}

ip::address fromText(const std::string& text) {
    try {
        // The character data on purpose: the parser stops at the first NUL like any C string.
        return ip::make_address(text.c_str());
    } catch (const boost::system::system_error& e) {
        throw AnonymousInternalException<std::invalid_argument>(e.what());
    }
}

}  // namespace

InetAddressImpl::InetAddressImpl(boost::asio::ip::address address) : address_(std::move(address)) {}

InetAddressImpl::InetAddressImpl(const std::array<unsigned char, 4>& bytes)
    : address_(ip::address_v4(bytes)) {}

InetAddressImpl::InetAddressImpl(const std::array<unsigned char, 16>& bytes)
    : address_(ip::address_v6(bytes)) {}

InetAddressImpl::InetAddressImpl(const std::vector<unsigned char>& bytes)
    : address_(fromVector(bytes)) {}

InetAddressImpl::InetAddressImpl(const std::string& text) : address_(fromText(text)) {}

int InetAddressImpl::getVersion() const {
    return address_.is_v4() ? 4 : 6;
}

// Boost judges by the tag, so an IPv4-mapped IPv6 address follows the IPv6 rules.
bool InetAddressImpl::isLoopback() const {
    return address_.is_loopback();
}

bool InetAddressImpl::isMulticast() const {
    return address_.is_multicast();
}

std::string InetAddressImpl::toString() const {
    return address_.to_string();
}

std::vector<unsigned char> InetAddressImpl::bytes() const {
    if (address_.is_v4()) {
        const auto v4 = address_.to_v4().to_bytes();
        return {v4.begin(), v4.end()};
    }
    const auto v6 = address_.to_v6().to_bytes();
    return {v6.begin(), v6.end()};
}

}  // namespace foundation::network
