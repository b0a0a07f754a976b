/// @file
/// @brief One input read as an IP address, or as an address with a prefix length, for the
/// subcommands that take addresses; text that is neither is refused in words of its own.
#pragma once

#include <optional>
#include <string_view>

#include "foundation/network/InetAddress.h"
#include "foundation/network/InterfaceAddress.h"

namespace fnet {

/// The address a numeric literal names (never a lookup).
/// @throws std::invalid_argument "not an IPv4 or IPv6 address".
foundation::network::InetAddress readAddress(std::string_view text);

/// ADDRESS or ADDRESS/PREFIX.
struct AddressInput {
    foundation::network::InetAddress address;
    std::optional<foundation::network::InterfaceAddress> network;  ///< with a prefix length
};

/// Reads ADDRESS or ADDRESS/PREFIX (a decimal prefix length up to 32 for IPv4, 128 for IPv6).
/// @throws std::invalid_argument "not an IPv4 or IPv6 address", "prefix length is not a
/// number", "prefix length above 32" (or 128).
AddressInput readAddressInput(std::string_view text);

}  // namespace fnet
