// Removal of "." and ".." segments from a path.
#pragma once

#include <string>

namespace foundation::network::iri::detail {

/// `path` with its dot segments removed exactly as RFC 3986 section 5.2.4 removes them (a ".."
/// above the root is dropped).
std::u16string removeDotSegments(const std::u16string& path);

}  // namespace foundation::network::iri::detail
