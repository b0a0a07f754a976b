/// @file
/// @brief Hardware addresses from Linux link-layer records (`sockaddr_ll`, family AF_PACKET),
/// which Linux's getifaddrs reports where the BSDs report `sockaddr_dl`.
#pragma once

#include <linux/if_packet.h>

#include "foundation/network/HardwareAddress.h"

// Not `linux`: GNU dialects predefine that name as a macro.
namespace foundation::network::lnx {

/// The `sll_halen` bytes of an Ethernet record (ARPHRD_ETHER); empty for every other hardware
/// type. Never fails.
HardwareAddress makeHardwareAddress(const sockaddr_ll* link);

}  // namespace foundation::network::lnx
