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
    bool adminUp = false;                              ///< IFF_UP
    bool loopback = false;                             ///< IFF_LOOPBACK
    bool multicast = false;                            ///< IFF_MULTICAST
    unsigned index = 0;                                ///< the kernel's index; 0 if unknown
    unsigned mtu = 0;                                  ///< at listing time; 0 if unknown
};

}  // namespace foundation::network
