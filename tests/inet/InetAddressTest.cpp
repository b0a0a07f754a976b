#include "foundation/network/InetAddress.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <functional>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "foundation/core/except/Exception.h"
#include "inet/InetAddressImpl.h"
#include "support/Corpus.h"

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

// The address one step above (+1) or below (-1) in its family's space, wrapping around.
Bytes step(Bytes bytes, int direction) {
    for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte) {
        *byte = static_cast<unsigned char>(*byte + direction);
        if (*byte != (direction > 0 ? 0x00 : 0xff)) {
            break;
        }
    }
    return bytes;
}

// Each predicate's address blocks, from the RFCs that assign them, as first and last address.
struct Block {
    const char* predicate;
    const char* first;
    const char* last;
};
const std::vector<Block> kBlocks = {
    {"unspecified", "0.0.0.0", "0.0.0.0"},  // RFC 1122
    {"unspecified", "::", "::"},            // RFC 4291
    {"loopback", "127.0.0.0", "127.255.255.255"},
    {"loopback", "::1", "::1"},
    {"multicast", "224.0.0.0", "239.255.255.255"},                       // RFC 5771
    {"multicast", "ff00::", "ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff"},  // RFC 4291
    {"linkLocal", "169.254.0.0", "169.254.255.255"},                     // RFC 3927
    {"linkLocal", "fe80::", "febf:ffff:ffff:ffff:ffff:ffff:ffff:ffff"},  // RFC 4291
    {"private", "10.0.0.0", "10.255.255.255"},                           // RFC 1918
    {"private", "172.16.0.0", "172.31.255.255"},
    {"private", "192.168.0.0", "192.168.255.255"},
    {"private", "fc00::", "fdff:ffff:ffff:ffff:ffff:ffff:ffff:ffff"},  // RFC 4193
    {"v4Mapped", "::ffff:0.0.0.0", "::ffff:255.255.255.255"},          // RFC 4291
};

bool predicate(const std::string& name, const InetAddress& address) {
    static const std::map<std::string, std::function<bool(const InetAddress&)>> predicates = {
        {"unspecified", &InetAddress::isUnspecified}, {"loopback", &InetAddress::isLoopback},
        {"multicast", &InetAddress::isMulticast},     {"linkLocal", &InetAddress::isLinkLocal},
        {"private", &InetAddress::isPrivate},         {"v4Mapped", &InetAddress::isV4Mapped},
    };
    return predicates.at(name)(address);
}

// The reference: a plain range test over the bytes of the blocks above.
bool inBlocks(const std::string& name, const Bytes& bytes) {
    for (const Block& block : kBlocks) {
        const Bytes first = InetAddress(block.first).bytes();
        const Bytes last = InetAddress(block.last).bytes();
        if (block.predicate == name && first.size() == bytes.size() && first <= bytes &&
            bytes <= last) {
            return true;
        }
    }
    return false;
}

// Every predicate agrees with the block table on each block's edges, the addresses just
// outside them, and every address of the corpus.
TEST(InetAddressTest, PredicatesFollowTheAssignedBlocks) {
    std::vector<Bytes> probes;
    for (const Block& block : kBlocks) {
        for (const char* edge : {block.first, block.last}) {
            const Bytes bytes = InetAddress(edge).bytes();
            probes.insert(probes.end(), {bytes, step(bytes, 1), step(bytes, -1)});
        }
    }
    for (const std::string& line : fntest::readLines("addrs.txt")) {
        probes.push_back(InetAddress(line).bytes());
    }
    std::map<std::string, std::size_t> hits;
    for (const Bytes& bytes : probes) {
        const InetAddress address(bytes);
        SCOPED_TRACE(address.toString());
        for (const char* name :
             {"unspecified", "loopback", "multicast", "linkLocal", "private", "v4Mapped"}) {
            EXPECT_EQ(predicate(name, address), inBlocks(name, bytes)) << name;
            hits[name] += predicate(name, address) ? 1 : 0;
        }
    }
    for (const auto& [name, count] : hits) {
        EXPECT_GT(count, 2u) << name << " never held: the comparison meant nothing";
    }
}

