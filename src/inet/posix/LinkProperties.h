/// @file
/// @brief Per-interface numbers the address list does not carry: the kernel's index and the MTU.
#pragma once

#include <string>

namespace foundation::network::posix {

/// Reads interface indexes and MTUs by name. Holds one datagram socket for the MTU requests, so
/// that listing many interfaces opens it once. Never throws: what cannot be read is 0 (no
/// interface has index 0, and no usable one has MTU 0).
class LinkProperties {
public:
    LinkProperties();
    ~LinkProperties();
    LinkProperties(const LinkProperties&) = delete;
    LinkProperties& operator=(const LinkProperties&) = delete;

    /// if_nametoindex: 0 when the system knows no interface of that name.
    static unsigned index(const std::string& name);

    /// SIOCGIFMTU: 0 when the socket could not be made, the name is too long or unknown.
    unsigned mtu(const std::string& name) const;

private:
    int socket_;
};

}  // namespace foundation::network::posix
