// The public forwards of building, resolution, relativisation, comparison and hashing.
#include <new>
#include <utility>

#include "foundation/network/IRI.h"
#include "foundation/network/IRIArgs.h"
#include "iri/IRIAccess.h"

namespace foundation::network {
namespace {

using iri::detail::IRIAccess;

// An IRI holding `value`, moved in place (cheaper than assigning into an empty one).
IRI holding(IRIAccess::Impl&& value) noexcept {
    IRI result;
    IRIAccess::impl(result).~TemplateIRI();
    ::new (IRIAccess::storage(result)) IRIAccess::Impl(std::move(value));
    return result;
}

}  // namespace

IRI::IRI(const IRIArgs& args) {
    ::new (IRIAccess::storage(*this)) IRIAccess::Impl(args);
}

void IRI::toArgs(IRIArgs& args) const {
    IRIAccess::impl(*this).toArgs(args);
}

IRIArgs::IRIArgs(const IRI& iri) {
    iri.toArgs(*this);
}

IRI IRI::resolveAgainst(const IRI& base) const {
    return holding(IRIAccess::impl(*this).doResolve(IRIAccess::impl(base)));
}

IRI IRI::makeRelativeTo(const IRI& base) const {
    return holding(IRIAccess::impl(*this).doRelativise(IRIAccess::impl(base)));
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
