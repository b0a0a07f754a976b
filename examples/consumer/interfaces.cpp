// The host's network interfaces, their addresses and link-layer addresses.
#include <foundation/network/AddressFactories.h>
#include <foundation/network/NetworkInterface.h>
#include <foundation/network/Utf8.h>

#include <arpa/inet.h>

#include <iostream>
#include <unordered_set>

using namespace foundation::network;

int main() {
    // Up, running and with an IP address; in the system's order. Reads, never blocks on the net.
    for (const NetworkInterface& nic : NetworkInterface::list()) {
        std::cout << nic.getIndex() << ": " << nic.getIdentifier() << " ("           // 1: lo (lo)
                  << utf16ToUtf8(nic.getFriendlyName()) << ") mtu " << nic.getMtu()  // mtu 65536
                  << (nic.isUp() ? " up" : "") << (nic.isLoopback() ? " loopback" : "")
                  << (nic.supportsMulticast() ? " multicast" : "") << " mac "
                  << nic.getHardwareAddress().toString();  // 02:42:ac:11:00:02, "" for lo
        for (const InterfaceAddress& address : nic.getInterfaceAddresses()) {
            std::cout << " " << address.toString();  // 127.0.0.1/8 ::1/128
        }
        std::cout << " (" << nic.getInetAddresses().size() << " addresses)" << nic.getDescription()
                  << "\n";  // the description is empty on Linux
    }

    // Interface addresses from the system's own records, or from parts.
    sockaddr_in address{};
    address.sin_family = AF_INET;
    inet_pton(AF_INET, "192.168.1.20", &address.sin_addr);
    const InterfaceAddress fromRecord = makeInterfaceAddress(&address, 24);
    const InterfaceAddress fromParts(InetAddress("fe80::1"), 64);
    std::cout << fromRecord.toString() << " " << fromParts.getInetAddress().toString() << " /"
              << fromParts.prefixLength() << "\n";  // 192.168.1.20/24 fe80::1 /64
    std::cout << HardwareAddress({0x00, 0x1a, 0x2b, 0x3c, 0x4d, 0x5e}).toString() << "\n";

    // Which addresses a network holds, its first and last address; values for sets and maps.
    const InterfaceAddress subnet(InetAddress("192.168.1.20"), 24);
    std::cout << subnet.contains(InetAddress("192.168.1.200")) << " "         // 1
              << subnet.contains(InetAddress("::ffff:192.168.1.200")) << " "  // 0: IPv6
              << subnet.network().toString() << " "                           // 192.168.1.0
              << subnet.broadcast().toString() << " "                         // 192.168.1.255
              << (subnet == InterfaceAddress(InetAddress("192.168.1.20"), 24)) << " "  // 1
              << std::unordered_set<InterfaceAddress>{subnet, subnet}.size() << "\n";  // 1
}
