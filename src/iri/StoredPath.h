/// @file
/// @brief The path of a value, also for one that never had a path stored.
#pragma once

#include <string>

#include "foundation/network/Encoding.h"
#include "iri/StringParts.h"

namespace foundation::network::iri::detail {

/// The stored path in `encoding`, or the empty string for a value that never had one (a
/// default-constructed IRI), instead of the "Item not set: Path" error of the getter.
inline const std::wstring& storedPath(const StringParts& parts, const Encoding& encoding) {
    static const std::wstring none;
    return parts.hasPath() ? parts.getPath(encoding) : none;
}

}  // namespace foundation::network::iri::detail
