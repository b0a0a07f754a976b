#include "inet/osx/LinkRecord.h"

#include <cstddef>
#include <cstring>

namespace foundation::network::osx {

HardwareAddress makeHardwareAddress(const sockaddr_dl* link) {
    if (link->sdl_type != kEthernetType) {
        return HardwareAddress();
    }
    const std::size_t begin = offsetof(sockaddr_dl, sdl_data) + link->sdl_nlen;
    const std::size_t end = begin + link->sdl_alen;
    // sdl_data may be longer than declared; sdl_len says how far the record really goes.
    if (end > link->sdl_len) {
        return HardwareAddress();
    }
    const auto* bytes = reinterpret_cast<const unsigned char*>(link);
    return HardwareAddress(std::vector<unsigned char>(bytes + begin, bytes + end));
}

std::unique_ptr<sockaddr_dl> makeDeviceAddress(const unsigned char* mac) {
    auto link = std::make_unique<sockaddr_dl>();  // value-initialised: every byte zero
    link->sdl_len = sizeof(sockaddr_dl);
    link->sdl_family = kLinkFamily;
    link->sdl_index = 0;
    link->sdl_type = kEthernetType;
    link->sdl_nlen = 0;
    link->sdl_alen = 6;
    link->sdl_slen = 0;
    std::memcpy(link->sdl_data, mac, 6);
    return link;
}

}  // namespace foundation::network::osx
