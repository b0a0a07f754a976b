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

bool InterfaceAddress::contains(const InetAddress& address) const {
    return impl_->contains(getInetAddressImpl(address).address());
}

InetAddress InterfaceAddress::network() const {
    return InetAddress(std::make_shared<InetAddressImpl>(impl_->withHostBits(false)),
                       std::string());
}

InetAddress InterfaceAddress::broadcast() const {
    return InetAddress(std::make_shared<InetAddressImpl>(impl_->withHostBits(true)), std::string());
}

std::size_t InterfaceAddress::hashValue() const noexcept {
    const std::size_t address = std::hash<boost::asio::ip::address>()(impl_->address());
    return address ^ (impl_->prefixLength() + 0x9e3779b9u + (address << 6) + (address >> 2));
}

bool operator==(const InterfaceAddress& a, const InterfaceAddress& b) noexcept {
    return a.impl_ == b.impl_ || (a.impl_->prefixLength() == b.impl_->prefixLength() &&
                                  a.impl_->address() == b.impl_->address());
}

bool operator<(const InterfaceAddress& a, const InterfaceAddress& b) noexcept {
    if (a.impl_->address() != b.impl_->address()) {
        return a.impl_->address() < b.impl_->address();
    }
    return a.impl_->prefixLength() < b.impl_->prefixLength();
}

}  // namespace foundation::network
