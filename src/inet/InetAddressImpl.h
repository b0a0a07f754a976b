/// @file
/// @brief The value behind `InetAddress`: one Boost address, never changed after construction.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include <boost/asio/ip/address.hpp>

namespace foundation::network {

class InetAddressImpl {
public:
    explicit InetAddressImpl(boost::asio::ip::address address = {});
    explicit InetAddressImpl(const std::array<unsigned char, 4>& bytes);
    explicit InetAddressImpl(const std::array<unsigned char, 16>& bytes);
    /// Throws std::invalid_argument unless the vector holds 0, 4 or 16 bytes.
    explicit InetAddressImpl(const std::vector<unsigned char>& bytes);
    /// Throws std::invalid_argument (the parser's message) unless the text is a numeric literal.
    explicit InetAddressImpl(const std::string& text);

    const boost::asio::ip::address& address() const { return address_; }

    int getVersion() const;
    bool isLoopback() const;
    bool isMulticast() const;
    bool isUnspecified() const;
    bool isLinkLocal() const;
    bool isPrivate() const;
    bool isV4Mapped() const;
    /// The IPv4 address inside an IPv4-mapped one. Throws std::invalid_argument otherwise.
    boost::asio::ip::address unmapped() const;
    std::uint32_t scopeId() const;
    std::string toString() const;
    std::vector<unsigned char> bytes() const;

    /// The name of this address by reverse resolution (its numeric text when it has none).
    /// Blocks; throws std::system_error when the resolver fails.
    std::string reverseLookup() const;

private:
    boost::asio::ip::address address_;
};

}  // namespace foundation::network
