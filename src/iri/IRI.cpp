#include "foundation/network/IRI.h"

#include <ostream>

#include "fl/i18n/codecvt.h"
#include "iri/IRIAccess.h"

namespace foundation::network {

using iri::detail::IRIAccess;

IRI::IRI() noexcept {
    ::new (IRIAccess::storage(*this)) IRIAccess::Impl();
}

IRI::IRI(const std::u16string& text) {
    ::new (IRIAccess::storage(*this)) IRIAccess::Impl(text);
}

IRI::IRI(const IRI& other) {
    ::new (IRIAccess::storage(*this)) IRIAccess::Impl(IRIAccess::impl(other));
}

IRI::IRI(IRI&& other) noexcept {
    ::new (IRIAccess::storage(*this)) IRIAccess::Impl(std::move(IRIAccess::impl(other)));
}

IRI& IRI::operator=(const IRI& other) {
    if (this != &other) {
        IRIAccess::impl(*this) = IRIAccess::impl(other);
    }
    return *this;
}

IRI& IRI::operator=(IRI&& other) noexcept {
    if (this != &other) {
        IRIAccess::impl(*this) = std::move(IRIAccess::impl(other));
    }
    return *this;
}

IRI::~IRI() {
    IRIAccess::impl(*this).~TemplateIRI();
}

void IRI::swap(IRI& other) noexcept {
    if (this != &other) {
        IRIAccess::impl(*this).swap(IRIAccess::impl(other));
    }
}

void IRI::clear() noexcept {
    IRIAccess::impl(*this).clear();
}

bool IRI::isEmpty() const noexcept {
    return IRIAccess::impl(*this).isEmpty();
}
bool IRI::hasScheme() const noexcept {
    return IRIAccess::impl(*this).hasScheme();
}
bool IRI::hasAuthority() const noexcept {
    return IRIAccess::impl(*this).hasAuthority();
}
bool IRI::hasUserInfo() const noexcept {
    return IRIAccess::impl(*this).hasUserInfo();
}
bool IRI::hasHost() const noexcept {
    return IRIAccess::impl(*this).hasHost();
}
bool IRI::hasPort() const noexcept {
    return IRIAccess::impl(*this).hasPort();
}
bool IRI::hasQuery() const noexcept {
    return IRIAccess::impl(*this).hasQuery();
}
bool IRI::hasFragment() const noexcept {
    return IRIAccess::impl(*this).hasFragment();
}
bool IRI::hasAbsolutePath() const noexcept {
    return IRIAccess::impl(*this).hasAbsolutePath();
}
bool IRI::isAbsolute() const noexcept {
    return IRIAccess::impl(*this).isAbsolute();
}
bool IRI::isOpaque() const noexcept {
    return IRIAccess::impl(*this).isOpaque();
}

std::u16string IRI::getScheme() const {
    return IRIAccess::impl(*this).getScheme();
}
std::u16string IRI::getPort() const {
    return IRIAccess::impl(*this).getPort();
}
std::uint16_t IRI::getPortNumber() const {
    return IRIAccess::impl(*this).getPortNumber();
}

std::u16string IRI::getUserInfo(const iri::Encoding& encoding) const {
    return IRIAccess::impl(*this).getUserInfo(encoding);
}
std::u16string IRI::getHost(const iri::Encoding& encoding) const {
    return IRIAccess::impl(*this).getHost(encoding);
}
std::u16string IRI::getPath(const iri::Encoding& encoding) const {
    return IRIAccess::impl(*this).getPath(encoding);
}
std::u16string IRI::getQuery(const iri::Encoding& encoding) const {
    return IRIAccess::impl(*this).getQuery(encoding);
}
std::u16string IRI::getFragment(const iri::Encoding& encoding) const {
    return IRIAccess::impl(*this).getFragment(encoding);
}
std::u16string IRI::getAuthority(const iri::Encoding& encoding) const {
    return IRIAccess::impl(*this).getAuthority(encoding);
}
std::u16string IRI::getSchemeSpecificPart(const iri::Encoding& encoding) const {
    return IRIAccess::impl(*this).getSchemeSpecificPart(encoding);
}

std::u16string IRI::toString(bool strict) const {
    return IRIAccess::impl(*this).toString(strict);
}
std::u16string IRI::toAsciiString(bool strict) const {
    return IRIAccess::impl(*this).toAsciiString(strict);
}
std::u16string IRI::toStringFromParts(const iri::Encoding& encoding) const {
    return IRIAccess::impl(*this).toStringFromParts(encoding);
}

std::ostream& operator<<(std::ostream& out, const IRI& iri) {
    const fl::i18n::codecvt_ustring_to_ascii narrow;
    return out << narrow(iri.toAsciiString(false));
}

}  // namespace foundation::network
