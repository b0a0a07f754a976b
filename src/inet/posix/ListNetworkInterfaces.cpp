#include "inet/posix/ListNetworkInterfaces.h"

#include <net/if.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <algorithm>
#include <cstring>

#include "foundation/network/AddressFactories.h"
#include "inet/posix/LinkProperties.h"

#if defined(AF_LINK)
#include "inet/osx/LinkRecord.h"
#endif
#if defined(AF_PACKET)
#include "inet/linux/PacketRecord.h"
#endif

namespace foundation::network::posix {

namespace {

std::shared_ptr<NetworkInterfaceImpl> newInterface(const ifaddrs& entry,
                                                   const LinkProperties& properties) {
    auto impl = std::make_shared<NetworkInterfaceImpl>();
    impl->identifier = entry.ifa_name;
    impl->index = LinkProperties::index(impl->identifier);
    impl->mtu = properties.mtu(impl->identifier);
    impl->adminUp = (entry.ifa_flags & IFF_UP) != 0;
    impl->up = impl->adminUp && (entry.ifa_flags & IFF_RUNNING) != 0;
    impl->loopback = (entry.ifa_flags & IFF_LOOPBACK) != 0;
    impl->multicast = (entry.ifa_flags & IFF_MULTICAST) != 0;
    return impl;
}

void setHardwareAddress(NetworkInterfaceImpl& impl, HardwareAddress address) {
    // The system reports a link record for loopback interfaces too; they keep no address.
    if (!impl.loopback) {
        impl.hardwareAddress = std::move(address);
    }
}

}  // namespace

std::vector<std::shared_ptr<NetworkInterfaceImpl>> listNetworkInterfaces(ifaddrs* list) {
    std::vector<std::shared_ptr<NetworkInterfaceImpl>> interfaces;
    const LinkProperties properties;
    for (const ifaddrs* entry = list; entry != nullptr; entry = entry->ifa_next) {
        if (entry->ifa_addr == nullptr) {
            continue;
        }
        const auto found =
            std::find_if(interfaces.begin(), interfaces.end(), [&](const auto& impl) {
                return std::strcmp(impl->identifier.c_str(), entry->ifa_name) == 0;
            });
        NetworkInterfaceImpl& impl =
            found != interfaces.end() ? **found
                                      : *interfaces.emplace_back(newInterface(*entry, properties));
        switch (entry->ifa_addr->sa_family) {
            case AF_INET:
                impl.interfaceAddresses.push_back(
                    makeInterfaceAddress(reinterpret_cast<const sockaddr_in*>(entry->ifa_addr),
                                         reinterpret_cast<const sockaddr_in*>(entry->ifa_netmask)));
                break;
            case AF_INET6:
                impl.interfaceAddresses.push_back(makeInterfaceAddress(
                    reinterpret_cast<const sockaddr_in6*>(entry->ifa_addr),
                    reinterpret_cast<const sockaddr_in6*>(entry->ifa_netmask)));
                break;
#if defined(AF_LINK)
            case AF_LINK:
                setHardwareAddress(impl,
                                   osx::makeHardwareAddress(
                                       reinterpret_cast<const osx::sockaddr_dl*>(entry->ifa_addr)));
                break;
#endif
#if defined(AF_PACKET)
            case AF_PACKET:
                setHardwareAddress(impl,
                                   lnx::makeHardwareAddress(
                                       reinterpret_cast<const sockaddr_ll*>(entry->ifa_addr)));
                break;
#endif
            default:
                break;
        }
    }
    return interfaces;
}

bool isListed(const NetworkInterfaceImpl& impl) {
    return impl.up && !impl.interfaceAddresses.empty();
}

std::vector<NetworkInterface> listInterfaces(OwnedInterfaceList list, bool all) {
    const auto found = listNetworkInterfaces(list.get());
    list.reset();
    std::vector<NetworkInterface> result;
    result.reserve(found.size());
    for (const auto& impl : found) {
        if (all || isListed(*impl)) {
            result.emplace_back(impl);
        }
    }
    return result;
}

}  // namespace foundation::network::posix
