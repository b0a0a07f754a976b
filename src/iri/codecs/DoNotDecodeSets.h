/// @file
/// @brief Per component, the characters whose percent-escapes a decoder leaves as written,
/// because decoding them would change how the component parses. Each set is kept in this exact
/// order.
#pragma once

#include <string_view>

namespace foundation::network::iri::detail {

inline constexpr std::wstring_view kUserInfoDoNotDecode = L" \"#/<;=>?@[\\]^`{|}%";
inline constexpr std::wstring_view kHostDoNotDecode = L" #%/:?@[\\]";
inline constexpr std::wstring_view kPathDoNotDecode = L" \"#%<>?[]`{}";
inline constexpr std::wstring_view kQueryDoNotDecode = L" \"#<>`%";
inline constexpr std::wstring_view kFragmentDoNotDecode = L" \"<>`%";

}  // namespace foundation::network::iri::detail
