#include "inet/osx/LinkRecord.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

namespace {

using namespace foundation::network;

// A link record as the BSD kernel writes it: the name, then the address, in sdl_data.
osx::sockaddr_dl record(unsigned char type, const std::string& name,
                        const std::vector<unsigned char>& address) {
    osx::sockaddr_dl link{};
    link.sdl_len = sizeof link;
    link.sdl_family = osx::kLinkFamily;
    link.sdl_type = type;
    link.sdl_nlen = static_cast<unsigned char>(name.size());
    link.sdl_alen = static_cast<unsigned char>(address.size());
    std::copy(name.begin(), name.end(), link.sdl_data);
    std::copy(address.begin(), address.end(), link.sdl_data + name.size());
    return link;
}

TEST(LinkRecordTest, EthernetRecordsGiveTheBytesAfterTheName) {
    const std::vector<unsigned char> mac{0x00, 0x1a, 0x2b, 0x3c, 0x4d, 0x5e};
    for (const std::string name : {"", "en0", "bridge"}) {
        SCOPED_TRACE(name);
        const auto link = record(osx::kEthernetType, name, mac);
        EXPECT_EQ(osx::makeHardwareAddress(&link).bytes(), mac);
        EXPECT_EQ(osx::makeHardwareAddress(&link).toString(), "00:1a:2b:3c:4d:5e");
    }
}

TEST(LinkRecordTest, OtherLinkTypesAndOddRecordsGiveAnEmptyAddress) {
    const std::vector<unsigned char> mac{1, 2, 3, 4, 5, 6};
    // Loopback (24), tunnel (131) and the unknown type 0 of net/if_types.h.
    for (const unsigned char type : {24, 131, 0}) {
        const auto link = record(type, "lo0", mac);
        EXPECT_TRUE(osx::makeHardwareAddress(&link).bytes().empty());
        EXPECT_EQ(osx::makeHardwareAddress(&link).toString(), "");
    }
    auto noAddress = record(osx::kEthernetType, "en1", {});
    EXPECT_TRUE(osx::makeHardwareAddress(&noAddress).bytes().empty());
    // Claims more bytes than the record holds: nothing is read past it.
    auto tooLong = record(osx::kEthernetType, "en2", mac);
    tooLong.sdl_alen = 200;
    EXPECT_TRUE(osx::makeHardwareAddress(&tooLong).bytes().empty());
}

TEST(LinkRecordTest, DeviceAddressIsTheInverse) {
    const unsigned char mac[6] = {0xde, 0xad, 0xbe, 0xef, 0x00, 0x01};
    const auto link = osx::makeDeviceAddress(mac);
    EXPECT_EQ(sizeof *link, 20u);
    EXPECT_EQ(link->sdl_len, 20);
    EXPECT_EQ(link->sdl_family, osx::kLinkFamily);
    EXPECT_EQ(link->sdl_index, 0);
    EXPECT_EQ(link->sdl_type, osx::kEthernetType);
    EXPECT_EQ(link->sdl_nlen, 0);
    EXPECT_EQ(link->sdl_alen, 6);
    EXPECT_EQ(link->sdl_slen, 0);
    EXPECT_EQ(std::memcmp(link->sdl_data, mac, 6), 0);
    for (std::size_t i = 6; i < sizeof link->sdl_data; ++i) {
        EXPECT_EQ(link->sdl_data[i], 0) << i;
    }
    EXPECT_EQ(osx::makeHardwareAddress(link.get()).bytes(),
              std::vector<unsigned char>(mac, mac + 6));
}

}  // namespace
