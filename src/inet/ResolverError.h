/// @file
/// @brief Turns a resolver's Boost error code into the library's std::system_error.
#pragma once

#include <boost/system/error_code.hpp>

namespace foundation::network {

/// Throws the internal exception over std::system_error with the same value and the matching
/// standard category: Boost's system category becomes std::system_category(), its generic
/// category std::generic_category(), and any other category (the resolver's "asio.netdb" and
/// "asio.addrinfo") a standard category forwarding name and messages to it. `what()` is the
/// category's message alone.
[[noreturn]] void throwResolverError(const boost::system::error_code& code);

}  // namespace foundation::network
