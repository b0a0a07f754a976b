#include "foundation/network/NetworkInterface.h"

#include <ifaddrs.h>

#include <cerrno>
#include <system_error>

#include "fl/i18n/codecvt.h"
#include "foundation/core/except/Exception.h"
#include "inet/NetworkInterfaceImpl.h"
#include "inet/posix/ListNetworkInterfaces.h"

namespace foundation::network {

NetworkInterface::NetworkInterface(std::shared_ptr<NetworkInterfaceImpl> impl)
    : impl_(std::move(impl)) {}

namespace {

std::vector<NetworkInterface> listInterfaces(bool all) {
    ifaddrs* list = nullptr;
    if (::getifaddrs(&list) != 0) {
        throw foundation::core::except::detail::AnonymousInternalException<std::system_error>(
            std::error_code(errno, std::system_category()), "Call to getifaddrs failed");
    }
    return posix::listInterfaces(posix::OwnedInterfaceList(list, &::freeifaddrs), all);
}

}  // namespace

std::vector<NetworkInterface> NetworkInterface::list() {
    return listInterfaces(false);
}

std::vector<NetworkInterface> NetworkInterface::listAll() {
    return listInterfaces(true);
}

std::string NetworkInterface::getIdentifier() const {
    return impl_->identifier;
}

std::u16string NetworkInterface::getFriendlyName() const {
    if (!impl_->friendlyName.empty()) {
        return impl_->friendlyName;
    }
    if (impl_->identifier.empty()) {
        return std::u16string();
    }
    const fl::i18n::codecvt_ascii_to_ustring toUtf16;
    return toUtf16.do_convert(impl_->identifier.data(), impl_->identifier.size());
}

std::string NetworkInterface::getDescription() const {
    return impl_->description;
}

HardwareAddress NetworkInterface::getHardwareAddress() const {
    return impl_->hardwareAddress;
}

std::vector<InterfaceAddress> NetworkInterface::getInterfaceAddresses() const {
    return impl_->interfaceAddresses;
}

std::vector<InetAddress> NetworkInterface::getInetAddresses() const {
    std::vector<InetAddress> addresses;
    addresses.reserve(impl_->interfaceAddresses.size());
    for (const auto& address : impl_->interfaceAddresses) {
        addresses.push_back(address.getInetAddress());
    }
    return addresses;
}

unsigned NetworkInterface::getIndex() const {
    return impl_->index;
}

unsigned NetworkInterface::getMtu() const {
    return impl_->mtu;
}

bool NetworkInterface::isUp() const {
    return impl_->up;
}

bool NetworkInterface::isAdminUp() const {
    return impl_->adminUp;
}

bool NetworkInterface::isLoopback() const {
    return impl_->loopback;
}

bool NetworkInterface::supportsMulticast() const {
    return impl_->multicast;
}

}  // namespace foundation::network
