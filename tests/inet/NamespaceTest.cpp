// Lookups and interfaces against the real system, each in a host the test builds: a network
// namespace with its own interfaces, hosts file and a real DNS server (dnsmasq). The outer test
// builds the host and runs this program's In* tests inside it, where the library's answers are
// compared with what glibc's getent and iproute2's ip say in the same place, and fnet runs the
// rows of a tool table.
#include <gtest/gtest.h>

#include <algorithm>
#include <boost/json/src.hpp>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "foundation/network/InetAddress.h"
#include "foundation/network/NetworkInterface.h"
#include "support/RunFnet.h"

namespace {

using foundation::network::InetAddress;
using Texts = std::vector<std::string>;

// Builds the host of tests/data/inet_hosts.tsv and runs the tests that match `filter` in it.
void checkInside(const std::string& host, const std::string& filter) {
    if (!fntest::isRoot()) {
        GTEST_SKIP() << "needs root to build a network namespace (ip netns add)";
    }
    const auto result = fntest::NetworkNamespace(host).runInside(filter);
    EXPECT_EQ(result.status, 0) << result.out << result.err;  // 124: still waiting after 60 s
    EXPECT_NE(result.out.find("[  PASSED  ]"), std::string::npos) << result.out;
    for (const char* wrong : {"[  SKIPPED ]", "[  PASSED  ] 0 tests"}) {
        EXPECT_EQ(result.out.find(wrong), std::string::npos) << result.out;
    }
}

TEST(LookupNamespaceTest, AHostWithADnsServer) {
    checkInside("lookup", "InLookupHost.*");
}

// A host with IPv4 addresses only and no DNS server: forward queries ask for configured families
// (AI_ADDRCONFIG), the canonical-name query does not; fnet's lookups there.
TEST(LookupNamespaceTest, AnIPv4OnlyHost) {
    checkInside("ipv4only", "InIPv4OnlyHost.*");
}

// A host with no network at all: the resolver fails at once instead of waiting.
TEST(LookupNamespaceTest, AHostWithoutNetwork) {
    checkInside("bare", "InBareHost.*");
}

TEST(NetworkInterfaceNamespaceTest, AHostOfSeveralInterfaces) {
    checkInside("interfaces", "InInterfaceHost.*");
}

// getent's answer inside the namespace: the STREAM addresses of `getent ahosts NAME` in
// resolver order, or field `field` of the first line of `getent DATABASE KEY`.
Texts getentAddresses(const std::string& name) {
    Texts addresses;
    for (const auto& line : fntest::lines(fntest::run({"getent", "ahosts", name}).out)) {
        const auto fields = fntest::words(line);
        if (fields.size() >= 2 && fields[1] == "STREAM") {
            addresses.push_back(fields[0]);
        }
    }
    return addresses;
}

std::string getent(const char* database, const std::string& key, std::size_t field) {
    const auto fields = fntest::words(fntest::run({"getent", database, key}).out);
    return fields.size() > field ? fields[field] : "";
}

// The addresses of a lookup with the name each carries, sorted (dnsmasq rotates its answers),
// or the error.
std::string lookupText(const std::string& name) {
    try {
        Texts texts;
        for (const auto& address : InetAddress::getAllByName(name)) {
            texts.push_back(address.toString() + "=" + address.getHostName());
        }
        std::sort(texts.begin(), texts.end());
        std::string text;
        for (const auto& one : texts) {
            text += one + ",";
        }
        return text;
    } catch (const std::system_error& e) {
        return std::string(e.code().category().name()) + " " + std::to_string(e.code().value()) +
               " " + e.what();
    }
}

// NAME, the addresses the hosts file and the zone give it (duplicates kept), and "rotates" when
// the server rotates its records from query to query.
TEST(InLookupHost, AllByNameIsWhatTheSystemReturnsInItsOrder) {
    FNTEST_INSIDE();
    for (const auto& row : fntest::readTable("inet_lookups.tsv", 2)) {
        const std::string& name = row.fields[0];
        SCOPED_TRACE(name);
        Texts addresses;
        for (const auto& address : InetAddress::getAllByName(name)) {
            EXPECT_EQ(address.getHostName(), name);  // the queried text, never a canonical name
            addresses.push_back(address.toString());
        }
        auto system = getentAddresses(name);
        auto expected = fntest::words(row.fields[1]);
        if (row.fields.size() > 2) {
            std::sort(addresses.begin(), addresses.end());
            std::sort(system.begin(), system.end());
        }
        EXPECT_EQ(addresses, system);
        std::sort(expected.begin(), expected.end());
        std::sort(system.begin(), system.end());
        EXPECT_EQ(system, expected);
        if (row.fields.size() == 2) {
            EXPECT_EQ(InetAddress::getByName(name).toString(), addresses.at(0));
            EXPECT_EQ(InetAddress::getByName(name).getHostName(), name);
        }
    }
    // A link-local literal keeps its scope, printed as the interface's name.
    EXPECT_EQ(InetAddress::getAllByName("fe80::9%lk0").at(0).toString(), "fe80::9%lk0");
    EXPECT_EQ(getentAddresses("fe80::9%lk0").at(0).rfind("fe80::9%", 0), 0u);
}

// getAllByName from eight threads at once, ten rounds over the names: every thread sees the
// answer of a lone call.
TEST(InLookupHost, AllByNameFromManyThreadsAtOnceAgreesWithOneCall) {
    FNTEST_INSIDE();
    std::map<std::string, std::string> alone;
    for (const auto& row : fntest::readTable("inet_lookups.tsv", 2)) {
        alone[row.fields[0]] = lookupText(row.fields[0]);
    }
    alone["missing.zone.test"] = lookupText("missing.zone.test");
    std::mutex mutex;
    std::map<std::string, std::set<std::string>> seen;
    std::vector<std::thread> threads;
    for (int t = 0; t < 8; ++t) {
        threads.emplace_back([&] {
            for (int round = 0; round < 10; ++round) {
                for (const auto& [name, text] : alone) {
                    const std::string answer = lookupText(name);
                    const std::lock_guard<std::mutex> lock(mutex);
                    seen[name].insert(answer);
                }
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    for (const auto& [name, text] : alone) {
        EXPECT_EQ(seen[name], std::set<std::string>{text}) << name;
    }
}

TEST(InLookupHost, FailuresReverseAndCanonicalNames) {
    FNTEST_INSIDE();
    for (const std::string name : {"missing.zone.test", ""}) {
        EXPECT_EQ(lookupText(name), "asio.netdb 1 Host not found (authoritative)");
        EXPECT_THROW(InetAddress::getByName(name), std::system_error);
    }
    EXPECT_TRUE(getentAddresses("missing.zone.test").empty());
    for (const std::string address : {"10.200.0.1", "10.200.0.21", "fd10::21", "10.200.0.51"}) {
        EXPECT_EQ(InetAddress(address).getHostName(), getent("hosts", address, 1));
    }
    EXPECT_EQ(InetAddress("10.200.0.99").getHostName(), "10.200.0.99");  // no name: the number
    // 10.200.0.51 points back to alias.zone.test, which leads through mid to dual.zone.test;
    // the name an address carries is not used: a literal starts from its reverse name too.
    EXPECT_EQ(InetAddress("10.200.0.51").getCanonicalHostName(), "dual.zone.test");
    EXPECT_EQ(getent("ahosts", getent("hosts", "10.200.0.51", 1), 2), "dual.zone.test");
    EXPECT_EQ(InetAddress::getByName("10.200.0.21").getCanonicalHostName(), "dual.zone.test");
    const InetAddress local = InetAddress::getLocalHost();
    EXPECT_EQ(local.toString(), "10.200.0.1");
    EXPECT_EQ(local.getHostName(), foundation::network::getLocalHostName());
}

TEST(InIPv4OnlyHost, ForwardQueriesSkipUnconfiguredFamiliesCanonicalDoesNot) {
    FNTEST_INSIDE();
    EXPECT_EQ(lookupText("dual.v4.test"), "10.210.0.5=dual.v4.test,");
    EXPECT_THROW(InetAddress::getAllByName("six.v4.test"), std::system_error);
    EXPECT_EQ(InetAddress("fd20::6").getCanonicalHostName(), "six.v4.test");
    fntest::checkToolTable("tool_ipv4_host.tsv");
}

TEST(InBareHost, LookupsFailWithASystemError) {
    FNTEST_INSIDE();
    for (const std::string name : {"dual.zone.test", "localhost.example"}) {
        EXPECT_THROW(InetAddress::getAllByName(name), std::system_error) << name;
    }
}

// --- Interfaces: every one the system lists (listAll), and those list() keeps, as ip reports
// them. ---

std::string rowText(const std::vector<std::string>& fields) {
    std::string text;
    for (const auto& field : fields) {
        text += (text.empty() ? "" : "\t") + field;
    }
    return text;
}

// NAME UP ADMIN-UP LOOPBACK MULTICAST MAC MTU ADDRESS/PREFIX,... LISTED
std::string rowOf(const foundation::network::NetworkInterface& interface, bool listed) {
    std::string addresses;
    for (const auto& address : interface.getInterfaceAddresses()) {
        addresses += (addresses.empty() ? "" : ",") + address.toString();
    }
    return rowText({interface.getIdentifier(), std::to_string(interface.isUp()),
                    std::to_string(interface.isAdminUp()), std::to_string(interface.isLoopback()),
                    std::to_string(interface.supportsMulticast()),
                    interface.getHardwareAddress().toString(), std::to_string(interface.getMtu()),
                    addresses, std::to_string(listed)});
}

// The same from one entry of `ip -j addr show`. The kernel sets IFF_RUNNING for a device that is
// up with the operational state up or unknown; ip does not print RUNNING itself.
std::string rowOf(const boost::json::object& link) {
    std::set<std::string> flags;
    for (const auto& flag : link.at("flags").as_array()) {
        flags.insert(boost::json::value_to<std::string>(flag));
    }
    const auto state = link.at("operstate").as_string();
    const bool up = flags.count("UP") != 0 && (state == "UP" || state == "UNKNOWN");
    const bool loopback = flags.count("LOOPBACK") != 0;
    std::string addresses;
    for (const auto& info : link.at("addr_info").as_array()) {
        const auto& address = info.as_object();
        addresses += (addresses.empty() ? "" : ",") +
                     boost::json::value_to<std::string>(address.at("local")) + "/" +
                     std::to_string(address.at("prefixlen").as_int64());
    }
    const bool ether = !loopback && link.at("link_type").as_string() == "ether";
    return rowText({boost::json::value_to<std::string>(link.at("ifname")), std::to_string(up),
                    std::to_string(flags.count("UP")), std::to_string(loopback),
                    std::to_string(flags.count("MULTICAST")),
                    ether ? boost::json::value_to<std::string>(link.at("address")) : "",
                    std::to_string(link.at("mtu").as_int64()), addresses,
                    std::to_string(up && !addresses.empty())});
}

// NAME and why NetworkInterface::list() leaves the interface out, as `fnet interfaces --all
// --json` says it, from one record.
std::string leftOutOf(const boost::json::object& record) {
    std::string reasons;
    if (!record.at("leftOut").is_null()) {
        for (const auto& reason : record.at("leftOut").as_array()) {
            reasons += (reasons.empty() ? "" : ",") + boost::json::value_to<std::string>(reason);
        }
    }
    return rowText({boost::json::value_to<std::string>(record.at("name")), reasons});
}

// The same from the kernel's view, one entry of `ip -j addr show`: down without the UP flag,
// not running when up without the operational state up (or unknown), no IP address without an
// address.
std::string leftOutOfLink(const boost::json::object& link) {
    std::set<std::string> flags;
    for (const auto& flag : link.at("flags").as_array()) {
        flags.insert(boost::json::value_to<std::string>(flag));
    }
    const auto state = link.at("operstate").as_string();
    std::string reasons = flags.count("UP") == 0                ? "down"
                          : state != "UP" && state != "UNKNOWN" ? "not running"
                                                                : "";
    if (link.at("addr_info").as_array().empty()) {
        reasons += reasons.empty() ? "no IP address" : ",no IP address";
    }
    return rowText({boost::json::value_to<std::string>(link.at("ifname")), reasons});
}

TEST(InInterfaceHost, EveryInterfaceAsIpReportsIt) {
    FNTEST_INSIDE();
    using foundation::network::NetworkInterface;
    Texts rows, listed, fromIp;
    std::set<std::string> listedNames;
    std::map<std::string, std::int64_t> indexes, ipIndexes;
    for (const auto& interface : NetworkInterface::list()) {
        listed.push_back(rowOf(interface, true));
        listedNames.insert(interface.getIdentifier());
    }
    for (const auto& interface : NetworkInterface::listAll()) {
        rows.push_back(rowOf(interface, listedNames.count(interface.getIdentifier()) != 0));
        indexes[interface.getIdentifier()] = interface.getIndex();
    }
    const auto report = boost::json::parse(fntest::run({"ip", "-j", "addr", "show"}).out);
    Texts leftOut, leftOutFromIp;
    for (const auto& line : fntest::lines(fntest::runFnet("interfaces --all --json").out)) {
        leftOut.push_back(leftOutOf(boost::json::parse(line).as_object()));
    }
    for (const auto& link : report.as_array()) {
        leftOutFromIp.push_back(leftOutOfLink(link.as_object()));
        fromIp.push_back(rowOf(link.as_object()));
        ipIndexes[fromIp.back().substr(0, fromIp.back().find('\t'))] =
            link.at("ifindex").as_int64();
    }
    EXPECT_EQ(rows, fromIp);
    EXPECT_EQ(leftOut, leftOutFromIp);  // fnet interfaces --all
    EXPECT_EQ(indexes, ipIndexes);
    Texts kept;
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(kept),
                 [](const std::string& row) { return row.back() == '1'; });
    EXPECT_EQ(listed, kept);
    // And the host is what the test built, so that the comparisons meant something.
    Texts expected;
    for (const auto& row : fntest::readTable("inet_interfaces.tsv", 9)) {
        expected.push_back(rowText(row.fields));
    }
    std::sort(rows.begin(), rows.end());
    EXPECT_EQ(rows, expected);
    fntest::checkToolTable("tool_interface_host.tsv");
}

}  // namespace
