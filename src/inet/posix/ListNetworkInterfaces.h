/// @file
/// @brief Interfaces from a `getifaddrs` list: grouping by name, flags, addresses, link records.
#pragma once

#include <ifaddrs.h>

#include <memory>
#include <vector>

#include "foundation/network/NetworkInterface.h"
#include "inet/NetworkInterfaceImpl.h"

namespace foundation::network::posix {

/// One implementation per interface name, in order of first appearance. Entries without an
/// address are skipped; the flags come from a name's first entry that has one; IPv4 and IPv6
/// entries add interface addresses (a non-contiguous IPv4 netmask throws
/// std::invalid_argument); link records set the hardware address (the last one wins, and
/// loopback interfaces keep none); other families are ignored. Each interface's index and MTU
/// are read by name when it is first met (0 for names the system does not know). A null list gives
/// an empty result. The list stays the caller's: it is never freed here.
std::vector<std::shared_ptr<NetworkInterfaceImpl>> listNetworkInterfaces(ifaddrs* list);

/// A system list with the function that releases it (freeifaddrs for a real one).
using OwnedInterfaceList = std::unique_ptr<ifaddrs, void (*)(ifaddrs*)>;

/// Runs listNetworkInterfaces on `list`, releases it (also when that throws), then keeps, in
/// order, every interface when `all`, else those that are up and carry at least one IP address.
std::vector<NetworkInterface> listInterfaces(OwnedInterfaceList list, bool all);

/// Whether NetworkInterface::list keeps an interface: up and running, with an IP address.
bool isListed(const NetworkInterfaceImpl& impl);

}  // namespace foundation::network::posix
