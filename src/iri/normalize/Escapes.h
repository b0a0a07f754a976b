// Percent-escapes of one IRI component: hexadecimal case and decoding of what needs no escape.
#pragma once

#include <string>

namespace foundation::network::iri::detail {

/// `text` (a component as written) with the hexadecimal digits of its escapes in upper case
/// when `upperHex`, and, when `decode`, each escaped ASCII unreserved character and each
/// escaped well-formed UTF-8 sequence of a character allowed unescaped in an IRI decoded.
/// A "%" that starts no escape is copied.
std::u16string normalizeEscapes(const std::u16string& text, bool upperHex, bool decode);

/// `text` with its ASCII letters in lower case, the hexadecimal digits of escapes excepted.
std::u16string lowerOutsideEscapes(const std::u16string& text);

}  // namespace foundation::network::iri::detail
