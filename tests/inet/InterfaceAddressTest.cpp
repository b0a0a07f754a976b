#include "foundation/network/InterfaceAddress.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "foundation/network/AddressFactories.h"
#include "foundation/network/HardwareAddress.h"
#include "inet/InetAddressImpl.h"
#include "inet/InterfaceAddressImpl.h"
#include "inet/MakeAddress.h"

namespace {

using namespace foundation::network;

sockaddr_in v4(const char* text) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    EXPECT_EQ(::inet_pton(AF_INET, text, &address.sin_addr), 1) << text;
    return address;
}

sockaddr_in6 v6(const char* text, std::uint32_t scope = 0) {
    sockaddr_in6 address{};
    address.sin6_family = AF_INET6;
    address.sin6_scope_id = scope;
    EXPECT_EQ(::inet_pton(AF_INET6, text, &address.sin6_addr), 1) << text;
    return address;
}

template <class Call>
std::string errorOf(Call call) {
    try {
        call();
    } catch (const std::exception& e) {
        return e.what();
    }
    return "no error";
}

TEST(InterfaceAddressTest, DefaultIsTheZeroAddressWithPrefixZero) {
    const InterfaceAddress address;
    EXPECT_EQ(address.toString(), "0.0.0.0/0");
    EXPECT_EQ(address.prefixLength(), 0);
    EXPECT_EQ(address.getInetAddress().toString(), "0.0.0.0");
}

TEST(InterfaceAddressTest, PrefixLengthsUpToTheAddressSize) {
    struct Case {
        const char* address;
        unsigned short prefix;
        std::string text;  // or the error
    };
    const std::vector<Case> cases = {
        {"10.1.2.3", 32, "10.1.2.3/32"},
        {"10.1.2.3", 33, "prefix length too large"},
        {"10.1.2.3", 0, "10.1.2.3/0"},
        {"192.168.1.20", 24, "192.168.1.20/24"},
        {"2001:db8::1", 128, "2001:db8::1/128"},
        {"2001:db8::1", 129, "prefix length too large"},
        {"fe80::1", 64, "fe80::1/64"},
        {"::ffff:10.0.0.1", 96, "::ffff:10.0.0.1/96"},
        {"fe80::1%4000000", 64, "fe80::1%4000000/64"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.address) + "/" + std::to_string(c.prefix));
        const InetAddress inet(c.address);
        if (c.text == "prefix length too large") {
            EXPECT_THROW(InterfaceAddress(inet, c.prefix), std::out_of_range);
            EXPECT_EQ(errorOf([&] { InterfaceAddress(inet, c.prefix); }), c.text);
            continue;
        }
        const InterfaceAddress address(inet, c.prefix);
        EXPECT_EQ(address.toString(), c.text);
        EXPECT_EQ(address.prefixLength(), c.prefix);
        // The address alone: no prefix, the scope id kept, no host name.
        EXPECT_EQ(address.getInetAddress().toString(), inet.toString());
    }
}

TEST(InterfaceAddressTest, AHostNameIsDroppedAndNeverLookedUpAgain) {
    const InetAddress named(
        std::make_shared<InetAddressImpl>(boost::asio::ip::make_address("10.9.8.7")),
        "named.invalid");
    const InetAddress plain = InterfaceAddress(named, 8).getInetAddress();
    EXPECT_EQ(plain.toString(), "10.9.8.7");
    // An empty host name: the copy is a new value, not the named one.
    EXPECT_NE(&getInetAddressImpl(plain), &getInetAddressImpl(named));
}

TEST(InterfaceAddressTest, IPv4NetmasksMustBeContiguous) {
    const sockaddr_in address = v4("192.0.2.77");
    const std::vector<std::pair<const char*, std::string>> cases = {
        {"255.255.255.0", "192.0.2.77/24"},
        {"255.255.255.128", "192.0.2.77/25"},
        {"255.255.255.255", "192.0.2.77/32"},
        {"0.0.0.0", "192.0.2.77/0"},
        {"128.0.0.0", "192.0.2.77/1"},
        {"255.255.0.255", "non-contiguous netmask"},
        {"0.255.255.255", "non-contiguous netmask"},
        {"255.255.255.254", "192.0.2.77/31"},
        {"255.254.255.0", "non-contiguous netmask"},
    };
    for (const auto& [mask, text] : cases) {
        SCOPED_TRACE(mask);
        const sockaddr_in netmask = v4(mask);
        if (text == "non-contiguous netmask") {
            EXPECT_THROW(makeInterfaceAddress(&address, &netmask), std::invalid_argument);
            EXPECT_EQ(errorOf([&] { makeInterfaceAddress(&address, &netmask); }), text);
        } else {
            EXPECT_EQ(makeInterfaceAddress(&address, &netmask).toString(), text);
        }
    }
}

