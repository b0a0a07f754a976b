/// @file
/// @brief The building blocks that write percent-escapes: the To-URI encoder, the unsafe- and
/// private-use-character encoders of the IRI form (RFC 3987 section 3.1 and 4.1), and a small
/// set of ASCII characters to escape besides.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace foundation::network::iri::detail {

/// A set of ASCII characters (0 to 127), built at compile time.
class AsciiSet {
public:
    constexpr AsciiSet() = default;
    constexpr explicit AsciiSet(std::wstring_view chars) { add(chars); }

    constexpr AsciiSet& add(std::wstring_view chars) {
        for (const wchar_t c : chars) {
            if (c >= 0 && c < 128) {
                bits_[c >> 6] |= std::uint64_t{1} << (c & 63);
            }
        }
        return *this;
    }
    constexpr AsciiSet& addRange(wchar_t first, wchar_t last) {
        for (wchar_t c = first; c <= last; ++c) {
            bits_[c >> 6] |= std::uint64_t{1} << (c & 63);
        }
        return *this;
    }
    constexpr AsciiSet& remove(std::wstring_view chars) {
        for (const wchar_t c : chars) {
            if (c >= 0 && c < 128) {
                bits_[c >> 6] &= ~(std::uint64_t{1} << (c & 63));
            }
        }
        return *this;
    }
    /// Every ASCII character not in this set.
    constexpr AsciiSet complement() const {
        AsciiSet result;
        result.bits_[0] = ~bits_[0];
        result.bits_[1] = ~bits_[1];
        return result;
    }
    constexpr bool contains(wchar_t c) const {
        return c >= 0 && c < 128 && ((bits_[c >> 6] >> (c & 63)) & 1u) != 0;
    }

private:
    std::uint64_t bits_[2] = {0, 0};
};

/// Appends "%XX" (upper-case hex) for one byte.
void appendEscapedByte(std::wstring& out, unsigned byte);

/// Appends the UTF-8 bytes of `codePoint` as escapes. Surrogates and values above U+10FFFF are
/// written in the same bit layout (up to six bytes), so nothing is ever dropped.
void appendEscapedUtf8(std::wstring& out, std::uint32_t codePoint);

/// The To-URI encoder: each byte of the text's UTF-8 form that is printable ASCII (0x21 to
/// 0x7E) is copied, every other byte is written as an escape. Existing escapes survive as
/// written (in their case); a space becomes "%20". Never throws for any code point.
std::wstring encodeToUri(std::wstring_view text);

/// Whether the unsafe-character encoder escapes `codePoint` (C0 controls, " < > \ ^ ` { | },
/// U+007F to U+009F, bidi formatting marks, surrogates, non-characters).
bool isUnsafeInIri(std::uint32_t codePoint);

/// Whether `codePoint` lies in a private-use range (U+E000-F8FF, U+E0000-E0FFF,
/// U+F0000-FFFFD, U+100000-10FFFD).
bool isPrivateUse(std::uint32_t codePoint);

/// The unsafe-character and private-use encoders in one pass, escaping besides every ASCII
/// character of `alsoEscape` (each as "%XX"). Never throws.
std::wstring encodeForIri(std::wstring_view text, const AsciiSet& alsoEscape = AsciiSet());

}  // namespace foundation::network::iri::detail
