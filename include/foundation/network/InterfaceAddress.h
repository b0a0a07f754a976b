/// @file
/// @brief `InterfaceAddress`: an IP address of an interface with the prefix length of its subnet.
#pragma once

#include <memory>
#include <string>

#include "foundation/network/Export.h"
#include "foundation/network/InetAddress.h"

namespace foundation::network {

class InterfaceAddressImpl;

/// An immutable (address, prefix length) pair such as 192.168.1.20/24 or fe80::1/64. Copies
/// share one implementation object; any number of threads may read it.
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

private:
    std::shared_ptr<const InterfaceAddressImpl> impl_;
};

}  // namespace foundation::network