TEST(InterfaceAddressTest, IPv6NetmasksCountLeadingOnesPerByte) {
    const sockaddr_in6 address = v6("2001:db8::5", 9);  // the record's scope id is not taken
    const std::vector<std::pair<const char*, unsigned short>> cases = {
        {"ffff:ffff:ffff:ffff::", 64},
        {"ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff", 128},
        {"::", 0},
        {"ffff:ffff:0:ffff::", 48},  // contiguity across bytes is not checked
        {"ffff:0:ffff::", 32},
        {"fe00::", 7},
        {"ff80::", 9},
        {"0f00::", 0},  // 0x0f is not a run of leading ones
        {"ffff:fff0::", 28},
        {"8000::1", 1},  // 0x01 counts nothing
    };
    for (const auto& [mask, prefix] : cases) {
        SCOPED_TRACE(mask);
        const sockaddr_in6 netmask = v6(mask);
        const InterfaceAddress made = makeInterfaceAddress(&address, &netmask);
        EXPECT_EQ(made.prefixLength(), prefix);
        EXPECT_EQ(made.toString(), "2001:db8::5/" + std::to_string(prefix));
    }
}

TEST(InterfaceAddressTest, FactoriesFromRecordsAndPrefixes) {
    const sockaddr_in address4 = v4("198.51.100.1");
    const sockaddr_in6 address6 = v6("fe80::abcd", 3);
    EXPECT_EQ(makeInterfaceAddress(&address4, static_cast<unsigned char>(30)).toString(),
              "198.51.100.1/30");
    EXPECT_EQ(makeInterfaceAddress(&address6, static_cast<unsigned char>(64)).toString(),
              "fe80::abcd/64");
    EXPECT_EQ(errorOf([&] { makeInterfaceAddress(&address4, static_cast<unsigned char>(33)); }),
              "prefix length too large");
    EXPECT_EQ(errorOf([&] { makeInterfaceAddress(&address6, static_cast<unsigned char>(255)); }),
              "prefix length too large");
    EXPECT_EQ(makeAddress(&address6).to_v6().scope_id(), 0u);

    const auto impl = std::make_shared<InetAddressImpl>(boost::asio::ip::make_address("::2"));
    EXPECT_EQ(&getInetAddressImpl(makeInetAddress(impl)), impl.get());
    const auto interfaceImpl =
        std::make_shared<InterfaceAddressImpl>(boost::asio::ip::make_address("::2"), 127);
    EXPECT_EQ(makeInterfaceAddress(interfaceImpl).toString(), "::2/127");
}

TEST(InterfaceAddressTest, TheNetmaskConstructorIsIPv4Only) {
    const auto v6address = boost::asio::ip::make_address("2001:db8::1");
    const auto v4mask = boost::asio::ip::make_address("255.0.0.0");
    EXPECT_THROW(InterfaceAddressImpl(v6address, v4mask), boost::asio::ip::bad_address_cast);
    EXPECT_THROW(InterfaceAddressImpl(v4mask, v6address), boost::asio::ip::bad_address_cast);
    EXPECT_EQ(InterfaceAddressImpl(boost::asio::ip::make_address("10.0.0.1"), v4mask).toString(),
              "10.0.0.1/8");
}

TEST(HardwareAddressTest, BytesPrintAsLowerCaseHexPairs) {
    const std::vector<std::pair<std::vector<unsigned char>, std::string>> cases = {
        {{}, ""},
        {{0x00, 0x1a, 0x2b, 0x3c, 0x4d, 0x5e}, "00:1a:2b:3c:4d:5e"},
        {{0xff}, "ff"},
        {{0x0a, 0xB0, 0x07, 0x80}, "0a:b0:07:80"},
        {{0, 0, 0, 0, 0, 0, 0, 0}, "00:00:00:00:00:00:00:00"},
    };
    for (const auto& [bytes, text] : cases) {
        const HardwareAddress address(bytes);
        EXPECT_EQ(address.toString(), text);
    }
    EXPECT_EQ(HardwareAddress().toString(), "");
}

}  // namespace
