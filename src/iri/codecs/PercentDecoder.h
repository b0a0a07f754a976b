/// @file
/// @brief The percent decoder shared by every component: escapes become the byte they stand
/// for, except those of a given do-not-decode set.
#pragma once

#include <string>
#include <string_view>

namespace foundation::network::iri::detail {

/// Copies `in`, replacing each escape ("%" and exactly two hex digits, either case) by one
/// element holding its value 0 to 255, unless that value is a character of `doNotDecode`: such
/// an escape stays as written. A "%" not followed by two hex digits is copied. Never throws
/// for any input (apart from std::bad_alloc); its grammar is built once and shared.
std::wstring percentDecode(const std::wstring& in, std::wstring_view doNotDecode);

}  // namespace foundation::network::iri::detail
