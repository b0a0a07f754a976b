#include "inet/posix/ListNetworkInterfaces.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <net/if.h>
#include <sys/socket.h>

#include <algorithm>
#include <cstring>
#include <deque>
#include <stdexcept>
#include <string>
#include <vector>

#if defined(AF_PACKET)
#include <linux/if_packet.h>
#include <net/if_arp.h>
#endif
#if defined(AF_LINK)
#include "inet/osx/LinkRecord.h"
#endif

namespace {

using namespace foundation::network;

constexpr unsigned kUpRunning = IFF_UP | IFF_RUNNING;
const std::vector<unsigned char> kMac{0x02, 0x00, 0x5e, 0x10, 0x00, 0x01};
const std::vector<unsigned char> kOtherMac{0x02, 0x00, 0x5e, 0x10, 0x00, 0x02};

// A getifaddrs list built by hand: entries own their names and socket addresses.
class SyntheticList {
public:
    SyntheticList& inet(const char* name, unsigned flags, const char* address, const char* mask) {
        sockaddr_in* a = make<sockaddr_in>(AF_INET);
        sockaddr_in* m = make<sockaddr_in>(AF_INET);
        ::inet_pton(AF_INET, address, &a->sin_addr);
        ::inet_pton(AF_INET, mask, &m->sin_addr);
        return add(name, flags, reinterpret_cast<sockaddr*>(a), reinterpret_cast<sockaddr*>(m));
    }

    SyntheticList& inet6(const char* name, unsigned flags, const char* address, const char* mask) {
        sockaddr_in6* a = make<sockaddr_in6>(AF_INET6);
        sockaddr_in6* m = make<sockaddr_in6>(AF_INET6);
        ::inet_pton(AF_INET6, address, &a->sin6_addr);
        ::inet_pton(AF_INET6, mask, &m->sin6_addr);
        a->sin6_scope_id = 7;  // never taken into the address
        return add(name, flags, reinterpret_cast<sockaddr*>(a), reinterpret_cast<sockaddr*>(m));
    }

    // The platform's own link record: AF_PACKET/sockaddr_ll on Linux, AF_LINK/sockaddr_dl
    // on the BSDs.
    SyntheticList& link(const char* name, unsigned flags, const std::vector<unsigned char>& mac,
                        bool ethernet = true) {
#if defined(AF_PACKET)
        auto* record = make<sockaddr_ll>(AF_PACKET);
        record->sll_hatype = ethernet ? ARPHRD_ETHER : ARPHRD_LOOPBACK;
        record->sll_halen = static_cast<unsigned char>(mac.size());
        std::copy(mac.begin(), mac.end(), record->sll_addr);
#else
        auto* record = make<osx::sockaddr_dl>(AF_LINK);
        *record = *osx::makeDeviceAddress(mac.data());
        if (!ethernet) {
            record->sdl_type = 24;  // IFT_LOOP
        }
#endif
        return add(name, flags, reinterpret_cast<sockaddr*>(record), nullptr);
    }

    SyntheticList& other(const char* name, unsigned flags, int family) {
        return add(name, flags, make<sockaddr_storage>(static_cast<sa_family_t>(family)), nullptr);
    }

    SyntheticList& noAddress(const char* name, unsigned flags) {
        return add(name, flags, nullptr, nullptr);
    }

    ifaddrs* head() {
        return entries_.empty() ? nullptr : &entries_.front();
    }

private:
    template <class Record>
    Record* make(sa_family_t family) {
        auto& storage = storage_.emplace_back();
        std::memset(&storage, 0, sizeof storage);
        static_assert(sizeof(Record) <= sizeof storage);
        auto* record = reinterpret_cast<Record*>(&storage);
        reinterpret_cast<sockaddr*>(record)->sa_family = family;
        return record;
    }

    SyntheticList& add(const char* name, unsigned flags, void* address, sockaddr* mask) {
        names_.emplace_back(name);
        ifaddrs& entry = entries_.emplace_back();
        entry = ifaddrs{};
        entry.ifa_name = names_.back().data();
        entry.ifa_flags = flags;
        entry.ifa_addr = static_cast<sockaddr*>(address);
        entry.ifa_netmask = mask;
        if (entries_.size() > 1) {
            entries_[entries_.size() - 2].ifa_next = &entry;
        }
        return *this;
    }

