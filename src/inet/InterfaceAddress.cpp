#include "foundation/network/InterfaceAddress.h"

#include "inet/InetAddressImpl.h"
#include "inet/InterfaceAddressImpl.h"

namespace foundation::network {

InterfaceAddress::InterfaceAddress() : InterfaceAddress(InetAddress(), 0) {}

// The public signature takes the address by value.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
InterfaceAddress::InterfaceAddress(InetAddress address, unsigned short prefixLength)
    : impl_(std::make_shared<const InterfaceAddressImpl>(getInetAddressImpl(address).address(),
                                                         prefixLength)) {}

InterfaceAddress::InterfaceAddress(std::shared_ptr<InterfaceAddressImpl> impl)
    : impl_(std::move(impl)) {}

InetAddress InterfaceAddress::getInetAddress() const {
    return InetAddress(std::make_shared<InetAddressImpl>(impl_->address()), std::string());
}

unsigned short InterfaceAddress::prefixLength() const {
    return impl_->prefixLength();
}

std::string InterfaceAddress::toString() const {
    return impl_->toString();
}

}  // namespace foundation::network
