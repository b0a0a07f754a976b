/// @file
/// @brief The BSD link-layer socket address `sockaddr_dl` in `foundation::network::osx`: the
/// system's own where it has one, otherwise a definition with the same layout, so that the
/// link-record code builds and is tested on every system.
#pragma once

#include <sys/socket.h>

#if __has_include(<net/if_dl.h>)
#include <net/if_dl.h>
#include <net/if_types.h>

namespace foundation::network::osx {

using ::sockaddr_dl;

inline constexpr unsigned char kLinkFamily = AF_LINK;
inline constexpr unsigned char kEthernetType = IFT_ETHER;

}  // namespace foundation::network::osx

#else
#include <cstdint>

namespace foundation::network::osx {

/// net/if_dl.h of the BSDs: 8 bytes of header, then the name and the link-layer address in
/// `sdl_data`, which may run past its declared 12 bytes.
struct sockaddr_dl {
    std::uint8_t sdl_len;     ///< total length of the record
    std::uint8_t sdl_family;  ///< AF_LINK
    std::uint16_t sdl_index;  ///< interface index, 0 when unknown
    std::uint8_t sdl_type;    ///< interface type (net/if_types.h)
    std::uint8_t sdl_nlen;    ///< length of the name at the start of sdl_data
    std::uint8_t sdl_alen;    ///< length of the link-layer address after the name
    std::uint8_t sdl_slen;    ///< length of the link-layer selector
    char sdl_data[12];        ///< name, then address, then selector
};
static_assert(sizeof(sockaddr_dl) == 20);

// This system has no AF_LINK or IFT_ETHER; these are the values the BSD headers give them, so
// that records made here read the same as the system's own would there.
inline constexpr unsigned char kLinkFamily = 18;
inline constexpr unsigned char kEthernetType = 6;

}  // namespace foundation::network::osx

#endif
