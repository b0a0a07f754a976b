/// @file
/// @brief Removal of "." and ".." segments from a path's text, exactly as RFC 3986 section
/// 5.2.4 removes them.
#pragma once

#include <string>
#include <string_view>

namespace foundation::network::iri::detail {

/// `path` with its dot segments removed by RFC 3986 section 5.2.4 (a ".." above the root is
/// dropped). Linear in the length.
std::u16string removeDotSegmentsOfText(std::u16string_view path);

}  // namespace foundation::network::iri::detail
