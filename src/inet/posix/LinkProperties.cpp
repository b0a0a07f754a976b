#include "inet/posix/LinkProperties.h"

#include <net/if.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>
#if __has_include(<sys/sockio.h>)
#include <sys/sockio.h>  // SIOCGIFMTU on the BSDs
#endif

#include <cstring>

namespace foundation::network::posix {

namespace {

int openSocket() {
    // Any family the kernel offers will do: the request names the interface, not an address.
    for (const int family : {AF_INET, AF_INET6}) {
        const int fd = ::socket(family, SOCK_DGRAM, 0);
        if (fd >= 0) {
            return fd;
        }
    }
    return -1;
}

}  // namespace

LinkProperties::LinkProperties() : socket_(openSocket()) {}

LinkProperties::~LinkProperties() {
    if (socket_ >= 0) {
        ::close(socket_);
    }
}

unsigned LinkProperties::index(const std::string& name) {
    return ::if_nametoindex(name.c_str());
}

unsigned LinkProperties::mtu(const std::string& name) const {
    ifreq request{};
    if (socket_ < 0 || name.size() >= sizeof request.ifr_name) {
        return 0;
    }
    std::memcpy(request.ifr_name, name.c_str(), name.size() + 1);
    if (::ioctl(socket_, SIOCGIFMTU, &request) != 0 || request.ifr_mtu < 0) {
        return 0;
    }
    return static_cast<unsigned>(request.ifr_mtu);
}

}  // namespace foundation::network::posix
