/// @file
/// @brief Port text to number.
#pragma once

#include <string>

namespace foundation::network::iri::detail {

/// Parses a port: ASCII digits only, at least one, leading zeros allowed, value at most 65535,
/// no sign or space. Returns false (leaving `out` unspecified) when `text` is not such a port.
bool portStringToNumeric(const std::wstring& text, unsigned short& out);

}  // namespace foundation::network::iri::detail
