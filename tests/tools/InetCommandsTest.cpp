// End-to-end runs of the built fnet: the address and lookup subcommands.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/NetworkNamespace.h"

namespace {

fntest::CommandResult fnet(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), FNET_EXE);
    return fntest::run(arguments);
}

TEST(InetCommandsTest, AddrPrintsEveryKeyAndFailsOnNonLiterals) {
    const auto ok = fnet({"addr", "--json", "127.0.0.1", "ff02::1"});
    EXPECT_EQ(ok.status, 0);
    EXPECT_EQ(ok.out,
              "{\"input\":\"127.0.0.1\",\"version\":4,\"loopback\":true,\"multicast\":false,"
              "\"unspecified\":false,\"linkLocal\":false,\"private\":false,\"v4Mapped\":false,"
              "\"unmapped\":null,\"scopeId\":0,\"bytes\":[127,0,0,1],\"text\":\"127.0.0.1\","
              "\"error\":null}\n"
              "{\"input\":\"ff02::1\",\"version\":6,\"loopback\":false,\"multicast\":true,"
              "\"unspecified\":false,\"linkLocal\":false,\"private\":false,\"v4Mapped\":false,"
              "\"unmapped\":null,\"scopeId\":0,\"bytes\":[255,2,0,0,0,0,0,0,0,0,0,0,0,0,0,1],"
              "\"text\":\"ff02::1\",\"error\":null}\n");

    // Plain output: the words of the predicates that hold, the address inside a mapped one, a
    // scope id other than 0.
    const struct {
        const char* input;
        const char* line;
    } plain[] = {
        {"192.0.2.1", "192.0.2.1\tIPv4\tbytes 192 0 2 1"},
        {"0.0.0.0", "0.0.0.0\tIPv4\tunspecified\tbytes 0 0 0 0"},
        {"169.254.1.2", "169.254.1.2\tIPv4\tlink-local\tbytes 169 254 1 2"},
        {"172.31.0.1", "172.31.0.1\tIPv4\tprivate\tbytes 172 31 0 1"},
        {"fe80::1%9",
         "fe80::1%9\tIPv6\tlink-local\tscope 9\tbytes 254 128 0 0 0 0 0 0 0 0 0 0 0 0 0 1"},
        {"::ffff:127.0.0.1",
         "::ffff:127.0.0.1\tIPv6\tv4-mapped\tunmapped 127.0.0.1\tbytes 0 0 0 0 0 0 0 0 0 0 255 255 "
         "127 0 0 1"},
    };
    for (const auto& c : plain) {
        EXPECT_EQ(fnet({"addr", c.input}).out, std::string(c.line) + "\n");
    }

    const auto mixed = fnet({"addr", "--json", "--", "localhost", "10.0.0.1"});
    EXPECT_EQ(mixed.status, 1);  // the name is refused, the literal still printed
    const auto lines = fntest::lines(mixed.out);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].rfind("{\"input\":\"localhost\",\"version\":null,\"loopback\":null,"
                             "\"multicast\":null,\"unspecified\":null,\"linkLocal\":null,"
                             "\"private\":null,\"v4Mapped\":null,\"unmapped\":null,"
                             "\"scopeId\":null,\"bytes\":null,\"text\":null,\"error\":\"",
                             0),
              0u)
        << lines[0];
    EXPECT_EQ(lines[1].rfind("{\"input\":\"10.0.0.1\",\"version\":4", 0), 0u) << lines[1];
}

TEST(InetCommandsTest, UsageErrorsAndHelp) {
    EXPECT_EQ(fnet({"addr"}).status, 2);
    EXPECT_EQ(fnet({"lookup", "--bogus", "x"}).status, 2);
    EXPECT_EQ(fnet({"hostname", "extra"}).status, 2);
    EXPECT_EQ(fnet({"interfaces", "eth0"}).status, 2);
    for (const char* command :
         {"addr", "lookup", "reverse", "canonical", "hostname", "interfaces"}) {
        EXPECT_EQ(fnet({command, "--help"}).status, 0) << command;
    }
}

TEST(InetCommandsTest, HostnameAndAnEmptyName) {
    const auto hostname = fnet({"hostname", "--json"});
    EXPECT_EQ(hostname.status, 0);
    EXPECT_EQ(hostname.out.rfind("{\"name\":\"", 0), 0u) << hostname.out;

    // An empty name never reaches the network: the system refuses it at once.
    const auto empty = fnet({"lookup", "--json", ""});
    EXPECT_EQ(empty.status, 1);
    EXPECT_EQ(empty.out,
              "{\"input\":\"\",\"addresses\":null,\"error\":\"Host not found (authoritative)\"}\n");
}

