// End-to-end runs of the built fnet: the address and lookup subcommands.
#include <gtest/gtest.h>

#include <algorithm>
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
              "\"bytes\":[127,0,0,1],\"text\":\"127.0.0.1\"}\n"
              "{\"input\":\"ff02::1\",\"version\":6,\"loopback\":false,\"multicast\":true,"
              "\"bytes\":[255,2,0,0,0,0,0,0,0,0,0,0,0,0,0,1],\"text\":\"ff02::1\"}\n");

    const auto mixed = fnet({"addr", "--json", "--", "localhost", "10.0.0.1"});
    EXPECT_EQ(mixed.status, 1);  // the name is refused, the literal still printed
    const auto lines = fntest::lines(mixed.out);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].rfind("{\"input\":\"localhost\",\"error\":\"", 0), 0u) << lines[0];
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
    EXPECT_EQ(empty.out, "{\"name\":\"\",\"error\":\"Host not found (authoritative)\"}\n");
}

TEST(InetCommandsTest, LookupReverseAndCanonicalInAHermeticHost) {
    if (!fntest::isRoot()) {
        GTEST_SKIP() << "needs root to build a network namespace (ip netns add)";
    }
    fntest::NetworkNamespace host("fnet-tool");
    host.ip("link set lo up");
    host.ip("link add tl0 type veth peer name tl1");
    host.ip("addr add 10.201.0.1/24 dev tl0");
    host.ip("addr add fd11::1/64 dev tl0 nodad");
    host.ip("link set tl0 up");
    host.ip("link set tl1 up");
    host.writeEtc("hosts", "10.201.0.5 pair.tool.test\nfd11::5 pair.tool.test\n");
    host.writeEtc("resolv.conf", "nameserver 127.0.0.1\noptions timeout:1 attempts:1\n");
    const auto inHost = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), FNET_EXE);
        return host.exec(arguments);
    };

    const auto all = inHost({"lookup", "--json", "pair.tool.test"});
    EXPECT_EQ(all.status, 0);
    const auto system = host.exec({"getent", "ahosts", "pair.tool.test"}).out;
    const std::string first = system.substr(0, system.find(' '));
    const std::string second = first == "fd11::5" ? "10.201.0.5" : "fd11::5";
    EXPECT_EQ(all.out, "{\"name\":\"pair.tool.test\",\"addresses\":[\"" + first + "\",\"" + second +
                           "\"]}\n");
    EXPECT_EQ(inHost({"lookup", "--first", "pair.tool.test"}).out,
              "pair.tool.test\t" + first + "\n");

    // No DNS server answers here: an address the hosts file does not name cannot be looked up.
    const auto reverse = inHost({"reverse", "--json", "10.201.0.77", "10.201.0.5"});
    EXPECT_EQ(reverse.status, 1);
    EXPECT_EQ(reverse.out,
              "{\"address\":\"10.201.0.77\",\"error\":"
              "\"Host not found (non-authoritative), try again later\"}\n"
              "{\"address\":\"10.201.0.5\",\"name\":\"pair.tool.test\"}\n");
    EXPECT_EQ(inHost({"canonical", "--json", "fd11::5"}).out,
              "{\"address\":\"fd11::5\",\"name\":\"pair.tool.test\"}\n");

    // A missing name fails with the resolver's message; the others are still answered.
    const auto missing =
        inHost({"lookup", "--json", "--first", "gone.tool.test", "pair.tool.test"});
    EXPECT_EQ(missing.status, 1);
    const auto lines = fntest::lines(missing.out);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].rfind("{\"name\":\"gone.tool.test\",\"error\":\"", 0), 0u) << lines[0];
}

TEST(InetCommandsTest, InterfacesInAHermeticHost) {
    if (!fntest::isRoot()) {
        GTEST_SKIP() << "needs root to build a network namespace (ip netns add)";
    }
    fntest::NetworkNamespace host("fnet-tool-ifs");
    host.ip("link set lo up");
    host.ip(
        "link add ta0 address 02:00:00:00:0b:01 type veth peer name ta1 address "
        "02:00:00:00:0b:02");
    host.ip("link set ta0 addrgenmode none");
    host.ip("link set ta1 addrgenmode none");
    host.ip("addr add 10.204.0.1/24 dev ta0");
    host.ip("addr add fd14::1/64 dev ta0 nodad");
    host.ip("link set ta0 up");  // its peer stays down: no carrier, so not running

    const std::string lo =
        "{\"name\":\"lo\",\"up\":true,\"loopback\":true,\"multicast\":false,\"mac\":\"\","
        "\"addresses\":[\"127.0.0.1/8\",\"::1/128\"],\"listed\":true}\n";
    const auto listed = host.exec({FNET_EXE, "interfaces", "--json"});
    EXPECT_EQ(listed.status, 0);
    EXPECT_EQ(listed.out, lo);

    const auto all = host.exec({FNET_EXE, "interfaces", "--all", "--json"});
    EXPECT_EQ(all.status, 0);
    const auto lines = fntest::lines(all.out);
    ASSERT_EQ(lines.size(), 3u) << all.out;
    EXPECT_EQ(lines[0] + "\n", lo);
    EXPECT_NE(std::find(lines.begin(), lines.end(),
                        "{\"name\":\"ta0\",\"up\":false,\"loopback\":false,\"multicast\":true,"
                        "\"mac\":\"02:00:00:00:0b:01\",\"addresses\":[\"10.204.0.1/24\","
                        "\"fd14::1/64\"],\"listed\":false}"),
              lines.end())
        << all.out;

    const auto text = host.exec({FNET_EXE, "interfaces", "--all"});
    EXPECT_EQ(text.status, 0);
    EXPECT_NE(text.out.find("02:00:00:00:0b:01 10.204.0.1/24 fd14::1/64  (not listed)"),
              std::string::npos)
        << text.out;
}

}  // namespace
