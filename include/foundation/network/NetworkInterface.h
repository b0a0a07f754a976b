/// @file
/// @brief `NetworkInterface`: one of the host's network interfaces, and the list of them.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "foundation/network/Export.h"
#include "foundation/network/HardwareAddress.h"
#include "foundation/network/InetAddress.h"
#include "foundation/network/InterfaceAddress.h"

namespace foundation::network {

class NetworkInterfaceImpl;

/// A network interface: its system name, IP addresses with prefix lengths, link-layer address
/// and flags. Copies share one immutable implementation object; none of the getters fails.
class FOUNDATION_NETWORK_API NetworkInterface {
public:
    /// Adopts an implementation. Does not throw.
    explicit NetworkInterface(std::shared_ptr<NetworkInterfaceImpl> impl);

    /// The host's interfaces that are up and running and carry at least one IPv4 or IPv6
    /// address, in the order the system lists them. Does not block on the network.
    /// @throws std::system_error "Call to getifaddrs failed: <system message>" when the system
    /// list cannot be read; std::invalid_argument "non-contiguous netmask" when the system
    /// reports such an IPv4 mask.
    static std::vector<NetworkInterface> list();

    /// Every interface the system lists, in its order, `list()`'s filter left out: also those
    /// that are down, up but not running (no carrier), or without an IPv4 or IPv6 address, so
    /// that a caller can show why `list()` passes one over (`isAdminUp`, `isUp`,
    /// `getInterfaceAddresses`). Does not block on the network.
    /// @throws what `list()` throws, for the same reasons.
    static std::vector<NetworkInterface> listAll();

    /// The system's name of the interface (eth0, lo).
    std::string getIdentifier() const;

    /// The friendly name, or else the identifier as UTF-16 text.
    std::u16string getFriendlyName() const;

    /// The description (empty on this platform).
    std::string getDescription() const;

    /// The link-layer address; empty for loopback interfaces and non-Ethernet links.
    HardwareAddress getHardwareAddress() const;

    /// The IP addresses with their prefix lengths, in the system's order.
    std::vector<InterfaceAddress> getInterfaceAddresses() const;

    /// The IP addresses alone (host names empty), in the same order, duplicates kept.
    std::vector<InetAddress> getInetAddresses() const;

    /// The kernel's index of the interface (`if_nametoindex`; the number an IPv6 scope id
    /// names), 0 if the interface was gone before it could be read.
    unsigned getIndex() const;

    /// The MTU in bytes as the system reported it when the list was made (`SIOCGIFMTU`), 0 if
    /// it could not be read.
    unsigned getMtu() const;

    /// Whether the interface is both up and running.
    bool isUp() const;

    /// Whether the interface is administratively up (IFF_UP, as `ip link set NAME up` sets it),
    /// running or not: an interface that is up but not running has no carrier.
    bool isAdminUp() const;

    bool isLoopback() const;

    bool supportsMulticast() const;

private:
    std::shared_ptr<const NetworkInterfaceImpl> impl_;
};

}  // namespace foundation::network
