/// @file
/// @brief The one place where text changes encoding: UTF-8, UTF-16 and code points (one per
/// wchar_t), the repair of ill-formed UTF-8, and "%XX" escapes. Used by the IRI code, the UTF-8
/// door, the i18n facets and the tool. Built on ICU's UTF-8/16 macros.
///
/// The conversions report where they stopped instead of throwing: each caller has its own
/// message (and exception) for ill-formed text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace foundation::text {

/// What a conversion returns when the whole input converted.
inline constexpr std::size_t kWhole = std::string_view::npos;

bool isAscii(std::string_view text) noexcept;
bool isAscii(std::u16string_view text) noexcept;

/// Appends UTF-8 `in` to `out` as UTF-16. An ill-formed part (a maximal subpart, after
/// Unicode's table of well-formed sequences) becomes U+FFFD when `replace`; otherwise the
/// conversion stops there and returns the part's byte index. Returns kWhole when it did not
/// stop.
std::size_t utf8ToUtf16(std::string_view in, std::u16string& out, bool replace);

/// Appends UTF-16 `in` to `out` as UTF-8. An unpaired surrogate becomes U+FFFD when `replace`;
/// otherwise the conversion stops there and returns its index. Returns kWhole when it did not
/// stop.
std::size_t utf16ToUtf8(std::u16string_view in, std::string& out, bool replace);

/// Writes the code points of `in` to `out`, which has room for `in.size()` of them, and sets
/// `written`. Stops at an unpaired surrogate and returns its index; kWhole when it did not stop.
std::size_t utf16ToCodePoints(std::u16string_view in, wchar_t* out, std::size_t& written) noexcept;

/// Appends `in` to `out` as UTF-16. Returns the index of the first element that is no Unicode
/// scalar value (a surrogate, or above U+10FFFF), leaving `out` as it was; kWhole otherwise.
std::size_t codePointsToUtf16(std::wstring_view in, std::u16string& out);

/// Writes `codePoint` in the UTF-8 bit layout, extended beyond U+10FFFF to five and six bytes
/// (so that no value is lost), and returns the number of bytes.
int utf8BytesExtended(std::uint32_t codePoint, unsigned char (&bytes)[6]) noexcept;

/// Length of the UTF-8 sequence a lead byte announces by its leading one bits (2 to 6, the
/// historical five- and six-byte forms included), or 0 for a byte that cannot lead one.
std::size_t announcedUtf8Length(unsigned char leadByte) noexcept;

/// `bytes` with every byte that is not part of a whole sequence (1 to 6 bytes by its lead byte)
/// written as an upper-case "%XX" escape.
std::string escapeBrokenUtf8(std::string_view bytes);

inline constexpr char kUpperHexDigits[] = "0123456789ABCDEF";

/// The value of an ASCII hex digit, -1 for anything else.
constexpr int hexValue(std::uint32_t c) noexcept {
    if (c >= '0' && c <= '9') {
        return static_cast<int>(c - '0');
    }
    if (c >= 'a' && c <= 'f') {
        return static_cast<int>(c - 'a' + 10);
    }
    if (c >= 'A' && c <= 'F') {
        return static_cast<int>(c - 'A' + 10);
    }
    return -1;
}

/// Appends "%XX" (upper-case hex) for one byte to a string of any character type.
template <class String>
void appendPercentEscape(String& out, unsigned byte) {
    using Char = typename String::value_type;
    const Char escape[3] = {Char('%'), Char(kUpperHexDigits[(byte >> 4) & 0x0Fu]),
                            Char(kUpperHexDigits[byte & 0x0Fu])};
    out.append(escape, 3);
}

}  // namespace foundation::text
