#include "foundation/network/InetAddress.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <stdexcept>
#include <string>
#include <vector>

#include "foundation/core/except/Exception.h"
#include "inet/InetAddressImpl.h"

namespace {

using foundation::network::InetAddress;
using Bytes = std::vector<unsigned char>;

struct TextCase {
    std::string text;
    int version;
    bool loopback;
    bool multicast;
    std::string canonical;
    Bytes bytes;
};

Bytes v6(std::initializer_list<unsigned char> tail,
         std::initializer_list<unsigned char> head = {}) {
    Bytes bytes(16, 0);
    std::copy(head.begin(), head.end(), bytes.begin());
    std::copy(tail.begin(), tail.end(), bytes.end() - static_cast<long>(tail.size()));
    return bytes;
}

TEST(InetAddressTest, TextIsParsedClassifiedAndPrinted) {
    const std::vector<TextCase> cases = {
        {"0.0.0.0", 4, false, false, "0.0.0.0", {0, 0, 0, 0}},
        {"127.0.0.1", 4, true, false, "127.0.0.1", {127, 0, 0, 1}},
        {"127.255.0.9", 4, true, false, "127.255.0.9", {127, 255, 0, 9}},
        {"126.255.255.255", 4, false, false, "126.255.255.255", {126, 255, 255, 255}},
        {"224.0.0.1", 4, false, true, "224.0.0.1", {224, 0, 0, 1}},
        {"239.255.255.255", 4, false, true, "239.255.255.255", {239, 255, 255, 255}},
        {"240.0.0.1", 4, false, false, "240.0.0.1", {240, 0, 0, 1}},
        {"223.255.255.255", 4, false, false, "223.255.255.255", {223, 255, 255, 255}},
        {"::1", 6, true, false, "::1", v6({1})},
        {"::", 6, false, false, "::", v6({})},
        {"::2", 6, false, false, "::2", v6({2})},
        {"1::1", 6, false, false, "1::1", v6({1}, {0, 1})},
        // IPv4-mapped: an IPv6 address judged by the IPv6 rules.
        {"::ffff:127.0.0.1", 6, false, false, "::ffff:127.0.0.1", v6({0xff, 0xff, 127, 0, 0, 1})},
        {"::ffff:224.0.0.1", 6, false, false, "::ffff:224.0.0.1", v6({0xff, 0xff, 224, 0, 0, 1})},
        {"ff02::1", 6, false, true, "ff02::1", v6({1}, {0xff, 0x02})},
        {"FF0E:0:0:0:0:0:0:101", 6, false, true, "ff0e::101", v6({1, 1}, {0xff, 0x0e})},
        {"fe00::1", 6, false, false, "fe00::1", v6({1}, {0xfe})},
        {"2001:db8:0:0:1:0:0:1", 6, false, false, "2001:db8::1:0:0:1",
         v6({0, 1, 0, 0, 0, 0, 0, 1}, {0x20, 0x01, 0x0d, 0xb8})},
        // Scope ids: a number stays a number where it names no interface.
        {"fe80::1%4000000", 6, false, false, "fe80::1%4000000", v6({1}, {0xfe, 0x80})},
        {"ff02::1%4000001", 6, false, true, "ff02::1%4000001", v6({1}, {0xff, 0x02})},
        {"2001:db8::1%5", 6, false, false, "2001:db8::1%5", v6({1}, {0x20, 0x01, 0x0d, 0xb8})},
        {"fe80::1%lo", 6, false, false, "fe80::1%lo", v6({1}, {0xfe, 0x80})},
        // An empty scope suffix is scope id 0, printed without one.
        {"fe80::1%", 6, false, false, "fe80::1", v6({1}, {0xfe, 0x80})},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        const InetAddress address(c.text);
        EXPECT_EQ(address.getVersion(), c.version);
        EXPECT_EQ(address.isLoopback(), c.loopback);
        EXPECT_EQ(address.isMulticast(), c.multicast);
        EXPECT_EQ(address.toString(), c.canonical);
        EXPECT_EQ(address.getHostAddress(), c.canonical);
        EXPECT_EQ(address.bytes(), c.bytes);
        // The printed text parses back to the same value.
        EXPECT_EQ(InetAddress(address.toString()).toString(), c.canonical);
    }
}

TEST(InetAddressTest, EmptyAndDefaultAreTheZeroIPv4Address) {
    for (const InetAddress& address : {InetAddress(), InetAddress(Bytes{})}) {
        EXPECT_EQ(address.getVersion(), 4);
        EXPECT_EQ(address.toString(), "0.0.0.0");
        EXPECT_EQ(address.bytes(), (Bytes{0, 0, 0, 0}));
        EXPECT_FALSE(address.isLoopback());
        EXPECT_FALSE(address.isMulticast());
    }
}

TEST(InetAddressTest, BytesBuildTheSameValuesAsText) {
    const std::array<unsigned char, 4> four{192, 0, 2, 1};
    const std::array<unsigned char, 16> sixteen{0x20, 0x01, 0x0d, 0xb8, 0, 0, 0, 0,
                                                0,    0,    0,    0,    0, 0, 0, 0x2a};
    EXPECT_EQ(InetAddress(four).toString(), "192.0.2.1");
    EXPECT_EQ(InetAddress(Bytes(four.begin(), four.end())).toString(), "192.0.2.1");
    EXPECT_EQ(InetAddress(sixteen).toString(), "2001:db8::2a");
    EXPECT_EQ(InetAddress(Bytes(sixteen.begin(), sixteen.end())).toString(), "2001:db8::2a");
    EXPECT_EQ(InetAddress(sixteen).bytes(), Bytes(sixteen.begin(), sixteen.end()));
    // Sixteen bytes are IPv6 even when they spell an IPv4-mapped or all-zero address.
    EXPECT_EQ(InetAddress(Bytes(16, 0)).getVersion(), 6);
}

TEST(InetAddressTest, VectorsOfOtherSizesAreRefusedWithTheExactMessage) {
    for (const std::size_t size : {1u, 3u, 5u, 6u, 8u, 15u, 17u, 32u}) {
        SCOPED_TRACE(size);
        try {
            InetAddress address{Bytes(size, 1)};
            ADD_FAILURE() << "accepted " << address.toString();
        } catch (const std::invalid_argument& e) {
            EXPECT_NE(dynamic_cast<const foundation::core::except::IInternalException*>(&e),
                      nullptr);
            EXPECT_EQ(std::string(e.what()),
                      "Can not create InetAddress from " + std::to_string(size) +
                          " elements. Vector must have 0, 4 or 16 elements.");
        }
    }
}

TEST(InetAddressTest, TextThatIsNoLiteralIsRefusedWithoutLookup) {
    // The message is the parser's own; no lookup takes place, so names fail like any garbage.
    std::string parserMessage;
    try {
        InetAddress address("not an address");
    } catch (const std::invalid_argument& e) {
        parserMessage = e.what();
    }
    ASSERT_FALSE(parserMessage.empty());
    for (const std::string& text :
         std::vector<std::string>{"localhost", "example.com", "", " 127.0.0.1", "127.0.0.1 ",
                                  "1.2.3", "1.2.3.4.5", "256.1.1.1", "::g", "1:2:3:4:5:6:7:8:9",
                                  "[::1]", "0x7f.0.0.1", std::string("\xff\xfe", 2)}) {
        SCOPED_TRACE(text);
        try {
            InetAddress address(text);
            ADD_FAILURE() << "accepted as " << address.toString();
        } catch (const foundation::core::except::IInternalException& e) {
            EXPECT_NE(dynamic_cast<const std::invalid_argument*>(&e), nullptr);
            EXPECT_STREQ(e.message(), parserMessage.c_str());
        }
    }
}

TEST(InetAddressTest, AStoredHostNameIsReturnedWithoutLookupAndNeverPrinted) {
    const InetAddress named(std::make_shared<foundation::network::InetAddressImpl>(
                                boost::asio::ip::make_address("192.0.2.9")),
                            "name.invalid");
    EXPECT_EQ(named.getHostName(), "name.invalid");
    EXPECT_EQ(named.toString(), "192.0.2.9");
    EXPECT_EQ(named.getHostAddress(), "192.0.2.9");
}

TEST(InetAddressTest, LocalHostNameIsTheSystemsName) {
    char expected[256] = {};
    ASSERT_EQ(::gethostname(expected, sizeof expected - 1), 0);
    EXPECT_EQ(foundation::network::getLocalHostName(), expected);
}

}  // namespace
