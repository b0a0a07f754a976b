// Name lookup against the real system resolver, in a network namespace built by the test:
// its own hosts file, and a real DNS server (dnsmasq) on its loopback serving a small zone.
// Every answer of the library is compared with what glibc's getent reports in the same place.
#include "foundation/network/InetAddress.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "support/NetworkNamespace.h"

namespace {

using fntest::CommandResult;
using fntest::NetworkNamespace;

std::vector<std::string> split(const std::string& line, char separator) {
    std::vector<std::string> fields;
    std::string::size_type start = 0;
    for (auto end = line.find(separator); end != std::string::npos;
         start = end + 1, end = line.find(separator, start)) {
        fields.push_back(line.substr(start, end - start));
    }
    fields.push_back(line.substr(start));
    return fields;
}

std::vector<std::string> words(const std::string& line) {
    return fntest::detail::splitWords(line);
}

constexpr const char* kZoneHosts =
    "10.200.0.21 dual.zone.test\n"
    "fd10::21 dual.zone.test\n"
    "10.200.0.31 multi.zone.test\n"
    "10.200.0.32 multi.zone.test\n"
    "fd10::31 multi.zone.test\n"
    "10.200.0.33 multi.zone.test\n"
    "10.200.0.41 v4only.zone.test\n"
    "fd10::61 v6only.zone.test\n";

// Builds the namespace: loopback, a veth pair with IPv4 and IPv6 addresses (so that
// AI_ADDRCONFIG admits both families), hosts and resolv.conf, and dnsmasq on 127.0.0.1.
std::unique_ptr<NetworkNamespace> makeResolverHost() {
    auto ns = std::make_unique<NetworkNamespace>("fnet-lookup");
    ns->ip("link set lo up");
    ns->ip("link add lk0 type veth peer name lk1");
    ns->ip("link set lk0 addrgenmode none");
    ns->ip("link set lk1 addrgenmode none");
    ns->ip("addr add 10.200.0.1/24 dev lk0");
    ns->ip("addr add fd10::1/64 dev lk0 nodad");
    ns->ip("addr add fe80::1/64 dev lk0 nodad");
    ns->ip("link set lk0 up");
    ns->ip("link set lk1 up");
    ns->writeEtc("hosts",
                 "127.0.0.1 localhost\n::1 localhost\n"
                 "10.200.0.1 host-a.hermetic.test host-a " +
                     foundation::network::getLocalHostName() +
                     "\n"
                     // Several addresses in a fixed order, duplicates included.
                     "10.200.0.72 multi.hosts.test\n"
                     "fd10::72 multi.hosts.test\n"
                     "10.200.0.71 multi.hosts.test\n"
                     "10.200.0.72 multi.hosts.test\n"
                     "fd10::71 multi.hosts.test\n");
    ns->writeEtc("resolv.conf", "nameserver 127.0.0.1\noptions timeout:2 attempts:2\n");
    const std::string zone = ns->writeScratch("zone.hosts", kZoneHosts);
    ns->start({"dnsmasq", "--keep-in-foreground", "--conf-file=/dev/null", "--no-resolv",
               "--no-hosts", "--addn-hosts=" + zone, "--local=/zone.test/",
               "--local=/200.10.in-addr.arpa/", "--port=53", "--listen-address=127.0.0.1",
               "--bind-interfaces", "--user=root", "--pid-file=" + ns->scratch() + "/dnsmasq.pid",
               "--cname=alias.zone.test,mid.zone.test", "--cname=mid.zone.test,dual.zone.test",
               "--ptr-record=51.0.200.10.in-addr.arpa,alias.zone.test"});
    // Ready once it answers.
    for (int attempt = 0; attempt < 100; ++attempt) {
        if (ns->exec({"getent", "hosts", "v4only.zone.test"}).status == 0) {
            return ns;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    throw std::runtime_error("dnsmasq did not answer in the namespace " + ns->name());
}

class LookupNamespaceTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        if (!fntest::isRoot()) {
            return;
        }
        try {
            host_ = makeResolverHost();
        } catch (const std::exception& e) {
            setupError_ = e.what();
        }
    }

    static void TearDownTestSuite() { host_.reset(); }

    void SetUp() override {
        if (!fntest::isRoot()) {
            GTEST_SKIP() << "needs root to build a network namespace (ip netns add)";
        }
        ASSERT_TRUE(host_) << "namespace setup failed: " << setupError_;
    }

    // The probe's records for one call in the namespace.
    static std::vector<std::vector<std::string>> probe(const std::string& command,
                                                       const std::string& argument) {
        const CommandResult result = host_->exec({FNET_PROBE, command, argument});
        EXPECT_TRUE(result.status == 0 || result.status == 1)
            << "probe " << command << " " << argument << " ended with " << result.status;
        std::vector<std::vector<std::string>> records;
        for (const auto& line : fntest::lines(result.out)) {
            records.push_back(split(line, '\t'));
        }
        return records;
    }

    // The STREAM addresses of `getent ahosts NAME` in resolver order (empty when not found).
    static std::vector<std::string> getentAddresses(const std::string& name) {
        std::vector<std::string> addresses;
        for (const auto& line : fntest::lines(host_->exec({"getent", "ahosts", name}).out)) {
            const auto fields = words(line);
            if (fields.size() >= 2 && fields[1] == "STREAM") {
                addresses.push_back(fields[0]);
            }
        }
        return addresses;
    }

    // Field `field` of the first line `getent DATABASE KEY` prints ("" when there is none):
    // ahosts NAME field 2 is the canonical name, hosts ADDRESS field 1 the name.
    static std::string getentField(const char* database, const std::string& key,
                                   std::size_t field) {
        const auto lines = fntest::lines(host_->exec({"getent", database, key}).out);
        const auto fields = lines.empty() ? std::vector<std::string>{} : words(lines.front());
        return fields.size() > field ? fields[field] : "";
    }

    static std::string getentName(const std::string& address) {
        return getentField("hosts", address, 1);
    }

    static void expectNotFound(const std::vector<std::vector<std::string>>& records) {
        ASSERT_EQ(records.size(), 1u);
        EXPECT_EQ(records[0], (std::vector<std::string>{"error", "system_error", "asio.netdb", "1",
                                                        "Host not found (authoritative)"}));
    }

    static inline std::unique_ptr<NetworkNamespace> host_;
    static inline std::string setupError_;
};

TEST_F(LookupNamespaceTest, AllByNameReturnsWhatTheSystemReturnsInItsOrder) {
    struct Case {
        std::string name;
        std::vector<std::string> mustContain;  // proves the zone was really consulted
        bool serverRotates = false;  // dnsmasq rotates a name's records from query to query
    };
    const std::vector<Case> cases = {
        {"localhost", {"127.0.0.1", "::1"}},
        {"host-a", {"10.200.0.1"}},
        {"dual.zone.test", {"10.200.0.21", "fd10::21"}},
        {"multi.zone.test", {"10.200.0.31", "10.200.0.32", "10.200.0.33", "fd10::31"}, true},
        {"multi.hosts.test", {"10.200.0.71", "10.200.0.72", "fd10::71", "fd10::72"}},
        {"alias.zone.test", {"10.200.0.21", "fd10::21"}},
        {"v4only.zone.test", {"10.200.0.41"}},
        {"v6only.zone.test", {"fd10::61"}},
        {"192.0.2.7", {"192.0.2.7"}},
        {"fd10::7", {"fd10::7"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        std::vector<std::string> addresses;
        for (const auto& record : probe("all", c.name)) {
            ASSERT_EQ(record.size(), 2u) << record[0] << " " << record.back();
            EXPECT_EQ(record[1], c.name);  // the queried text, never a canonical name
            addresses.push_back(record[0]);
        }
        auto system = getentAddresses(c.name);
        if (c.serverRotates) {
            std::sort(addresses.begin(), addresses.end());
            std::sort(system.begin(), system.end());
        }
        EXPECT_EQ(addresses, system);
        if (c.name == "multi.hosts.test") {  // listed twice in the hosts file: kept twice
            EXPECT_EQ(std::count(addresses.begin(), addresses.end(), "10.200.0.72"), 2);
        }
        for (const auto& expected : c.mustContain) {
            EXPECT_NE(std::find(addresses.begin(), addresses.end(), expected), addresses.end())
                << expected;
        }
    }
}

// getAllByName from eight threads at once, ten rounds over these names: every thread sees the
// same answer for a name, and it is the answer of a lone call (addresses compared as a set:
// dnsmasq rotates a name's records).
TEST_F(LookupNamespaceTest, AllByNameFromManyThreadsAtOnceAgreesWithOneCall) {
    const std::vector<std::string> names = {
        "localhost",       "host-a",           "dual.zone.test",   "multi.zone.test",
        "alias.zone.test", "multi.hosts.test", "v6only.zone.test", "missing.zone.test",
        "192.0.2.7"};
    std::string argument;
    for (const auto& name : names) {
        argument += (argument.empty() ? "" : ",") + name;
    }
    const auto records = probe("parallel-all", argument);
    ASSERT_EQ(records.size(), names.size());
    for (const auto& record : records) {
        ASSERT_EQ(record.size(), 3u);
        SCOPED_TRACE(record[0]);
        EXPECT_EQ(record[1], "same");
        std::vector<std::string> alone;
        for (const auto& single : probe("all", record[0])) {
            alone.push_back(single[0] == "error" ? "error: " + single.back()
                                                 : single[0] + "=" + single[1]);
        }
        std::sort(alone.begin(), alone.end());
        std::string expected;
        for (const auto& text : alone) {
            expected += (expected.empty() ? "" : ",") + text;
        }
        EXPECT_EQ(record[2], expected);
    }
}

TEST_F(LookupNamespaceTest, ScopedLiteralsKeepTheirScopeId) {
    const auto records = probe("all", "fe80::9%lk0");
    ASSERT_EQ(records.size(), 1u);
    // Printed with the interface name for a link-local address; getent prints the number.
    EXPECT_EQ(records[0][0], "fe80::9%lk0");
    const auto system = getentAddresses("fe80::9%lk0");
    ASSERT_EQ(system.size(), 1u);
    EXPECT_EQ(system[0].rfind("fe80::9%", 0), 0u) << system[0];
    EXPECT_NE(system[0], "fe80::9%0");
}

TEST_F(LookupNamespaceTest, ByNameIsTheFirstAnswerCarryingTheQueriedText) {
    for (const std::string name : {"multi.zone.test", "alias.zone.test", "192.0.2.7"}) {
        SCOPED_TRACE(name);
        const auto records = probe("first", name);
        ASSERT_EQ(records.size(), 1u);
        ASSERT_EQ(records[0].size(), 2u);
        EXPECT_EQ(records[0][0], getentAddresses(name).at(0));
        // A stored name is returned as it is, without a reverse lookup.
        EXPECT_EQ(records[0][1], name);
    }
}

TEST_F(LookupNamespaceTest, MissingAndEmptyNamesAreHostNotFound) {
    expectNotFound(probe("all", "missing.zone.test"));
    expectNotFound(probe("first", "missing.zone.test"));
    expectNotFound(probe("all", ""));
    EXPECT_TRUE(getentAddresses("missing.zone.test").empty());
}

TEST_F(LookupNamespaceTest, ReverseLookupGivesTheSystemsNameOrTheNumericText) {
    for (const std::string address : {"10.200.0.1", "10.200.0.21", "fd10::21", "10.200.0.51"}) {
        SCOPED_TRACE(address);
        const auto records = probe("reverse", address);
        ASSERT_EQ(records.size(), 1u);
        EXPECT_EQ(records[0][0], getentName(address));
        EXPECT_FALSE(records[0][0].empty());
    }
    // No record: the numeric text, not an error.
    const auto unnamed = probe("reverse", "10.200.0.99");
    ASSERT_EQ(unnamed.size(), 1u);
    EXPECT_EQ(unnamed[0], std::vector<std::string>{"10.200.0.99"});
}

TEST_F(LookupNamespaceTest, CanonicalNameFollowsTheCnameChainFromTheReverseName) {
    // 10.200.0.51 points back to alias.zone.test, which leads through mid to dual.zone.test.
    const auto records = probe("canonical", "10.200.0.51");
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records[0][0], "dual.zone.test");
    EXPECT_EQ(records[0][0], getentField("ahosts", getentName("10.200.0.51"), 2));

    // The name an address carries is not used: a literal starts from the reverse name.
    const auto fromLiteral = probe("canonical-by-name", "10.200.0.21");
    ASSERT_EQ(fromLiteral.size(), 1u);
    EXPECT_EQ(fromLiteral[0][0], "dual.zone.test");
}

TEST_F(LookupNamespaceTest, LocalHostIsTheLocalHostNameResolved) {
    const std::string hostName = foundation::network::getLocalHostName();
    const auto records = probe("localhost", "");
    ASSERT_EQ(records.size(), 1u);
    ASSERT_EQ(records[0].size(), 2u);
    EXPECT_EQ(records[0][0], getentAddresses(hostName).at(0));
    EXPECT_EQ(records[0][0], "10.200.0.1");
    EXPECT_EQ(records[0][1], hostName);
}

// A host with IPv4 addresses only: forward queries ask for configured families (AI_ADDRCONFIG),
// the canonical-name query does not.
TEST(LookupOnAnIPv4OnlyHostTest, ForwardQueriesSkipUnconfiguredFamiliesCanonicalDoesNot) {
    if (!fntest::isRoot()) {
        GTEST_SKIP() << "needs root to build a network namespace (ip netns add)";
    }
    NetworkNamespace host("fnet-v4only");
    host.ip("link set lo up");
    host.ip("link add v40 type veth peer name v41");
    host.ip("link set v40 addrgenmode none");
    host.ip("link set v41 addrgenmode none");
    host.ip("addr add 10.210.0.1/24 dev v40");
    host.ip("link set v40 up");
    host.ip("link set v41 up");
    host.writeEtc("hosts", "10.210.0.5 dual.v4.test\nfd20::5 dual.v4.test\nfd20::6 six.v4.test\n");
    host.writeEtc("resolv.conf", "nameserver 127.0.0.1\noptions timeout:1 attempts:1\n");
    const auto probe = [&](const char* command, const char* argument) {
        return fntest::lines(host.exec({FNET_PROBE, command, argument}).out);
    };
    EXPECT_EQ(probe("all", "dual.v4.test"), std::vector<std::string>{"10.210.0.5\tdual.v4.test"});
    const auto sixOnly = probe("all", "six.v4.test");
    ASSERT_EQ(sixOnly.size(), 1u);
    EXPECT_EQ(split(sixOnly[0], '\t').at(1), "system_error") << sixOnly[0];
    EXPECT_EQ(probe("canonical", "fd20::6"), std::vector<std::string>{"six.v4.test"});
}

// A host with no network at all: the resolver fails at once instead of waiting.
TEST(LookupWithoutNetworkTest, FailsPromptlyWithASystemError) {
    if (!fntest::isRoot()) {
        GTEST_SKIP() << "needs root to build a network namespace (ip netns add)";
    }
    NetworkNamespace bare("fnet-nonet");
    bare.writeEtc("hosts", "");
    bare.writeEtc("resolv.conf", "nameserver 192.0.2.53\noptions timeout:1 attempts:1\n");
    for (const std::string name : {"dual.zone.test", "localhost.example"}) {
        SCOPED_TRACE(name);
        const CommandResult result = bare.exec({FNET_PROBE, "all", name});
        EXPECT_EQ(result.status, 1) << "124 means the probe was still waiting after 60 s";
        const auto records = fntest::lines(result.out);
        ASSERT_EQ(records.size(), 1u);
        EXPECT_EQ(split(records[0], '\t').at(1), "system_error") << records[0];
    }
}

}  // namespace
