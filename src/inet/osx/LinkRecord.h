/// @file
/// @brief Hardware addresses to and from BSD link-layer records (`sockaddr_dl`).
#pragma once

#include <memory>

#include "foundation/network/HardwareAddress.h"
#include "inet/osx/SockaddrDl.h"

namespace foundation::network::osx {

/// The Ethernet address of a link record (the `sdl_alen` bytes after the `sdl_nlen` bytes of
/// name in `sdl_data`); empty for every other link type, and for a record whose `sdl_len`
/// is too short to hold the bytes it claims. Never fails.
HardwareAddress makeHardwareAddress(const sockaddr_dl* link);

/// A new 20-byte Ethernet link record for the six bytes of `mac`: no name, no selector,
/// index 0. The inverse of makeHardwareAddress.
std::unique_ptr<sockaddr_dl> makeDeviceAddress(const unsigned char* mac);

}  // namespace foundation::network::osx
