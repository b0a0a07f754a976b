/// @file
/// @brief Conversions between UTF-16, UTF-8 and code points (one per wchar_t), and the UTF-8
/// check-and-repair used by the percent decoders.
///
/// The conversions run in the text module (text/Text.h); their failures reach the caller as
/// `std::out_of_range` with the texts of Boost's UTF iterators ("Misplaced UTF-16 surrogate U+...",
/// "Invalid UTF-32 code point U+...", "Invalid UTF-8 sequence encountered while trying to encode
/// UTF-32 character").
#pragma once

#include <cstddef>
#include <string>

namespace foundation::network::iri::detail {

/// UTF-16 text to code points. Throws std::out_of_range on an unpaired surrogate.
std::wstring utf16ToCodePoints(const std::u16string& text);

/// Code points to UTF-16. Throws std::out_of_range on a surrogate value or one above U+10FFFF.
std::u16string codePointsToUtf16(const std::wstring& text);

/// Code points to UTF-8 bytes. Throws std::out_of_range on an invalid code point.
std::string codePointsToUtf8(const std::wstring& text);

/// UTF-8 bytes to code points. Throws std::out_of_range on invalid UTF-8.
std::wstring utf8ToCodePoints(const std::string& bytes);

/// Code points to their UTF-8 octets, one octet per wide element.
std::wstring codePointsToUtf8Octets(const std::wstring& text);

/// Each element cut to its low eight bits, one byte each; no check. Only for text whose
/// elements are all below 256.
std::string toAsciiStringAssumingAsciiCodePoints(const std::wstring& text);

/// Result of validateUTF8String.
struct Utf8Check {
    bool repaired = false;  ///< the input was not valid UTF-8 and was repaired
    std::string bytes;      ///< the input, or its repaired copy
};

/// Checks that `bytes` is UTF-8. If not, returns a copy in which every byte that is not part of
/// a well-formed sequence (1 to 6 bytes by its lead byte) is written as an upper-case "%XX"
/// escape. Never throws for bad input.
Utf8Check validateUTF8String(const std::string& bytes);

}  // namespace foundation::network::iri::detail
