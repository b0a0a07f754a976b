/// @file
/// @brief `InterfaceAddress`: an IP address of an interface with the prefix length of its subnet.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

#include "foundation/network/Export.h"
#include "foundation/network/InetAddress.h"

namespace foundation::network {

class InterfaceAddressImpl;

/// An immutable (address, prefix length) pair such as 192.168.1.20/24 or fe80::1/64. Copies
/// share one implementation object; any number of threads may read it.
///
/// Two interface addresses are equal when their addresses (scope id included) and prefix lengths
/// are; `<` orders by address, then prefix length, and `std::hash` agrees with `==`.
class FOUNDATION_NETWORK_API InterfaceAddress {
public:
    /// 0.0.0.0 with prefix 0 (text 0.0.0.0/0).
    InterfaceAddress();

    /// The value of `address` (its host name dropped) with `prefixLength`.
    /// @throws std::out_of_range "prefix length too large" above 32 (IPv4) or 128 (IPv6).
    InterfaceAddress(InetAddress address, unsigned short prefixLength);

    /// Adopts an implementation. Does not throw.
    explicit InterfaceAddress(std::shared_ptr<InterfaceAddressImpl> impl);

    /// A new address value (scope id included) with an empty host name. Does not throw but
    /// for allocation.
    InetAddress getInetAddress() const;

    /// The prefix length. Does not throw.
    unsigned short prefixLength() const;

    /// The address text, '/', the prefix length in decimal (fe80::1/64). Does not throw but
    /// for allocation.
    std::string toString() const;

    /// Whether `address` lies in this network: same version and the same first `prefixLength()`
    /// bits. Scope ids count only when both are set (a system interface address has none). An
    /// IPv4-mapped IPv6 address is not in an IPv4 network. Does not throw.
    bool contains(const InetAddress& address) const;

    /// The network address: the address with every bit after the prefix cleared (192.168.1.0
    /// for 192.168.1.20/24), scope id kept. Does not throw but for allocation.
    InetAddress network() const;

    /// IPv4: the broadcast address, every bit after the prefix set (192.168.1.255 for
    /// 192.168.1.20/24; the address itself for /32). IPv6 has no broadcast: the last address of
    /// the network in the same way, scope id kept. Does not throw but for allocation.
    InetAddress broadcast() const;

    /// A hash of address and prefix length, the same for equal values. Does not throw.
    std::size_t hashValue() const noexcept;

    /// Equal addresses (scope id included) and prefix lengths. Does not throw.
    friend FOUNDATION_NETWORK_API bool operator==(const InterfaceAddress& a,
                                                  const InterfaceAddress& b) noexcept;
    friend bool operator!=(const InterfaceAddress& a, const InterfaceAddress& b) noexcept {
        return !(a == b);
    }
    /// By address as `InetAddress` orders them, then by prefix length. Does not throw.
    friend FOUNDATION_NETWORK_API bool operator<(const InterfaceAddress& a,
                                                 const InterfaceAddress& b) noexcept;

private:
    std::shared_ptr<const InterfaceAddressImpl> impl_;
};

}  // namespace foundation::network

/// Hashes address and prefix length (`InterfaceAddress::hashValue`).
template <>
struct std::hash<foundation::network::InterfaceAddress> {
    std::size_t operator()(const foundation::network::InterfaceAddress& address) const noexcept {
        return address.hashValue();
    }
};