    std::deque<std::string> names_;
    std::deque<sockaddr_storage> storage_;
    std::deque<ifaddrs> entries_;
};

std::vector<std::string> texts(const std::vector<InterfaceAddress>& addresses) {
    std::vector<std::string> result;
    for (const auto& address : addresses) {
        result.push_back(address.toString());
    }
    return result;
}

TEST(ListNetworkInterfacesTest, EntriesGroupByNameInOrderOfFirstAppearance) {
    SyntheticList list;
    list.link("eth1", kUpRunning | IFF_MULTICAST, kMac)
        .link("lo", kUpRunning | IFF_LOOPBACK, {0, 0, 0, 0, 0, 0}, false)
        .inet("lo", kUpRunning | IFF_LOOPBACK, "127.0.0.1", "255.0.0.0")
        .inet("eth1", kUpRunning | IFF_MULTICAST, "192.168.1.20", "255.255.255.0")
        .inet6("eth1", kUpRunning | IFF_MULTICAST, "2001:db8::20", "ffff:ffff:ffff:ffff::")
        .inet6("lo", kUpRunning | IFF_LOOPBACK, "::1", "ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff")
        .inet6("eth1", kUpRunning | IFF_MULTICAST, "fe80::20", "ffff:ffff:ffff:ffff::");
    const auto interfaces = posix::listNetworkInterfaces(list.head());
    ASSERT_EQ(interfaces.size(), 2u);
    EXPECT_EQ(interfaces[0]->identifier, "eth1");
    EXPECT_EQ(texts(interfaces[0]->interfaceAddresses),
              (std::vector<std::string>{"192.168.1.20/24", "2001:db8::20/64", "fe80::20/64"}));
    EXPECT_EQ(interfaces[0]->hardwareAddress.bytes(), kMac);
    EXPECT_TRUE(interfaces[0]->up);
    EXPECT_TRUE(interfaces[0]->multicast);
    EXPECT_FALSE(interfaces[0]->loopback);
    EXPECT_EQ(interfaces[1]->identifier, "lo");
    EXPECT_EQ(texts(interfaces[1]->interfaceAddresses),
              (std::vector<std::string>{"127.0.0.1/8", "::1/128"}));
    EXPECT_TRUE(interfaces[1]->loopback);
    EXPECT_TRUE(interfaces[1]->friendlyName.empty());
    EXPECT_TRUE(interfaces[1]->description.empty());
}

TEST(ListNetworkInterfacesTest, FlagsComeFromTheFirstEntryWithAnAddress) {
    SyntheticList list;
    list.noAddress("eth0", IFF_LOOPBACK)  // skipped entirely, flags and all
        .inet("eth0", IFF_UP | IFF_MULTICAST, "10.0.0.1", "255.0.0.0")  // up but not running
        .inet("eth0", kUpRunning | IFF_LOOPBACK, "10.0.0.2", "255.0.0.0")
        .noAddress("ghost", kUpRunning);
    const auto interfaces = posix::listNetworkInterfaces(list.head());
    ASSERT_EQ(interfaces.size(), 1u);  // a name with no address at all never appears
    EXPECT_FALSE(interfaces[0]->up);
    EXPECT_FALSE(interfaces[0]->loopback);
    EXPECT_TRUE(interfaces[0]->multicast);
    EXPECT_EQ(interfaces[0]->interfaceAddresses.size(), 2u);
}

TEST(ListNetworkInterfacesTest, LinkRecordsLastOneWinsButLoopbackKeepsNone) {
    SyntheticList list;
    list.link("eth0", kUpRunning, kMac)
        .link("eth0", kUpRunning, kOtherMac)
        .link("wlan0", kUpRunning, kMac)
        .link("wlan0", kUpRunning, kOtherMac, false)  // a non-Ethernet record empties it
        .inet("lo", kUpRunning | IFF_LOOPBACK, "127.0.0.1", "255.0.0.0")
        .link("lo", kUpRunning | IFF_LOOPBACK, kMac);  // even an Ethernet one
    const auto interfaces = posix::listNetworkInterfaces(list.head());
    ASSERT_EQ(interfaces.size(), 3u);
    EXPECT_EQ(interfaces[0]->hardwareAddress.bytes(), kOtherMac);
    EXPECT_TRUE(interfaces[1]->hardwareAddress.bytes().empty());
    EXPECT_TRUE(interfaces[2]->hardwareAddress.bytes().empty());
}

TEST(ListNetworkInterfacesTest, UnknownFamiliesStillMakeTheInterface) {
    EXPECT_TRUE(posix::listNetworkInterfaces(nullptr).empty());
    SyntheticList list;
    list.other("can0", kUpRunning, AF_UNIX).other("can0", kUpRunning, 250);
    const auto interfaces = posix::listNetworkInterfaces(list.head());
    ASSERT_EQ(interfaces.size(), 1u);
    EXPECT_EQ(interfaces[0]->identifier, "can0");
    EXPECT_TRUE(interfaces[0]->interfaceAddresses.empty());
    EXPECT_TRUE(interfaces[0]->hardwareAddress.bytes().empty());
}

TEST(ListNetworkInterfacesTest, NonContiguousIPv4MaskThrowsButIPv6CountsBytes) {
    SyntheticList bad;
    bad.inet("eth0", kUpRunning, "10.0.0.1", "255.0.255.0");
    EXPECT_THROW(posix::listNetworkInterfaces(bad.head()), std::invalid_argument);

    SyntheticList odd;
    odd.inet6("eth0", kUpRunning, "2001:db8::1", "ffff:0:ffff::");
    const auto interfaces = posix::listNetworkInterfaces(odd.head());
    ASSERT_EQ(interfaces.size(), 1u);
    EXPECT_EQ(texts(interfaces[0]->interfaceAddresses), std::vector<std::string>{"2001:db8::1/32"});
}

// Releases are counted so that the tests see the list freed, also on the throwing path.
int releases = 0;
void countRelease(ifaddrs*) {
    ++releases;
}

TEST(ListUsableInterfacesTest, KeepsRunningInterfacesWithAnIPAddress) {
    SyntheticList list;
    list.link("down0", IFF_MULTICAST, kMac)
        .inet("down0", IFF_MULTICAST, "10.1.0.1", "255.255.0.0")
        .inet("norun0", IFF_UP, "10.2.0.1", "255.255.0.0")  // up, not running
        .link("linkonly0", kUpRunning, kMac)                // only a link record
        .link("eth0", kUpRunning | IFF_MULTICAST, kMac)
        .inet6("eth0", kUpRunning | IFF_MULTICAST, "fd00::2", "ffff:ffff:ffff:ffff::")
        .inet6("eth0", kUpRunning | IFF_MULTICAST, "fd00::1", "ffff:ffff:ffff:ffff::")
        .inet6("eth0", kUpRunning | IFF_MULTICAST, "fd00::2", "ffff:ffff:ffff:ffff::")
        .inet("lo", kUpRunning | IFF_LOOPBACK, "127.0.0.1", "255.0.0.0");
    releases = 0;
    const auto listed =
        posix::listUsableInterfaces(posix::OwnedInterfaceList(list.head(), &countRelease));
    EXPECT_EQ(releases, 1);
    ASSERT_EQ(listed.size(), 2u);
    // The fields themselves are checked on listNetworkInterfaces above; here what is kept.
    const NetworkInterface& eth0 = listed[0];
    EXPECT_EQ(eth0.getIdentifier(), "eth0");
    EXPECT_EQ(texts(eth0.getInterfaceAddresses()),
              (std::vector<std::string>{"fd00::2/64", "fd00::1/64", "fd00::2/64"}));
    std::vector<std::string> inet;
    for (const auto& address : eth0.getInetAddresses()) {
        inet.push_back(address.toString());
    }
    EXPECT_EQ(inet, (std::vector<std::string>{"fd00::2", "fd00::1", "fd00::2"}));
    EXPECT_EQ(listed[1].getIdentifier(), "lo");
}

TEST(ListUsableInterfacesTest, TheListIsReleasedWhenBuildingThrows) {
    SyntheticList list;
    list.inet("eth0", kUpRunning, "10.0.0.1", "255.255.0.255");
    releases = 0;
    try {
        posix::listUsableInterfaces(posix::OwnedInterfaceList(list.head(), &countRelease));
        ADD_FAILURE() << "accepted a non-contiguous netmask";
    } catch (const std::invalid_argument& e) {
        EXPECT_STREQ(e.what(), "non-contiguous netmask");
    }
    EXPECT_EQ(releases, 1);
}

TEST(NetworkInterfaceTest, FriendlyNameFallsBackToTheIdentifier) {
    auto impl = std::make_shared<NetworkInterfaceImpl>();
    EXPECT_EQ(NetworkInterface(impl).getFriendlyName(), u"");
    impl->identifier = "en0";
    EXPECT_EQ(NetworkInterface(impl).getFriendlyName(), u"en0");
    impl->friendlyName = u"Ethernet \u00e9";
    EXPECT_EQ(NetworkInterface(impl).getFriendlyName(), u"Ethernet \u00e9");
}

TEST(NetworkInterfaceTest, ListOfThisHostOnlyHoldsUsableInterfaces) {
    for (const auto& interface : NetworkInterface::list()) {
        SCOPED_TRACE(interface.getIdentifier());
        EXPECT_TRUE(interface.isUp());
        EXPECT_FALSE(interface.getInterfaceAddresses().empty());
    }
}

}  // namespace
