// IP address values, and name lookup through the system resolver (loopback only here).
#include <foundation/network/InetAddress.h>

#include <array>
#include <iostream>
#include <set>
#include <stdexcept>
#include <system_error>
#include <unordered_set>

using namespace foundation::network;

int main() {
    const InetAddress v4("192.0.2.1");
    const InetAddress v6(
        std::array<unsigned char, 16>{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1});
    std::cout << v4.toString() << " IPv" << v4.getVersion() << "\n"              // 192.0.2.1 IPv4
              << v6.getHostAddress() << " loopback " << v6.isLoopback() << "\n"  // ::1 loopback 1
              << InetAddress("ff02::1").isMulticast() << " "                     // 1
              << InetAddress(std::vector<unsigned char>{10, 0, 0, 1}).bytes().size() << "\n";  // 4
    try {
        InetAddress("example.org");  // a literal only: never a lookup
    } catch (const std::invalid_argument& e) {
        std::cout << e.what() << "\n";  // the parser's message: Invalid argument [system:22]
    }

    // Values: equality, order and hash over version, bytes and scope id, never the host name.
    const std::set<InetAddress> sorted{InetAddress("::1"), InetAddress("10.0.0.2"),
                                       InetAddress("10.0.0.2")};
    const std::unordered_set<InetAddress> seen(sorted.begin(), sorted.end());
    std::cout << sorted.begin()->toString() << " " << sorted.size() << " "        // 10.0.0.2 2
              << seen.count(InetAddress("0:0::1")) << " " << (v6 != v4) << "\n";  // 1 1
    std::cout << InetAddress("fe80::1%7").scopeId() << " "                        // 7
              << InetAddress("169.254.0.9").isLinkLocal() << InetAddress("fd00::1").isPrivate()
              << InetAddress("::").isUnspecified() << "\n";  // 111
    // An IPv4-mapped address is judged as IPv6: ask about the IPv4 address inside it.
    const InetAddress mapped("::ffff:192.168.1.7");
    if (mapped.isV4Mapped()) {
        std::cout << mapped.isPrivate() << " " << mapped.unmapped().toString() << " "
                  << mapped.unmapped().isPrivate() << "\n";  // 0 192.168.1.7 1
    }

    // Lookups block on the calling thread and throw std::system_error with the resolver's code.
    for (const InetAddress& address : InetAddress::getAllByName("localhost")) {
        std::cout << address.getHostName() << " " << address.toString()
                  << "\n";  // localhost 127.0.0.1 ...
    }
    std::cout << InetAddress::getByName("localhost").toString() << "\n";
    std::cout << getLocalHostName() << "\n";  // this host's name, no lookup
    try {
        std::cout << InetAddress("127.0.0.1").getHostName() << " "  // reverse lookup: localhost
                  << InetAddress("127.0.0.1").getCanonicalHostName() << "\n";
        InetAddress::getByName("");
    } catch (const std::system_error& e) {
        std::cout << e.what() << "\n";  // Host not found (authoritative)
    }
}
