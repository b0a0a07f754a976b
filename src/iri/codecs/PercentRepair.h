/// @file
/// @brief Percent repair for the strict Encodings (2 and 4): makes text safe to parse again.
#pragma once

#include <string>
#include <string_view>

namespace foundation::network::iri::detail {

/// Copies `text`, writing every "%" that does not start an escape ("%" and two hex digits) as
/// "%25" and, with `escapeBrackets`, "[" as "%5B" and "]" as "%5D".
std::wstring repairPercents(std::wstring_view text, bool escapeBrackets);
std::u16string repairPercents(std::u16string_view text, bool escapeBrackets);

}  // namespace foundation::network::iri::detail
