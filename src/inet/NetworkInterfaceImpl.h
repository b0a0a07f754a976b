/// @file
/// @brief The data behind `NetworkInterface`, filled once by the interface listing.
#pragma once

#include <string>
#include <vector>

#include "foundation/network/HardwareAddress.h"
#include "foundation/network/InterfaceAddress.h"

namespace foundation::network {

class NetworkInterfaceImpl {
public:
    std::string identifier;           ///< the system's name (ifa_name)
    std::u16string friendlyName;      ///< empty on this platform
    std::string description;          ///< empty on this platform
    HardwareAddress hardwareAddress;  ///< empty unless an Ethernet link record was seen
    std::vector<InterfaceAddress> interfaceAddresses;  ///< in the system list's order
    bool up = false;                                   ///< IFF_UP and IFF_RUNNING
    bool loopback = false;                             ///< IFF_LOOPBACK
    bool multicast = false;                            ///< IFF_MULTICAST
};

}  // namespace foundation::network
