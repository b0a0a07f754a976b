// Address values. How text is parsed, classified and printed is checked through fnet addr (the
// addr rows of tests/data/tool_cases.tsv); here what only the library shows, the predicates and
// the prefix arithmetic against references of their own, and the records of the kernel.
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <net/if_arp.h>
#include <unistd.h>

#include <map>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <unordered_set>
#include <vector>

#include "foundation/core/except/Exception.h"
#include "foundation/network/AddressFactories.h"
#include "foundation/network/HardwareAddress.h"
#include "foundation/network/NetworkInterface.h"
#include "inet/InetAddressImpl.h"
#include "inet/InterfaceAddressImpl.h"
#include "inet/NetworkInterfaceImpl.h"
#include "inet/ResolverError.h"
#include "inet/posix/LinkProperties.h"
#include "inet/posix/ListNetworkInterfaces.h"
#if defined(__linux__)
#include "inet/linux/PacketRecord.h"
#endif
#include "inet/osx/LinkRecord.h"
#include "support/Corpus.h"
#include "support/NetworkNamespace.h"
#include "support/Table.h"

namespace {

using namespace foundation::network;
using Bytes = std::vector<unsigned char>;

template <class Call>
std::string errorOf(Call call) {
    try {
        call();
    } catch (const std::exception& e) {
        return e.what();
    }
    return "no error";
}

InetAddress named(const char* text, const char* name) {
    return InetAddress(std::make_shared<InetAddressImpl>(boost::asio::ip::make_address(text)),
                       name);
}

TEST(InetAddressTest, BytesHostNamesAndRefusals) {
    EXPECT_EQ(InetAddress(std::array<unsigned char, 4>{192, 0, 2, 1}), InetAddress("192.0.2.1"));
    const std::array<unsigned char, 16> sixteen{0x20, 0x01, 0x0d, 0xb8, 0, 0, 0, 0,
                                                0,    0,    0,    0,    0, 0, 0, 0x2a};
    EXPECT_EQ(InetAddress(sixteen).toString(), "2001:db8::2a");
    EXPECT_EQ(InetAddress(Bytes(sixteen.begin(), sixteen.end())).bytes(),
              Bytes(sixteen.begin(), sixteen.end()));
    EXPECT_EQ(InetAddress(Bytes(16, 0)).getVersion(), 6);  // 16 bytes are IPv6, also all zero
    for (const InetAddress& zero : {InetAddress(), InetAddress(Bytes{})}) {
        EXPECT_EQ(zero.bytes(), (Bytes{0, 0, 0, 0}));
    }
    for (const std::size_t size : {1u, 3u, 5u, 15u, 17u}) {
        EXPECT_EQ(errorOf([&] { InetAddress{Bytes(size, 1)}; }),
                  "Can not create InetAddress from " + std::to_string(size) +
                      " elements. Vector must have 0, 4 or 16 elements.");
    }
    // Names are refused without a lookup, with the parser's own message.
    EXPECT_THROW(InetAddress("localhost"), foundation::core::except::IInternalException);
    EXPECT_THROW(InetAddress("localhost"), std::invalid_argument);
    // A stored host name is returned without lookup, never printed, and kept by unmapped().
    const InetAddress host = named("::ffff:192.0.2.9", "name.invalid");
    EXPECT_EQ(host.getHostName(), "name.invalid");
    EXPECT_EQ(host.toString(), "::ffff:192.0.2.9");
    EXPECT_EQ(host.getHostAddress(), "::ffff:192.0.2.9");
    EXPECT_EQ(host.unmapped().getHostName(), "name.invalid");
    EXPECT_EQ(host.unmapped(), InetAddress("192.0.2.9"));
    for (const char* text : {"127.0.0.1", "::1", "::fffe:1.2.3.4", "::1.2.3.4"}) {
        EXPECT_EQ(errorOf([&] { InetAddress(text).unmapped(); }),
                  "Not an IPv4-mapped address: " + InetAddress(text).toString());
    }
    char hostName[256] = {};
    ASSERT_EQ(::gethostname(hostName, sizeof hostName - 1), 0);
    EXPECT_EQ(getLocalHostName(), hostName);
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

// Every predicate agrees with a plain range test over the blocks of tests/data/inet_blocks.tsv on
// each block's edges, the addresses just outside them, and every address of the corpus.
TEST(InetAddressTest, PredicatesFollowTheAssignedBlocks) {
    const std::map<std::string, bool (InetAddress::*)() const> predicates = {
        {"unspecified", &InetAddress::isUnspecified}, {"loopback", &InetAddress::isLoopback},
        {"multicast", &InetAddress::isMulticast},     {"linkLocal", &InetAddress::isLinkLocal},
        {"private", &InetAddress::isPrivate},         {"v4Mapped", &InetAddress::isV4Mapped}};
    const auto blocks = fntest::readTable("inet_blocks.tsv", 3);
    std::vector<Bytes> probes;
    for (const auto& block : blocks) {
        for (const auto& edge : {block.fields[1], block.fields[2]}) {
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
        for (const auto& [name, predicate] : predicates) {
            bool inBlocks = false;
            for (const auto& block : blocks) {
                const Bytes first = InetAddress(block.fields[1]).bytes();
                inBlocks =
                    inBlocks || (block.fields[0] == name && first.size() == bytes.size() &&
                                 first <= bytes && bytes <= InetAddress(block.fields[2]).bytes());
            }
            EXPECT_EQ((address.*predicate)(), inBlocks) << name << " " << address.toString();
            hits[name] += inBlocks ? 1 : 0;
        }
    }
    for (const auto& [name, count] : hits) {
        EXPECT_GT(count, 2u) << name << " never held: the comparison meant nothing";
    }
}

// Equality, order and hash are those of (version, bytes, scope id): a set of addresses holds
// exactly as many values as a set of their byte strings, in the same order, and finds each.
TEST(InetAddressTest, SetsOfAddressesAgreeWithSetsOfTheirBytes) {
    std::vector<InetAddress> addresses;
    std::set<std::pair<int, Bytes>> keys;
    for (const std::string& line : fntest::readLines("addrs.txt")) {
        addresses.emplace_back(line);
        keys.emplace(addresses.back().getVersion(), addresses.back().bytes());
        // The same value by another road, with a host name that must not count.
        addresses.push_back(named(addresses.back().toString().c_str(), "other.invalid"));
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
        EXPECT_EQ(*hashed.find(address), address);
        EXPECT_EQ(std::hash<InetAddress>()(address), address.hashValue());
    }
    const InetAddress zero4, zero6("::"), mapped("::ffff:0.0.0.0");
    EXPECT_TRUE(zero4 != zero6 && zero4 != mapped && zero6 != mapped && !(zero4 < zero4));
    EXPECT_TRUE(zero4 < zero6 && InetAddress("255.255.255.255") < zero6);
    EXPECT_TRUE(InetAddress("fe80::1%1") != InetAddress("fe80::1%2"));
    EXPECT_TRUE(InetAddress("fe80::1%1") == InetAddress("fe80::1%lo"));
    EXPECT_TRUE(InetAddress("fe80::1") < InetAddress("fe80::1%1"));
    EXPECT_TRUE(InetAddress("fe80::1%9") < InetAddress("fe80::2"));  // bytes before scope
}

// ADDRESS PREFIX TEXT-OR-ERROR NETWORK BROADCAST INSIDE... OUTSIDE... (blank-separated).
TEST(InterfaceAddressTest, PrefixesTable) {
    for (const auto& row : fntest::readTable("inet_prefixes.tsv", 7)) {
        const auto& f = row.fields;
        SCOPED_TRACE("inet_prefixes.tsv:" + std::to_string(row.line));
        const InetAddress address(f[0]);
        const auto prefix = static_cast<unsigned short>(std::stoi(f[1]));
        if (f[2] == "prefix length too large") {
            EXPECT_THROW(InterfaceAddress(address, prefix), std::out_of_range);
            EXPECT_EQ(errorOf([&] { InterfaceAddress(address, prefix); }), f[2]);
            continue;
        }
        const InterfaceAddress network(address, prefix);
        EXPECT_EQ(network.toString(), f[2]);
        EXPECT_EQ(network.prefixLength(), prefix);
        EXPECT_EQ(network.getInetAddress(), address);
        EXPECT_EQ(network.network().toString(), f[3]);
        EXPECT_EQ(network.broadcast().toString(), f[4]);
        for (const auto& inside : fntest::words(f[5])) {
            EXPECT_TRUE(network.contains(InetAddress(inside))) << inside;
        }
        for (const auto& outside : fntest::words(f[6])) {
            EXPECT_FALSE(network.contains(InetAddress(outside))) << outside;
        }
    }
    EXPECT_EQ(InterfaceAddress(), InterfaceAddress(InetAddress(), 0));
}

void* addressOf(sockaddr_in& record) {
    return &record.sin_addr;
}

void* addressOf(sockaddr_in6& record) {
    record.sin6_scope_id = 9;  // never taken into the address
    return &record.sin6_addr;
}

// An InterfaceAddress from a system record: its text, or the error.
template <class Record>
std::string fromRecord(int family, const std::string& text, const std::string& mask) {
    Record address{}, netmask{};
    EXPECT_EQ(::inet_pton(family, text.c_str(), addressOf(address)), 1) << text;
    const auto length = static_cast<unsigned char>(mask[0] == '/' ? std::stoi(mask.substr(1)) : 0);
    EXPECT_TRUE(mask[0] == '/' || ::inet_pton(family, mask.c_str(), addressOf(netmask)) == 1);
    return errorOf([&] {
        throw std::runtime_error((mask[0] == '/' ? makeInterfaceAddress(&address, length)
                                                 : makeInterfaceAddress(&address, &netmask))
                                     .toString());
    });
}

// ADDRESS NETMASK-OR-/PREFIX TEXT-OR-ERROR, from the system's records. An IPv4 netmask must be
// contiguous; an IPv6 one counts the leading ones of each byte.
TEST(InterfaceAddressTest, FromRecordsTable) {
    for (const auto& row : fntest::readTable("inet_netmasks.tsv", 3)) {
        const auto& f = row.fields;
        EXPECT_EQ(f[0].find(':') == std::string::npos
                      ? fromRecord<sockaddr_in>(AF_INET, f[0], f[1])
                      : fromRecord<sockaddr_in6>(AF_INET6, f[0], f[1]),
                  f[2])
            << "inet_netmasks.tsv:" << row.line;
    }
    const auto impl = std::make_shared<InetAddressImpl>(boost::asio::ip::make_address("::2"));
    EXPECT_EQ(&getInetAddressImpl(makeInetAddress(impl)), impl.get());
    EXPECT_EQ(makeInterfaceAddress(
                  std::make_shared<InterfaceAddressImpl>(boost::asio::ip::make_address("::2"), 127))
                  .toString(),
              "::2/127");
}

bool bit(const Bytes& bytes, std::size_t index) {
    return ((bytes[index / 8] >> (7 - index % 8)) & 1) != 0;
}

// The first `prefix` bits of `bytes` followed by `host` bits, bit by bit.
Bytes maskBitByBit(const Bytes& bytes, std::size_t prefix, bool host) {
    Bytes out(bytes.size(), 0);
    for (std::size_t i = 0; i < bytes.size() * 8; ++i) {
        if (i < prefix ? bit(bytes, i) : host) {
            out[i / 8] = static_cast<unsigned char>(out[i / 8] | (0x80 >> (i % 8)));
        }
    }
    return out;
}

// contains, network and broadcast against a bit-by-bit computation: every corpus address as a
// network with a random prefix, asked about its neighbours across the prefix boundary (one bit
// flipped just before, at and after it) and about another corpus address.
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
        std::vector<Bytes> candidates = {bytes, corpus[random() % corpus.size()]};
        for (std::size_t at = prefix == 0 ? 0 : prefix - 1u; at <= prefix + 1u && at < width;
             ++at) {
            candidates.push_back(bytes);
            candidates.back()[at / 8] ^= static_cast<unsigned char>(0x80 >> (at % 8));
        }
        for (const Bytes& candidate : candidates) {
            const bool expected =
                candidate.size() == bytes.size() &&
                maskBitByBit(candidate, prefix, false) == maskBitByBit(bytes, prefix, false);
            EXPECT_EQ(network.contains(InetAddress(candidate)), expected)
                << InetAddress(candidate).toString();
            (expected ? inside : outside) += 1;
        }
    }
    EXPECT_GT(inside, corpus.size());
    EXPECT_GT(outside, corpus.size());
}

TEST(InterfaceAddressTest, EqualityOrderAndHashCoverAddressAndPrefix) {
    const std::vector<InterfaceAddress> ordered = {
        {InetAddress("10.0.0.1"), 8}, {InetAddress("10.0.0.1"), 24},  {InetAddress("10.0.0.2"), 8},
        {InetAddress("fe80::1"), 64}, {InetAddress("fe80::1%1"), 64}, {InetAddress("fe80::2"), 10}};
    std::unordered_set<InterfaceAddress> hashed;
    for (std::size_t i = 0; i < ordered.size(); ++i) {
        const InterfaceAddress same(ordered[i].getInetAddress(), ordered[i].prefixLength());
        EXPECT_EQ(std::hash<InterfaceAddress>()(ordered[i]), same.hashValue());
        for (std::size_t j = 0; j < ordered.size(); ++j) {
            EXPECT_EQ(same < ordered[j], i < j) << i << " " << j;
            EXPECT_EQ(same == ordered[j], i == j) << i << " " << j;
        }
        hashed.insert({ordered[i], same});
    }
    EXPECT_EQ(hashed.size(), ordered.size());
}

// Link-layer records: Linux's packet records and the BSDs' link records (built and checked
// everywhere). Only Ethernet records give an address, never read past the record.
TEST(HardwareAddressTest, RecordsGiveEthernetAddressesOnly) {
    EXPECT_EQ(HardwareAddress({0x0a, 0xB0, 0x07, 0x80}).toString(), "0a:b0:07:80");
    EXPECT_EQ(HardwareAddress().toString(), "");
    const Bytes mac{0x02, 0x00, 0x00, 0x00, 0x0a, 0x01, 0x07, 0x08};
#if defined(__linux__)
    const std::vector<std::pair<unsigned short, std::size_t>> packets = {
        {ARPHRD_ETHER, 6},    {ARPHRD_ETHER, 0}, {ARPHRD_ETHER, 40},
        {ARPHRD_LOOPBACK, 6}, {ARPHRD_NONE, 6},  {ARPHRD_SIT, 6}};
    for (const auto& [type, length] : packets) {
        sockaddr_ll link{};
        link.sll_hatype = type;
        link.sll_halen = static_cast<unsigned char>(length);
        std::copy(mac.begin(), mac.end(), link.sll_addr);
        const std::size_t kept = type == ARPHRD_ETHER ? std::min<std::size_t>(length, 8) : 0;
        EXPECT_EQ(lnx::makeHardwareAddress(&link).bytes(), Bytes(mac.begin(), mac.begin() + kept))
            << type << " " << length;
    }
#endif
    const auto device = osx::makeDeviceAddress(mac.data());
    EXPECT_EQ(osx::makeHardwareAddress(device.get()).bytes(), Bytes(mac.begin(), mac.begin() + 6));
    EXPECT_TRUE(device->sdl_len == 20 && device->sdl_family == osx::kLinkFamily &&
                device->sdl_index == 0 && device->sdl_nlen == 0 && device->sdl_slen == 0);
    osx::sockaddr_dl named = *device;  // the address after a name
    named.sdl_nlen = 3;
    std::copy(mac.begin(), mac.begin() + 6, named.sdl_data + 3);
    EXPECT_EQ(osx::makeHardwareAddress(&named).bytes(), Bytes(mac.begin(), mac.begin() + 6));
    named.sdl_alen = 200;  // more than the record holds
    EXPECT_TRUE(osx::makeHardwareAddress(&named).bytes().empty());
    named = *device;
    named.sdl_type = 24;  // loopback
    EXPECT_TRUE(osx::makeHardwareAddress(&named).bytes().empty());
}

// A resolver's error is a std::system_error with the system's own message alone; Boost's
// categories map to the standard ones where there are such. (Lookups that fail for real are in
// the namespace tests.)
TEST(ResolverErrorTest, CategoriesAndMessages) {
    namespace error = boost::asio::error;
    const std::vector<std::pair<boost::system::error_code, std::string>> cases = {
        {error::no_data, "asio.netdb The query is valid, but it does not have associated data"},
        {error::no_recovery, "asio.netdb A non-recoverable error occurred during database lookup"},
        {error::service_not_found, "asio.addrinfo Service not found"},
        {error::socket_type_not_supported, "asio.addrinfo Socket type not supported"},
        {{ECONNREFUSED, boost::system::system_category()}, "system Connection refused"},
        {{EINVAL, boost::system::generic_category()}, "generic Invalid argument"}};
    for (const auto& [code, text] : cases) {
        try {
            throwResolverError(code);
            ADD_FAILURE() << "no exception";
        } catch (const std::system_error& e) {
            EXPECT_EQ(std::string(e.code().category().name()) + " " + e.what(), text);
            EXPECT_EQ(e.code().value(), code.value());
        }
    }
}

// What no kernel list shows: an entry of another family still makes its interface, a name the
// kernel does not know has MTU 0, a friendly name stands in for the identifier only if given.
TEST(NetworkInterfaceTest, WhatNoKernelListShows) {
    sockaddr other{};
    other.sa_family = AF_UNIX;
    char name[] = "can0";
    ifaddrs entry{};
    entry.ifa_name = name;
    entry.ifa_addr = &other;
    const auto listed = posix::listNetworkInterfaces(&entry);
    ASSERT_EQ(listed.size(), 1u);
    EXPECT_TRUE(listed[0]->identifier == "can0" && listed[0]->interfaceAddresses.empty());
    EXPECT_EQ(posix::LinkProperties().mtu("no-such-if0"), 0u);
    EXPECT_EQ(posix::LinkProperties().mtu(std::string(40, 'x')), 0u);

    auto impl = std::make_shared<NetworkInterfaceImpl>();
    EXPECT_EQ(NetworkInterface(impl).getFriendlyName(), u"");
    impl->identifier = "en0";
    EXPECT_EQ(NetworkInterface(impl).getFriendlyName(), u"en0");
    impl->friendlyName = u"Ethernet \u00e9";
    EXPECT_EQ(NetworkInterface(impl).getFriendlyName(), u"Ethernet \u00e9");
    EXPECT_EQ(NetworkInterface(impl).getDescription(), "");
    impl->interfaceAddresses = {InterfaceAddress(InetAddress("10.0.0.1"), 8)};
    EXPECT_EQ(NetworkInterface(impl).getInetAddresses(), std::vector{InetAddress("10.0.0.1")});
}

}  // namespace
