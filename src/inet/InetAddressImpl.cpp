#include "inet/InetAddressImpl.h"

#include <algorithm>
#include <initializer_list>
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

// Whether the first `bits` bits of `bytes` are those of `prefix` (which holds at least
// ceil(bits / 8) bytes).
template <std::size_t N>
bool hasPrefix(const std::array<unsigned char, N>& bytes,
               std::initializer_list<unsigned char> prefix, unsigned bits) {
    const unsigned char* expected = prefix.begin();
    for (unsigned i = 0; bits > 0; ++i, bits -= std::min(bits, 8u)) {
        const auto mask = static_cast<unsigned char>(0xFF00u >> std::min(bits, 8u));
        if ((bytes[i] & mask) != (expected[i] & mask)) {
            return false;
        }
    }
    return true;
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

bool InetAddressImpl::isUnspecified() const {
    return address_.is_unspecified();
}

bool InetAddressImpl::isLinkLocal() const {
    if (address_.is_v4()) {
        return hasPrefix(address_.to_v4().to_bytes(), {169, 254}, 16);
    }
    return hasPrefix(address_.to_v6().to_bytes(), {0xfe, 0x80}, 10);
}

bool InetAddressImpl::isPrivate() const {
    if (address_.is_v4()) {
        const auto bytes = address_.to_v4().to_bytes();
        return hasPrefix(bytes, {10}, 8) || hasPrefix(bytes, {172, 16}, 12) ||
               hasPrefix(bytes, {192, 168}, 16);
    }
    return hasPrefix(address_.to_v6().to_bytes(), {0xfc}, 7);
}

bool InetAddressImpl::isV4Mapped() const {
    return address_.is_v6() && address_.to_v6().is_v4_mapped();
}

ip::address InetAddressImpl::unmapped() const {
    if (!isV4Mapped()) {
        throw AnonymousInternalException<std::invalid_argument>("Not an IPv4-mapped address: " +
                                                                toString());
    }
    return ip::make_address_v4(ip::v4_mapped, address_.to_v6());
}

std::uint32_t InetAddressImpl::scopeId() const {
    return address_.is_v6() ? static_cast<std::uint32_t>(address_.to_v6().scope_id()) : 0;
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
