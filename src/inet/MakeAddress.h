/// @file
/// @brief Boost addresses from the system's socket-address records.
#pragma once

#include <netinet/in.h>

#include <boost/asio/ip/address.hpp>

namespace foundation::network {

/// The IPv4 address of `sin_addr`.
boost::asio::ip::address makeAddress(const sockaddr_in* address);

/// The IPv6 address of `sin6_addr` with scope id 0: the record's scope id is not taken.
boost::asio::ip::address makeAddress(const sockaddr_in6* address);

}  // namespace foundation::network
