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

bool InetAddress::isUnspecified() const {
    return impl_->isUnspecified();
}

bool InetAddress::isLinkLocal() const {
    return impl_->isLinkLocal();
}

bool InetAddress::isPrivate() const {
    return impl_->isPrivate();
}

bool InetAddress::isV4Mapped() const {
    return impl_->isV4Mapped();
}

InetAddress InetAddress::unmapped() const {
    return InetAddress(std::make_shared<InetAddressImpl>(impl_->unmapped()), hostName_);
}

std::uint32_t InetAddress::scopeId() const {
    return impl_->scopeId();
}

std::size_t InetAddress::hashValue() const noexcept {
    return std::hash<boost::asio::ip::address>()(impl_->address());
}

bool operator==(const InetAddress& a, const InetAddress& b) noexcept {
    // Copies share their implementation: no need to look at the bytes then.
    return a.impl_ == b.impl_ || a.impl_->address() == b.impl_->address();
}

bool operator<(const InetAddress& a, const InetAddress& b) noexcept {
    return a.impl_ != b.impl_ && a.impl_->address() < b.impl_->address();
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
