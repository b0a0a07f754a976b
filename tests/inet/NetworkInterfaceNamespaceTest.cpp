// NetworkInterface::list() against the real kernel, in a network namespace built by the test,
// compared field by field with what `ip -j addr show` (the `ip -j link` report with the
// addresses added) says about the same namespace.
#include "foundation/network/NetworkInterface.h"

#include <gtest/gtest.h>

#include <boost/json/src.hpp>

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "support/NetworkNamespace.h"

namespace {

namespace json = boost::json;
using fntest::NetworkNamespace;

// One interface as the probe prints it (and as expected from ip's report).
struct Row {
    std::string name, up, loopback, multicast, mac, index, mtu, addresses, listed;
    bool operator==(const Row&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Row& row) {
    return out << row.name << " up=" << row.up << " loopback=" << row.loopback
               << " multicast=" << row.multicast << " mac=" << row.mac << " index=" << row.index
               << " mtu=" << row.mtu << " [" << row.addresses << "] listed=" << row.listed;
}

Row parseRow(const std::string& line) {
    std::vector<std::string> fields(1);
    for (const char c : line) {
        if (c == '\t') {
            fields.emplace_back();
        } else {
            fields.back() += c;
        }
    }
    fields.resize(9);
    return {fields[0], fields[1], fields[2], fields[3], fields[4],
            fields[5], fields[6], fields[7], fields[8]};
}

// The row without the numbers the kernel picks (index; MTU where the test set none).
Row withoutNumbers(Row row) {
    row.index.clear();
    row.mtu.clear();
    return row;
}

bool hasFlag(const json::object& link, const char* flag) {
    for (const auto& value : link.at("flags").as_array()) {
        if (value.as_string() == flag) {
            return true;
        }
    }
    return false;
}

// What the library must report for one entry of `ip -j addr show`.
Row expectedRow(const json::object& link) {
    Row row;
    row.name = json::value_to<std::string>(link.at("ifname"));
    const std::string operstate = json::value_to<std::string>(link.at("operstate"));
    // The kernel sets IFF_RUNNING for a running device whose operational state is up or
    // unknown; ip does not print RUNNING itself.
    const bool up = hasFlag(link, "UP") && (operstate == "UP" || operstate == "UNKNOWN");
    const bool loopback = hasFlag(link, "LOOPBACK");
    row.up = up ? "1" : "0";
    row.loopback = loopback ? "1" : "0";
    row.multicast = hasFlag(link, "MULTICAST") ? "1" : "0";
    if (!loopback && link.at("link_type").as_string() == "ether") {
        row.mac = json::value_to<std::string>(link.at("address"));
    }
    row.index = std::to_string(link.at("ifindex").as_int64());
    row.mtu = std::to_string(link.at("mtu").as_int64());
    bool hasAddress = false;
    for (const auto& value : link.at("addr_info").as_array()) {
        const auto& info = value.as_object();
        const auto family = info.at("family").as_string();
        if (family != "inet" && family != "inet6") {
            continue;
        }
        row.addresses += (hasAddress ? "," : "") + json::value_to<std::string>(info.at("local")) +
                         "/" + std::to_string(info.at("prefixlen").as_int64());
        hasAddress = true;
    }
    row.listed = up && hasAddress ? "1" : "0";
    return row;
}

std::unique_ptr<NetworkNamespace> makeInterfaceHost() {
    auto ns = std::make_unique<NetworkNamespace>("fnet-ifs");
    ns->ip("link set lo up");
    // A veth pair: one end with an IPv4 /24 and two IPv6 addresses, the other with only a
    // link-local one. addrgenmode none keeps the kernel from adding addresses behind our back.
    ns->ip(
        "link add if0 address 02:00:00:00:0a:01 type veth peer name if1 address "
        "02:00:00:00:0a:02");
    for (const char* name : {"if0", "if1"}) {
        ns->ip(std::string("link set ") + name + " addrgenmode none");
    }
    ns->ip("addr add 10.202.0.1/24 dev if0");
    ns->ip("addr add fd12::1/64 dev if0 nodad");
    ns->ip("addr add fd12:0:0:1::2/56 dev if0 nodad");
    ns->ip("addr add fe80::2/64 dev if1 nodad");
    // MTUs of our own, so that a default cannot pass for a value read.
    ns->ip("link set if0 mtu 1400");
    ns->ip("link set if1 mtu 9000");
    ns->ip("link set if0 up");
    ns->ip("link set if1 up");
    // A bridge that is down.
    ns->ip("link add br0 address 02:00:00:00:0a:03 type bridge");
    ns->ip("link set br0 addrgenmode none");
    // An interface that is up and running with no address (a veth pair: the dummy driver is
    // not loaded on every kernel).
    ns->ip(
        "link add na0 address 02:00:00:00:0a:04 type veth peer name na1 address "
        "02:00:00:00:0a:07");
    ns->ip("link set na0 addrgenmode none");
    ns->ip("link set na1 addrgenmode none");
    ns->ip("link set na0 up");
    ns->ip("link set na1 up");
    // Up but not running: its peer is down, so it has no carrier.
    ns->ip(
        "link add nc0 address 02:00:00:00:0a:05 type veth peer name nc1 address "
        "02:00:00:00:0a:06");
    ns->ip("link set nc0 addrgenmode none");
    ns->ip("link set nc1 addrgenmode none");
    ns->ip("addr add 10.203.0.1/24 dev nc0");
    ns->ip("link set nc0 up");
    return ns;
}

class NetworkInterfaceNamespaceTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!fntest::isRoot()) {
            GTEST_SKIP() << "needs root to build a network namespace (ip netns add)";
        }
        host_ = makeInterfaceHost();
    }

    void TearDown() override { host_.reset(); }

    std::vector<Row> probe(const std::string& command) const {
        const auto result = host_->exec({FNET_PROBE, command});
        EXPECT_EQ(result.status, 0) << result.out;
        std::vector<Row> rows;
        for (const auto& line : fntest::lines(result.out)) {
            rows.push_back(parseRow(line));
        }
        return rows;
    }

    std::vector<Row> fromIp() const {
        const auto result = host_->exec({"ip", "-j", "addr", "show"});
        EXPECT_EQ(result.status, 0);
        std::vector<Row> rows;
        const json::value report = json::parse(result.out);
        for (const auto& link : report.as_array()) {
            rows.push_back(expectedRow(link.as_object()));
        }
        return rows;
    }

    std::unique_ptr<NetworkNamespace> host_;
};

