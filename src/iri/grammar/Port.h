/// @file
/// @brief Port text to number.
#pragma once

#include <string_view>

namespace foundation::network::iri::detail {

/// Parses a port: ASCII digits only, at least one, leading zeros allowed, value at most 65535,
/// no sign or space. Returns false (leaving `out` unspecified) when `text` is not such a port.
bool portStringToNumeric(std::wstring_view text, unsigned short& out);
bool portStringToNumeric(std::u16string_view text, unsigned short& out);

}  // namespace foundation::network::iri::detail
