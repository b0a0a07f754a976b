// The lookups of InetAddress: forward, reverse and canonical names, and the local host.
#include "foundation/network/InetAddress.h"

#include "inet/InetAddressImpl.h"
#include "inet/Resolver.h"
#include "inet/ResolverError.h"

namespace foundation::network {

InetAddress InetAddress::getByName(const std::string& name) {
    const auto addresses = resolver::forward(name);
    if (addresses.empty()) {
        throwResolverError(boost::asio::error::host_not_found);
    }
    return InetAddress(std::make_shared<InetAddressImpl>(addresses.front()), name);
}

std::vector<InetAddress> InetAddress::getAllByName(const std::string& name) {
    const auto addresses = resolver::forward(name);
    std::vector<InetAddress> result;
    result.reserve(addresses.size());
    for (const auto& address : addresses) {
        result.emplace_back(std::make_shared<InetAddressImpl>(address), name);
    }
    return result;
}

InetAddress InetAddress::getLocalHost() {
    return getByName(getLocalHostName());
}

std::string InetAddress::getCanonicalHostName() const {
    // Starts from the address, not from a stored name: the name may be an alias or a literal.
    return resolver::canonical(impl_->reverseLookup());
}

std::string InetAddressImpl::reverseLookup() const {
    return resolver::reverse(address_);
}

}  // namespace foundation::network
