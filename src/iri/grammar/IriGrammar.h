/// @file
/// @brief Entry points of the IRI grammar (RFC 3987 IRI-reference and scheme).
#pragma once

#include "iri/grammar/Parts.h"

namespace foundation::network::iri::detail::irigrammar {

/// Whether [first, last) is an IRI reference: code points (std::wstring), or UTF-16 units
/// (std::u16string) where a surrogate pair counts as the code point it encodes and an unpaired
/// surrogate matches nothing. On success `parts` holds the ranges of the
/// components found (absent ones keep `present == false`); on failure its content is
/// unspecified. Never throws; allocates nothing.
template <class String>
bool parseString(typename String::const_iterator first, typename String::const_iterator last,
                 Parts<String>& parts);

/// Whether [first, last) is exactly one scheme (alpha *( alnum / "+" / "." / "-" )).
template <class String>
bool parseScheme(typename String::const_iterator first, typename String::const_iterator last);

extern template bool parseString<std::wstring>(std::wstring::const_iterator,
                                               std::wstring::const_iterator, Parts<std::wstring>&);
extern template bool parseString<std::u16string>(std::u16string::const_iterator,
                                                 std::u16string::const_iterator,
                                                 Parts<std::u16string>&);
extern template bool parseScheme<std::wstring>(std::wstring::const_iterator,
                                               std::wstring::const_iterator);

}  // namespace foundation::network::iri::detail::irigrammar
