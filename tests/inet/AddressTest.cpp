// Address values. How text is parsed, classified and printed is checked through fnet addr (the
// addr rows of tests/data/tool_cases.tsv); here what only the library shows, the predicates and
// the prefix arithmetic against references of their own, and the records of the kernel.
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <net/if.h>
#include <net/if_arp.h>
#include <unistd.h>

#include <map>
#include <random>
#include <set>
#include <stdexcept>
#include <tuple>
#include <unordered_set>

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

// The message of the `Error` the call throws (another exception fails the test).
template <class Error = std::exception, class Call>
std::string errorOf(Call call) {
    try {
        call();
    } catch (const Error& e) {
        return e.what();
    }
    return "no error";
}

InetAddress named(const std::string& text, const char* name) {
    return InetAddress(std::make_shared<InetAddressImpl>(boost::asio::ip::make_address(text)),
                       name);
}

std::vector<Bytes> corpusBytes() {
    std::vector<Bytes> corpus;
    for (const std::string& line : fntest::readLines("addrs.txt")) {
        corpus.push_back(InetAddress(line).bytes());
    }
    return corpus;
}

TEST(InetAddressTest, BytesHostNamesAndRefusals) {
    EXPECT_EQ(InetAddress(std::array<unsigned char, 4>{192, 0, 2, 1}), InetAddress("192.0.2.1"));
    std::array<unsigned char, 16> sixteen{0x20, 0x01, 0x0d, 0xb8};
    sixteen[15] = 0x2a;
    EXPECT_EQ(InetAddress(sixteen).toString(), "2001:db8::2a");
    EXPECT_EQ(InetAddress(Bytes(sixteen.begin(), sixteen.end())), InetAddress(sixteen));
    EXPECT_EQ(InetAddress(Bytes(16, 0)).getVersion(), 6);  // 16 bytes are IPv6, also all zero
    EXPECT_TRUE(InetAddress().bytes() == Bytes(4, 0) && InetAddress(Bytes{}) == InetAddress());
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
    EXPECT_EQ(host.getHostName() + " " + host.toString() + " " + host.getHostAddress(),
              "name.invalid ::ffff:192.0.2.9 ::ffff:192.0.2.9");
    EXPECT_EQ(host.unmapped().getHostName() + " " + host.unmapped().toString(),
              "name.invalid 192.0.2.9");
    for (const char* text : {"127.0.0.1", "::1", "::fffe:1.2.3.4", "::1.2.3.4"}) {
        EXPECT_EQ(errorOf<std::invalid_argument>([&] { InetAddress(text).unmapped(); }),
                  "Not an IPv4-mapped address: " + InetAddress(text).toString());
    }
    char hostName[256] = {};
    ASSERT_EQ(::gethostname(hostName, sizeof hostName - 1), 0);
    EXPECT_EQ(getLocalHostName(), hostName);
}

