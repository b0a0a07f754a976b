/// @file
/// @brief Internal access to the implementation object that an `IRI` holds in place.
#pragma once

#include <new>
#include <string>
#include <utility>

#include "foundation/network/IRI.h"
#include "iri/TemplateIRI.h"

namespace foundation::network::iri::detail {

struct IRIAccess {
    using Impl = TemplateIRI<std::wstring>;

    static_assert(sizeof(Impl) == IRI::kStorageSize,
                  "IRI::kStorageSize must match the implementation");
    static_assert(alignof(Impl) == IRI::kStorageAlign,
                  "IRI::kStorageAlign must match the implementation");

    static Impl& impl(IRI& iri) noexcept {
        return *std::launder(reinterpret_cast<Impl*>(iri.storage_));
    }
    static const Impl& impl(const IRI& iri) noexcept {
        return *std::launder(reinterpret_cast<const Impl*>(iri.storage_));
    }
    static void* storage(IRI& iri) noexcept { return iri.storage_; }

    /// Makes `value` forget that its text is current, so that its serialisations are assembled
    /// from the components, as for a value built from components.
    static void assembleFromParts(Impl& value) noexcept { value.textIsCurrent.store(false); }
};

}  // namespace foundation::network::iri::detail