// What only the tool does, in one hermetic host: its JSON keys, its plain formats, a failed
// input among good ones. The answers themselves are compared with getent and ip in tests/inet.
TEST(InetCommandsTest, CommandsInAHermeticHost) {
    if (!fntest::isRoot()) {
        GTEST_SKIP() << "needs root to build a network namespace (ip netns add)";
    }
    fntest::NetworkNamespace host("fnet-tool");
    host.ip("link set lo up");
    host.ip(
        "link add ta0 address 02:00:00:00:0b:01 type veth peer name ta1 address "
        "02:00:00:00:0b:02");
    host.ip("link set ta0 addrgenmode none");
    host.ip("link set ta0 mtu 1280");
    host.ip("link set ta1 addrgenmode none");
    host.ip("addr add 10.204.0.1/24 dev ta0");
    host.ip("addr add fd14::1/64 dev ta0 nodad");
    host.ip("link set ta0 up");
    host.ip("link set ta1 up");  // a carrier: ta0 is running; ta1 carries no address
    host.writeEtc("hosts", "10.204.0.5 pair.tool.test\n10.204.0.6 pair.tool.test\n");
    host.writeEtc("resolv.conf", "nameserver 127.0.0.1\noptions timeout:1 attempts:1\n");
    const auto inHost = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), FNET_EXE);
        return host.exec(arguments);
    };

    EXPECT_EQ(inHost({"lookup", "--json", "pair.tool.test"}).out,
              "{\"input\":\"pair.tool.test\",\"addresses\":[\"10.204.0.5\",\"10.204.0.6\"],"
              "\"error\":null}\n");
    // Two lookups at once (--jobs 2): the answers still come in the order of the names.
    const auto missing =
        inHost({"lookup", "--json", "--first", "--jobs", "2", "gone.tool.test", "pair.tool.test"});
    EXPECT_EQ(missing.status, 1);
    const auto lines = fntest::lines(missing.out);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].rfind("{\"input\":\"gone.tool.test\",\"addresses\":null,\"error\":\"", 0),
              0u)
        << lines[0];
    EXPECT_EQ(inHost({"lookup", "--first", "pair.tool.test"}).out, "pair.tool.test\t10.204.0.5\n");
    // No DNS server answers here: an address the hosts file does not name cannot be looked up.
    const auto reverse = inHost({"reverse", "--json", "10.204.0.77", "10.204.0.5"});
    EXPECT_EQ(reverse.status, 1);
    EXPECT_EQ(reverse.out,
              "{\"input\":\"10.204.0.77\",\"name\":null,\"error\":"
              "\"Host not found (non-authoritative), try again later\"}\n"
              "{\"input\":\"10.204.0.5\",\"name\":\"pair.tool.test\",\"error\":null}\n");
    EXPECT_EQ(inHost({"canonical", "--json", "10.204.0.5"}).out,
              "{\"input\":\"10.204.0.5\",\"name\":\"pair.tool.test\",\"error\":null}\n");

    const auto listed = inHost({"interfaces", "--json"});
    EXPECT_EQ(listed.status, 0);
    // lo is always 1; the pair is numbered as the kernel chose.
    const std::string index = host.exec({"cat", "/sys/class/net/ta0/ifindex"}).out;
    ASSERT_FALSE(index.empty());
    EXPECT_EQ(listed.out,
              "{\"name\":\"lo\",\"index\":1,\"mtu\":65536,\"up\":true,\"loopback\":true,"
              "\"multicast\":false,\"mac\":\"\",\"addresses\":[\"127.0.0.1/8\",\"::1/128\"],"
              "\"error\":null}\n"
              "{\"name\":\"ta0\",\"index\":" +
                  index.substr(0, index.size() - 1) +
                  ",\"mtu\":1280,\"up\":true,\"loopback\":false,\"multicast\":true,"
                  "\"mac\":\"02:00:00:00:0b:01\",\"addresses\":[\"10.204.0.1/24\","
                  "\"fd14::1/64\"],\"error\":null}\n");
    EXPECT_NE(inHost({"interfaces"})
                  .out.find("02:00:00:00:0b:01 index " + index.substr(0, index.size() - 1) +
                            " mtu 1280 10.204.0.1/24 fd14::1/64\n"),
              std::string::npos);
}

}  // namespace