// A mapped address follows the IPv6 rules; unmapped() gives the IPv4 answer.
TEST(InetAddressTest, MappedAddressesAreAskedThroughUnmapped) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"::ffff:127.0.0.1", "127.0.0.1"},     {"::ffff:10.1.2.3", "10.1.2.3"},
        {"::ffff:169.254.9.9", "169.254.9.9"}, {"::ffff:0.0.0.0", "0.0.0.0"},
        {"::ffff:224.0.0.1", "224.0.0.1"},     {"0:0:0:0:0:FFFF:C000:0201", "192.0.2.1"},
    };
    for (const auto& [text, inside] : cases) {
        SCOPED_TRACE(text);
        const InetAddress mapped(text);
        ASSERT_TRUE(mapped.isV4Mapped());
        EXPECT_FALSE(mapped.isLoopback() || mapped.isPrivate() || mapped.isLinkLocal() ||
                     mapped.isUnspecified() || mapped.isMulticast());
        const InetAddress v4 = mapped.unmapped();
        EXPECT_EQ(v4.getVersion(), 4);
        EXPECT_EQ(v4.toString(), inside);
        EXPECT_EQ(v4, InetAddress(inside));
        EXPECT_NE(v4, mapped);
        EXPECT_TRUE(v4.isLoopback() || v4.isPrivate() || v4.isLinkLocal() || v4.isUnspecified() ||
                    v4.isMulticast() || inside == "192.0.2.1");
    }
    // The host name goes along: it names the same host.
    const InetAddress named(std::make_shared<foundation::network::InetAddressImpl>(
                                boost::asio::ip::make_address("::ffff:192.0.2.7")),
                            "name.invalid");
    EXPECT_EQ(named.unmapped().getHostName(), "name.invalid");

    for (const std::string text : {"127.0.0.1", "::1", "::", "::fffe:1.2.3.4", "64:ff9b::1.2.3.4",
                                   "::1.2.3.4", "fe80::ffff:1.2.3.4"}) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(InetAddress(text).isV4Mapped());
        try {
            InetAddress(text).unmapped();
            ADD_FAILURE() << "unmapped";
        } catch (const std::invalid_argument& e) {
            EXPECT_EQ(std::string(e.what()),
                      "Not an IPv4-mapped address: " + InetAddress(text).toString());
        }
    }
}

TEST(InetAddressTest, ScopeIdsAreKeptAndCompared) {
    const std::vector<std::pair<std::string, std::uint32_t>> cases = {
        {"fe80::1%4000000", 4000000u},
        {"fe80::1%lo", 1u},
        {"fe80::1", 0u},
        {"fe80::1%", 0u},
        {"10.0.0.1", 0u},
        {"ff02::1%4294967295", 4294967295u},
    };
    for (const auto& [text, scope] : cases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(InetAddress(text).scopeId(), scope);
    }
    EXPECT_NE(InetAddress("fe80::1%1"), InetAddress("fe80::1%2"));
    EXPECT_NE(InetAddress("fe80::1%1"), InetAddress("fe80::1"));
    EXPECT_EQ(InetAddress("fe80::1%1"), InetAddress("fe80::1%lo"));
    EXPECT_LT(InetAddress("fe80::1"), InetAddress("fe80::1%1"));
    EXPECT_LT(InetAddress("fe80::1%9"), InetAddress("fe80::2"));  // bytes before scope
}

// Equality, order and hash are those of (version, bytes): a set of addresses holds exactly as
// many values as a set of their byte strings, in the same order, and finds each of them.
TEST(InetAddressTest, SetsOfAddressesAgreeWithSetsOfTheirBytes) {
    std::vector<InetAddress> addresses;
    std::set<std::pair<int, Bytes>> keys;
    for (const std::string& line : fntest::readLines("addrs.txt")) {
        addresses.emplace_back(line);
        keys.emplace(addresses.back().getVersion(), addresses.back().bytes());
        // The same value by another road, with a host name that must not count.
        addresses.emplace_back(
            std::make_shared<foundation::network::InetAddressImpl>(addresses.back().bytes()),
            "other.invalid");
    }
    const std::set<InetAddress> ordered(addresses.begin(), addresses.end());
    const std::unordered_set<InetAddress> hashed(addresses.begin(), addresses.end());
    ASSERT_EQ(ordered.size(), keys.size());
    ASSERT_EQ(hashed.size(), keys.size());
    auto key = keys.begin();
    for (const InetAddress& address : ordered) {
        EXPECT_EQ(std::make_pair(address.getVersion(), address.bytes()), *key++);
    }
    for (const InetAddress& address : addresses) {
        ASSERT_EQ(hashed.count(address), 1u) << address.toString();
        EXPECT_EQ(*hashed.find(address), address);
        EXPECT_EQ(std::hash<InetAddress>()(address), address.hashValue());
    }
    // Same bytes in another version are another value: 0.0.0.0 is not ::, nor ::ffff:0.0.0.0.
    const InetAddress zero4, zero6("::"), mapped("::ffff:0.0.0.0");
    EXPECT_TRUE(zero4 != zero6 && zero4 != mapped && zero6 != mapped);
    EXPECT_TRUE(zero4 < zero6 && InetAddress("255.255.255.255") < zero6);
    EXPECT_FALSE(zero4 < zero4);
}

TEST(InetAddressTest, LocalHostNameIsTheSystemsName) {
    char expected[256] = {};
    ASSERT_EQ(::gethostname(expected, sizeof expected - 1), 0);
    EXPECT_EQ(foundation::network::getLocalHostName(), expected);
}

}  // namespace
