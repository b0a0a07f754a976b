#include "foundation/network/InetAddress.h"

#include "inet/InetAddressImpl.h"

namespace foundation::network {

InetAddress::InetAddress() : impl_(std::make_shared<const InetAddressImpl>()) {}

InetAddress::InetAddress(std::array<unsigned char, 4> bytes)
    : impl_(std::make_shared<const InetAddressImpl>(bytes)) {}

InetAddress::InetAddress(std::array<unsigned char, 16> bytes)
    : impl_(std::make_shared<const InetAddressImpl>(bytes)) {}

// The public signature takes the bytes by value.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
InetAddress::InetAddress(std::vector<unsigned char> bytes)
    : impl_(std::make_shared<const InetAddressImpl>(bytes)) {}

InetAddress::InetAddress(const std::string& text)
    : impl_(std::make_shared<const InetAddressImpl>(text)) {}

InetAddress::InetAddress(std::shared_ptr<InetAddressImpl> impl, std::string hostName)
    : impl_(std::move(impl)), hostName_(std::move(hostName)) {}

int InetAddress::getVersion() const {
    return impl_->getVersion();
}

bool InetAddress::isLoopback() const {
    return impl_->isLoopback();
}

bool InetAddress::isMulticast() const {
    return impl_->isMulticast();
}

std::string InetAddress::toString() const {
    return impl_->toString();
}

std::string InetAddress::getHostAddress() const {
    return impl_->toString();
}

std::vector<unsigned char> InetAddress::bytes() const {
    return impl_->bytes();
}

std::string InetAddress::getHostName() const {
    // Looked up on every call and never stored back: the value stays immutable.
    return hostName_.empty() ? impl_->reverseLookup() : hostName_;
}

const InetAddressImpl& getInetAddressImpl(const InetAddress& address) {
    return *address.impl_;
}

}  // namespace foundation::network