// The address one step above (+1) or below (-1) in its family's space, wrapping around.
Bytes step(Bytes bytes, int direction) {
    for (auto byte = bytes.rbegin();
         byte != bytes.rend() && (*byte += direction) == (direction > 0 ? 0x00 : 0xff); ++byte) {
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
    std::vector<Bytes> probes = corpusBytes();
    for (const auto& block : blocks) {
        for (const auto& edge : {block.fields[1], block.fields[2]}) {
            const Bytes bytes = InetAddress(edge).bytes();
            probes.insert(probes.end(), {bytes, step(bytes, 1), step(bytes, -1)});
        }
    }
    std::map<std::string, std::size_t> hits;
    for (const Bytes& bytes : probes) {
        for (const auto& [name, predicate] : predicates) {
            const bool inBlocks = std::any_of(blocks.begin(), blocks.end(), [&](const auto& b) {
                const Bytes first = InetAddress(b.fields[1]).bytes();
                return b.fields[0] == name && first.size() == bytes.size() && first <= bytes &&
                       bytes <= InetAddress(b.fields[2]).bytes();
            });
            EXPECT_EQ((InetAddress(bytes).*predicate)(), inBlocks)
                << name << " " << InetAddress(bytes).toString();
            hits[name] += inBlocks ? 1 : 0;
        }
    }
    for (const auto& [name, count] : hits) {
        EXPECT_GT(count, 2u) << name << " never held: the comparison meant nothing";
    }
}

// A set of values holds as many, in the same order, as the set of their keys, and finds each.
template <class Value, class Key>
void checkKeys(const std::vector<std::pair<Value, Key>>& values) {
    const std::map<Value, Key> ordered(values.begin(), values.end());
    std::set<Key> keys;
    std::unordered_set<Value> hashed;
    for (const auto& [value, key] : values) {
        keys.insert(key), hashed.insert(value);
    }
    ASSERT_TRUE(ordered.size() == keys.size() && hashed.size() == keys.size());
    EXPECT_TRUE(std::equal(keys.begin(), keys.end(), ordered.begin(),
                           [](const Key& key, const auto& entry) { return key == entry.second; }));
    for (const auto& [value, key] : values) {
        EXPECT_TRUE(*hashed.find(value) == value && std::hash<Value>()(value) == value.hashValue());
    }
}

// Equality, order and hash are those of (version, bytes, scope id), and for an interface address
// of those and the prefix; a host name does not count. Over the corpus and scoped addresses.
TEST(InetAddressTest, SetsOfValuesAgreeWithSetsOfTheirKeys) {
    using Key = std::tuple<int, Bytes, unsigned long, int>;
    std::vector<std::pair<InetAddress, Key>> addresses;
    std::vector<std::pair<InterfaceAddress, Key>> networks;
    auto lines = fntest::readLines("addrs.txt");
    lines.insert(lines.end(),
                 {"fe80::1%1", "fe80::1%lo", "fe80::1%2", "fe80::1%9", "::ffff:0.0.0.0"});
    for (const std::string& line : lines) {
        const InetAddress a(line);
        const Key key(a.getVersion(), a.bytes(), a.scopeId(), 0);
        addresses.insert(addresses.end(), {{a, key}, {named(a.toString(), "other.invalid"), key}});
        for (const int prefix : {8, 24}) {
            networks.emplace_back(InterfaceAddress(a, prefix), key);
            std::get<3>(networks.back().second) = prefix;
        }
    }
    checkKeys(addresses);
    checkKeys(networks);
}

// ADDRESS PREFIX TEXT-OR-ERROR NETWORK BROADCAST INSIDE... OUTSIDE... (blank-separated).
TEST(InterfaceAddressTest, PrefixesTable) {
    for (const auto& row : fntest::readTable("inet_prefixes.tsv", 7)) {
        const auto& f = row.fields;
        SCOPED_TRACE("inet_prefixes.tsv:" + std::to_string(row.line));
        const InetAddress address(f[0]);
        const auto prefix = static_cast<unsigned short>(std::stoi(f[1]));
        if (f[2] == "prefix length too large") {
            EXPECT_EQ(errorOf<std::out_of_range>([&] { InterfaceAddress(address, prefix); }), f[2]);
            continue;
        }
        const InterfaceAddress network(address, prefix);
        EXPECT_TRUE(network.prefixLength() == prefix && network.getInetAddress() == address);
        EXPECT_EQ(network.toString() + " " + network.network().toString() + " " +
                      network.broadcast().toString(),
                  f[2] + " " + f[3] + " " + f[4]);
        for (const auto& [list, inside] : {std::pair{f[5], true}, std::pair{f[6], false}}) {
            for (const auto& other : fntest::words(list)) {
                EXPECT_EQ(network.contains(InetAddress(other)), inside) << other;
            }
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
    const auto two = boost::asio::ip::make_address("::2");
    const auto impl = std::make_shared<InetAddressImpl>(two);
    EXPECT_EQ(&getInetAddressImpl(makeInetAddress(impl)), impl.get());
    EXPECT_EQ(makeInterfaceAddress(std::make_shared<InterfaceAddressImpl>(two, 127)).toString(),
              "::2/127");
}

// The first `prefix` bits of `bytes` followed by `host` bits, bit by bit.
Bytes maskBitByBit(const Bytes& bytes, std::size_t prefix, bool host) {
    Bytes out(bytes.size(), 0);
    for (std::size_t i = 0; i < bytes.size() * 8; ++i) {
        if (i < prefix ? ((bytes[i / 8] >> (7 - i % 8)) & 1) != 0 : host) {
            out[i / 8] = static_cast<unsigned char>(out[i / 8] | (0x80 >> (i % 8)));
        }
    }
    return out;
}

// contains, network and broadcast against a bit-by-bit computation: every corpus address as a
// network with a random prefix, asked about its neighbours across the prefix boundary (one bit
// flipped just before, at and after it) and about another corpus address.
TEST(InterfaceAddressTest, ContainsNetworkAndBroadcastAgreeWithBitMasks) {
    const std::vector<Bytes> corpus = corpusBytes();
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
    EXPECT_TRUE(inside > corpus.size() && outside > corpus.size());
}

// Link-layer records: Linux's packet records and the BSDs' link records (built and checked
// everywhere). Only Ethernet records give an address, never read past the record.
TEST(HardwareAddressTest, RecordsGiveEthernetAddressesOnly) {
    EXPECT_EQ(HardwareAddress({0x0a, 0xB0, 0x07, 0x80}).toString(), "0a:b0:07:80");
    EXPECT_EQ(HardwareAddress().toString(), "");
    const Bytes mac{0x02, 0x00, 0x00, 0x00, 0x0a, 0x01, 0x07, 0x08},
        six(mac.begin(), mac.end() - 2);
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
    EXPECT_EQ(osx::makeHardwareAddress(device.get()).bytes(), six);
    EXPECT_TRUE(device->sdl_len == 20 && device->sdl_family == osx::kLinkFamily &&
                device->sdl_index == 0 && device->sdl_nlen == 0 && device->sdl_slen == 0);
    osx::sockaddr_dl record = *device;  // the address after a name
    record.sdl_nlen = 3;
    std::copy(six.begin(), six.end(), record.sdl_data + 3);
    EXPECT_EQ(osx::makeHardwareAddress(&record).bytes(), six);
    record.sdl_alen = 200;  // more than the record holds
    EXPECT_TRUE(osx::makeHardwareAddress(&record).bytes().empty());
    record = *device;
    record.sdl_type = 24;  // loopback
    EXPECT_TRUE(osx::makeHardwareAddress(&record).bytes().empty());
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
// Up without running is administratively up, not up.
TEST(NetworkInterfaceTest, WhatNoKernelListShows) {
    sockaddr other{AF_UNIX, {}};
    char name[] = "can0";
    ifaddrs entry{};
    entry.ifa_name = name, entry.ifa_addr = &other, entry.ifa_flags = IFF_UP;
    const auto listed = posix::listNetworkInterfaces(&entry);
    ASSERT_EQ(listed.size(), 1u);
    EXPECT_TRUE(listed[0]->identifier == "can0" && listed[0]->interfaceAddresses.empty());
    EXPECT_TRUE(NetworkInterface(listed[0]).isAdminUp() && !NetworkInterface(listed[0]).isUp());
    EXPECT_TRUE(posix::LinkProperties().mtu("no-such-if0") == 0 &&
                posix::LinkProperties().mtu(std::string(40, 'x')) == 0);

    auto impl = std::make_shared<NetworkInterfaceImpl>();
    const auto friendly = [&impl] { return NetworkInterface(impl).getFriendlyName(); };
    EXPECT_TRUE(friendly().empty() && NetworkInterface(impl).getDescription().empty());
    impl->identifier = "en0";
    EXPECT_EQ(friendly(), u"en0");
    impl->friendlyName = u"Ethernet \u00e9";
    EXPECT_EQ(friendly(), u"Ethernet \u00e9");
    impl->interfaceAddresses = {InterfaceAddress(InetAddress("10.0.0.1"), 8)};
    EXPECT_EQ(NetworkInterface(impl).getInetAddresses(), std::vector{InetAddress("10.0.0.1")});
}

}  // namespace
