/// @file
/// @brief Builds `InetAddress` and `InterfaceAddress` values from implementation objects and
/// from the system's socket-address records.
#pragma once

#include <netinet/in.h>

#include <memory>

#include "foundation/network/Export.h"
#include "foundation/network/InetAddress.h"
#include "foundation/network/InterfaceAddress.h"

namespace foundation::network {

class InetAddressImpl;
class InterfaceAddressImpl;

/// `InetAddress(impl, "")`: the host name stays empty. Does not throw.
FOUNDATION_NETWORK_API InetAddress makeInetAddress(std::shared_ptr<InetAddressImpl> impl);

/// `InterfaceAddress(impl)`. Does not throw.
FOUNDATION_NETWORK_API InterfaceAddress
makeInterfaceAddress(std::shared_ptr<InterfaceAddressImpl> impl);

/// An IPv4 interface address whose prefix length is the netmask's.
/// @throws std::invalid_argument "non-contiguous netmask" when the mask is not a run of
/// leading one bits.
FOUNDATION_NETWORK_API InterfaceAddress makeInterfaceAddress(const sockaddr_in* address,
                                                             const sockaddr_in* netmask);

/// An IPv6 interface address (scope id 0). The prefix length adds up a count per mask byte
/// (0xff 8, 0xfe 7 ... 0x80 1, any other byte 0); contiguity across bytes is not checked.
/// Does not throw but for allocation.
FOUNDATION_NETWORK_API InterfaceAddress makeInterfaceAddress(const sockaddr_in6* address,
                                                             const sockaddr_in6* netmask);

/// An IPv4 interface address with the given prefix length.
/// @throws std::out_of_range "prefix length too large" above 32.
FOUNDATION_NETWORK_API InterfaceAddress makeInterfaceAddress(const sockaddr_in* address,
                                                             unsigned char prefixLength);

/// An IPv6 interface address (scope id 0) with the given prefix length.
/// @throws std::out_of_range "prefix length too large" above 128.
FOUNDATION_NETWORK_API InterfaceAddress makeInterfaceAddress(const sockaddr_in6* address,
                                                             unsigned char prefixLength);

}  // namespace foundation::network
