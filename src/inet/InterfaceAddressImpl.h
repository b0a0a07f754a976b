/// @file
/// @brief The value behind `InterfaceAddress`: an address, its prefix length and its text.
#pragma once

#include <string>

#include <boost/asio/ip/address.hpp>

namespace foundation::network {

class InterfaceAddressImpl {
public:
    /// IPv4 only (both are converted with to_v4, so IPv6 raises Boost's bad address cast). The
    /// prefix length is the mask's; a non-contiguous mask throws std::invalid_argument.
    InterfaceAddressImpl(const boost::asio::ip::address& address,
                         const boost::asio::ip::address& netmask);

    /// Throws std::out_of_range above 32 (IPv4) or 128 (IPv6).
    InterfaceAddressImpl(const boost::asio::ip::address& address, unsigned short prefixLength);

    const boost::asio::ip::address& address() const { return address_; }
    unsigned short prefixLength() const { return prefixLength_; }
    const std::string& toString() const { return text_; }

    /// The address with the bits after the prefix cleared (`hostBits` false) or set (true),
    /// scope id kept.
    boost::asio::ip::address withHostBits(bool hostBits) const;

    /// Same version, scope ids equal where both are set, and the same first prefix bits.
    bool contains(const boost::asio::ip::address& address) const;

private:
    boost::asio::ip::address address_;
    unsigned short prefixLength_;
    std::string text_;
};

}  // namespace foundation::network
