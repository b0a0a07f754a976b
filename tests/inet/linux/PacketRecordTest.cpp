#include "inet/linux/PacketRecord.h"

#include <gtest/gtest.h>
#include <net/if_arp.h>
#include <sys/socket.h>

#include <vector>

namespace {

using foundation::network::lnx::makeHardwareAddress;

sockaddr_ll record(unsigned short type, std::vector<unsigned char> address) {
    sockaddr_ll link{};
    link.sll_family = AF_PACKET;
    link.sll_hatype = type;
    link.sll_halen = static_cast<unsigned char>(address.size());
    std::copy(address.begin(), address.end(), link.sll_addr);
    return link;
}

TEST(PacketRecordTest, EthernetRecordsGiveTheirAddress) {
    const std::vector<unsigned char> mac{0x02, 0x00, 0x00, 0x00, 0x0a, 0x01};
    const auto link = record(ARPHRD_ETHER, mac);
    EXPECT_EQ(makeHardwareAddress(&link).bytes(), mac);
    EXPECT_EQ(makeHardwareAddress(&link).toString(), "02:00:00:00:0a:01");
}

TEST(PacketRecordTest, OtherHardwareTypesAndOddRecordsGiveAnEmptyOrBoundedAddress) {
    for (const unsigned short type : {ARPHRD_LOOPBACK, ARPHRD_NONE, ARPHRD_IEEE80211, ARPHRD_SIT}) {
        const auto link = record(type, {1, 2, 3, 4, 5, 6});
        EXPECT_TRUE(makeHardwareAddress(&link).bytes().empty()) << type;
    }
    const auto noAddress = record(ARPHRD_ETHER, {});
    EXPECT_TRUE(makeHardwareAddress(&noAddress).bytes().empty());
    // A length beyond the record's address field is cut to the field.
    auto tooLong = record(ARPHRD_ETHER, {1, 2, 3, 4, 5, 6, 7, 8});
    tooLong.sll_halen = 40;
    EXPECT_EQ(makeHardwareAddress(&tooLong).bytes(),
              (std::vector<unsigned char>{1, 2, 3, 4, 5, 6, 7, 8}));
}

}  // namespace
