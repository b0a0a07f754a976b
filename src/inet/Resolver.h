/// @file
/// @brief Synchronous queries of the system resolver, each through a private I/O context and
/// resolver made for the call. Failures throw std::system_error (see ResolverError.h).
#pragma once

#include <string>
#include <vector>

#include <boost/asio/ip/address.hpp>

namespace foundation::network::resolver {

/// getaddrinfo(name, no service) with AI_ADDRCONFIG only, AF_UNSPEC, SOCK_STREAM, IPPROTO_TCP:
/// every address in the system's order, duplicates kept.
std::vector<boost::asio::ip::address> forward(const std::string& name);

/// getnameinfo on (address, port 0): the host name of the first answer; an address with no
/// name record gives its numeric text.
std::string reverse(const boost::asio::ip::address& address);

/// getaddrinfo(name, no service) with AI_CANONNAME only: the canonical name of the first
/// answer, or `name` itself when the system reports none.
std::string canonical(const std::string& name);

}  // namespace foundation::network::resolver
