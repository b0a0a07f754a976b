#include "inet/linux/PacketRecord.h"

#include <net/if_arp.h>

#include <algorithm>

namespace foundation::network::lnx {

HardwareAddress makeHardwareAddress(const sockaddr_ll* link) {
    if (link->sll_hatype != ARPHRD_ETHER) {
        return HardwareAddress();
    }
    // An Ethernet address has 6 bytes; never read past the record's address field.
    const std::size_t length = std::min<std::size_t>(link->sll_halen, sizeof link->sll_addr);
    return HardwareAddress(std::vector<unsigned char>(link->sll_addr, link->sll_addr + length));
}

}  // namespace foundation::network::lnx
