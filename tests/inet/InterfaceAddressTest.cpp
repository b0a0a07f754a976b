#include "foundation/network/InterfaceAddress.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <unordered_set>
#include <vector>

#include "foundation/network/AddressFactories.h"
#include "foundation/network/HardwareAddress.h"
#include "inet/InetAddressImpl.h"
#include "inet/InterfaceAddressImpl.h"
#include "inet/MakeAddress.h"
#include "support/Corpus.h"

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

using Bytes = std::vector<unsigned char>;

bool bit(const Bytes& bytes, std::size_t index) {
    return ((bytes[index / 8] >> (7 - index % 8)) & 1) != 0;
}

// The reference: bit by bit, the first `prefix` bits of `network` followed by `host` bits.
Bytes maskBitByBit(const Bytes& network, std::size_t prefix, bool host) {
    Bytes out(network.size(), 0);
    for (std::size_t i = 0; i < network.size() * 8; ++i) {
        if (i < prefix ? bit(network, i) : host) {
            out[i / 8] = static_cast<unsigned char>(out[i / 8] | (0x80 >> (i % 8)));
        }
    }
    return out;
}

bool sameFirstBits(const Bytes& a, const Bytes& b, std::size_t prefix) {
    for (std::size_t i = 0; i < prefix; ++i) {
        if (bit(a, i) != bit(b, i)) {
            return false;
        }
    }
    return true;
}

// contains, network and broadcast against a bit-by-bit computation: every corpus address as a
// network with a random prefix, asked about its neighbours across the prefix boundary (one bit
// flipped just before, at and after it) and about random other corpus addresses.
TEST(InterfaceAddressTest, ContainsNetworkAndBroadcastAgreeWithBitMasks) {
    std::vector<Bytes> corpus;
    for (const std::string& line : fntest::readLines("addrs.txt")) {
        corpus.push_back(InetAddress(line).bytes());
    }
    std::mt19937 random(16);
    std::size_t inside = 0, outside = 0;
    for (const Bytes& bytes : corpus) {
        const std::size_t width = bytes.size() * 8;
        const auto prefix = static_cast<unsigned short>(random() % (width + 1));
        const InterfaceAddress network(InetAddress(bytes), prefix);
        SCOPED_TRACE(network.toString());
        EXPECT_EQ(network.network().bytes(), maskBitByBit(bytes, prefix, false));
        EXPECT_EQ(network.broadcast().bytes(), maskBitByBit(bytes, prefix, true));
        EXPECT_TRUE(network.contains(network.network()) && network.contains(network.broadcast()));

        std::vector<Bytes> candidates = {bytes, corpus[random() % corpus.size()]};
        for (const std::size_t at :
             {prefix - std::size_t{1}, std::size_t{prefix}, prefix + std::size_t{1}}) {
            if (at < width) {
                Bytes flipped = bytes;
                flipped[at / 8] = static_cast<unsigned char>(flipped[at / 8] ^ (0x80 >> (at % 8)));
                candidates.push_back(flipped);
            }
        }
        for (const Bytes& candidate : candidates) {
            const bool expected =
                candidate.size() == bytes.size() && sameFirstBits(candidate, bytes, prefix);
            EXPECT_EQ(network.contains(InetAddress(candidate)), expected)
                << InetAddress(candidate).toString();
            (expected ? inside : outside) += 1;
        }
    }
    EXPECT_GT(inside, corpus.size());
    EXPECT_GT(outside, corpus.size());
}

TEST(InterfaceAddressTest, ContainsAcrossVersionsAndScopes) {
    struct Case {
        const char* network;
        unsigned short prefix;
        const char* address;
        bool contained;
    };
    const std::vector<Case> cases = {
        {"192.168.1.20", 24, "192.168.1.255", true},
        {"192.168.1.20", 24, "192.168.2.0", false},
        {"192.168.1.20", 24, "::ffff:192.168.1.1", false},  // mapped: another version
        {"::ffff:192.168.1.20", 120, "192.168.1.1", false},
        {"::ffff:192.168.1.20", 120, "::ffff:192.168.1.1", true},
        {"0.0.0.0", 0, "255.255.255.255", true},
        {"0.0.0.0", 0, "::", false},
        {"fe80::1", 64, "fe80::2%7", true},  // no scope on the network: any link
        {"fe80::1%7", 64, "fe80::2", true},
        {"fe80::1%7", 64, "fe80::2%7", true},
        {"fe80::1%7", 64, "fe80::2%8", false},
        {"2001:db8::1", 128, "2001:db8::1", true},
        {"2001:db8::1", 128, "2001:db8::", false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.network) + "/" + std::to_string(c.prefix) + " " + c.address);
        EXPECT_EQ(
            InterfaceAddress(InetAddress(c.network), c.prefix).contains(InetAddress(c.address)),
            c.contained);
    }
    // network() and broadcast() keep the scope id; /31 and /32 have no host bits to spare.
    EXPECT_EQ(InterfaceAddress(InetAddress("fe80::1%7"), 64).network().toString(), "fe80::%7");
    EXPECT_EQ(InterfaceAddress(InetAddress("fe80::1%7"), 126).broadcast().toString(), "fe80::3%7");
    EXPECT_EQ(InterfaceAddress(InetAddress("10.0.0.8"), 31).broadcast().toString(), "10.0.0.9");
    EXPECT_EQ(InterfaceAddress(InetAddress("10.0.0.8"), 32).broadcast().toString(), "10.0.0.8");
    EXPECT_EQ(InterfaceAddress().broadcast().toString(), "255.255.255.255");
}

TEST(InterfaceAddressTest, EqualityOrderAndHashCoverAddressAndPrefix) {
    // Distinct values, in their order.
    const std::vector<InterfaceAddress> ordered = {
        InterfaceAddress(InetAddress("10.0.0.1"), 8),
        InterfaceAddress(InetAddress("10.0.0.1"), 24),
        InterfaceAddress(InetAddress("10.0.0.2"), 8),
        InterfaceAddress(InetAddress("fe80::1"), 64),
        InterfaceAddress(InetAddress("fe80::1%1"), 64),
        InterfaceAddress(InetAddress("fe80::2"), 10),
    };
    std::set<InterfaceAddress> set;
    std::unordered_set<InterfaceAddress> hashed;
    for (std::size_t i = 0; i < ordered.size(); ++i) {
        const InterfaceAddress& value = ordered[i];
        const InterfaceAddress same(value.getInetAddress(), value.prefixLength());  // another impl
        EXPECT_EQ(value, same);
        EXPECT_EQ(value.hashValue(), same.hashValue());
        EXPECT_EQ(std::hash<InterfaceAddress>()(value), same.hashValue());
        EXPECT_FALSE(value < same || same < value);
        for (std::size_t j = 0; j < ordered.size(); ++j) {
            EXPECT_EQ(value < ordered[j], i < j)
                << value.toString() << " " << ordered[j].toString();
            EXPECT_EQ(value == ordered[j], i == j);
        }
        set.insert({value, same});
        hashed.insert({value, same});
    }
    EXPECT_EQ(set.size(), ordered.size());
    EXPECT_EQ(hashed.size(), ordered.size());
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
