// The public forwards of building, resolution, relativisation, comparison and hashing.
#include <new>

#include "foundation/network/IRI.h"
#include "foundation/network/IRIArgs.h"
#include "iri/IRIAccess.h"

namespace foundation::network {
using iri::detail::IRIAccess;

IRI::IRI(const IRIArgs& args) {
    ::new (IRIAccess::storage(*this)) IRIAccess::Impl(args);
}

void IRI::toArgs(IRIArgs& args) const {
    IRIAccess::impl(*this).toArgs(args);
}

IRIArgs::IRIArgs(const IRI& iri) {
    iri.toArgs(*this);
}

// Both write straight into the value returned.
IRI IRI::resolveAgainst(const IRI& base) const {
    IRI result;
    IRIAccess::impl(*this).resolveInto(IRIAccess::impl(base), IRIAccess::impl(result));
    return result;
}

IRI IRI::makeRelativeTo(const IRI& base) const {
    IRI result;
    IRIAccess::impl(*this).relativiseInto(IRIAccess::impl(base), IRIAccess::impl(result));
    return result;
}

bool IRI::operator==(const IRI& other) const {
    return IRIAccess::impl(*this) == IRIAccess::impl(other);
}

bool IRI::operator!=(const IRI& other) const {
    return IRIAccess::impl(*this) != IRIAccess::impl(other);
}

bool IRI::operator<(const IRI& other) const {
    return IRIAccess::impl(*this) < IRIAccess::impl(other);
}

std::uint64_t IRI::hashValue() const noexcept {
    return IRIAccess::impl(*this).hashValue();
}

}  // namespace foundation::network