TEST_F(NetworkInterfaceNamespaceTest, EveryInterfaceMatchesWhatIpReports) {
    const auto rows = probe("all-interfaces");
    EXPECT_EQ(rows, fromIp());

    // And the namespace is what the test built, so the comparison above meant something.
    std::map<std::string, Row> byName;
    for (const auto& row : rows) {
        byName[row.name] = row;
    }
    ASSERT_EQ(byName.size(), 8u);
    EXPECT_EQ(byName["lo"],
              (Row{"lo", "1", "1", "0", "", "1", "65536", "127.0.0.1/8,::1/128", "1"}));
    EXPECT_EQ(byName["if0"].mtu, "1400");
    EXPECT_EQ(byName["if1"].mtu, "9000");
    std::set<std::string> indexes;
    for (const auto& row : rows) {
        indexes.insert(row.index);
    }
    EXPECT_EQ(indexes.size(), rows.size()) << "an index is the interface's own";
    EXPECT_EQ(byName["if0"].mac, "02:00:00:00:0a:01");
    EXPECT_EQ(byName["if0"].addresses.find("10.202.0.1/24,"), 0u) << byName["if0"].addresses;
    EXPECT_NE(byName["if0"].addresses.find("fd12::1/64"), std::string::npos);
    EXPECT_NE(byName["if0"].addresses.find("fd12:0:0:1::2/56"), std::string::npos);
    EXPECT_EQ(withoutNumbers(byName["if1"]),
              (Row{"if1", "1", "0", "1", "02:00:00:00:0a:02", "", "", "fe80::2/64", "1"}));
    EXPECT_EQ(withoutNumbers(byName["br0"]),
              (Row{"br0", "0", "0", "1", "02:00:00:00:0a:03", "", "", "", "0"}));
    EXPECT_EQ(withoutNumbers(byName["na0"]),
              (Row{"na0", "1", "0", "1", "02:00:00:00:0a:04", "", "", "", "0"}));
    EXPECT_EQ(withoutNumbers(byName["nc0"]),
              (Row{"nc0", "0", "0", "1", "02:00:00:00:0a:05", "", "", "10.203.0.1/24", "0"}));
    EXPECT_EQ(byName["nc1"].up, "0");
}

TEST_F(NetworkInterfaceNamespaceTest, ListKeepsOnlyRunningInterfacesWithAnAddress) {
    std::vector<Row> expected;
    for (auto row : probe("all-interfaces")) {
        if (row.listed == "1") {
            row.listed.clear();
            expected.push_back(row);
        }
    }
    const auto listed = probe("interfaces");
    EXPECT_EQ(listed, expected);
    std::vector<std::string> names;
    for (const auto& row : listed) {
        names.push_back(row.name);
    }
    std::sort(names.begin(), names.end());  // the order itself is checked against ip above
    EXPECT_EQ(names, (std::vector<std::string>{"if0", "if1", "lo"}));
}

}  // namespace
