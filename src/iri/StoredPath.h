/// @file
/// @brief The path of a value, also for one that never had a path stored.
#pragma once

#include <string>

#include "foundation/network/Encoding.h"
#include "iri/StringParts.h"
#include "iri/Utf16.h"

namespace foundation::network::iri::detail {

/// The stored path in `encoding` as code points, or the empty string for a value that never
/// had one (a default-constructed IRI), instead of the "Item not set: Path" error of the getter.
inline std::wstring storedPath(const StringParts& parts, const Encoding& encoding) {
    return widen(parts.storedPath(formOf(encoding)));
}

}  // namespace foundation::network::iri::detail
