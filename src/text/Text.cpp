#include "text/Text.h"

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>

namespace foundation::text {

bool isAscii(std::string_view text) noexcept {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool isAscii(std::u16string_view text) noexcept {
    return std::all_of(text.begin(), text.end(), [](char16_t c) { return c < 0x80; });
}

std::size_t utf8ToUtf16(std::string_view in, std::u16string& out, bool replace) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(in.data());
    const std::size_t length = in.size();
    // At most one unit per byte: written through a pointer, the size fixed at the end.
    const std::size_t start = out.size();
    out.resize(start + length);
    char16_t* units = out.data() + start;
    std::size_t written = 0;
    std::size_t i = 0;
    while (i != length) {
        if (bytes[i] < 0x80) {  // the common case, ASCII, needs no decoding
            units[written++] = bytes[i++];
            continue;
        }
        const std::size_t at = i;
        UChar32 c = 0;
        U8_NEXT(bytes, i, length, c);
        if (c < 0) {
            if (!replace) {
                out.resize(start + written);
                return at;
            }
            c = 0xFFFD;
        }
        U16_APPEND_UNSAFE(units, written, c);
    }
    out.resize(start + written);
    return kWhole;
}

std::size_t utf16ToUtf8(std::u16string_view in, std::string& out, bool replace) {
    const char16_t* units = in.data();
    const std::size_t length = in.size();
    out.reserve(out.size() + length + length / 2);
    std::size_t i = 0;
    while (i != length) {
        if (units[i] < 0x80) {
            out.push_back(static_cast<char>(units[i++]));
            continue;
        }
        const std::size_t at = i;
        UChar32 c = 0;
        U16_NEXT(units, i, length, c);
        if (U_IS_SURROGATE(c)) {
            if (!replace) {
                return at;
            }
            c = 0xFFFD;
        }
        char sequence[U8_MAX_LENGTH];
        std::size_t written = 0;
        U8_APPEND_UNSAFE(sequence, written, c);
        out.append(sequence, written);
    }
    return kWhole;
}

// Every parse widens its whole text and every stored component narrows: the first loop of
// each is kept free of branches so that it vectorises; text with surrogates (rare) takes the
// second.
std::size_t utf16ToCodePoints(std::u16string_view in, wchar_t* out, std::size_t& written) noexcept {
    const char16_t* units = in.data();
    const std::size_t length = in.size();
    std::uint32_t surrogates = 0;
    for (std::size_t i = 0; i < length; ++i) {
        const std::uint32_t unit = units[i];
        out[i] = static_cast<wchar_t>(unit);
        surrogates |= static_cast<std::uint32_t>(unit - 0xD800u < 0x800u);
    }
    written = length;
    if (surrogates == 0) {
        return kWhole;
    }
    written = 0;
    std::size_t i = 0;
    while (i != length) {
        const std::size_t at = i;
        UChar32 c = 0;
        U16_NEXT(units, i, length, c);
        if (U_IS_SURROGATE(c)) {
            return at;
        }
        out[written++] = static_cast<wchar_t>(c);
    }
    return kWhole;
}

std::size_t codePointsToUtf16(std::wstring_view in, std::u16string& out) {
    const wchar_t* points = in.data();
    const std::size_t size = in.size();
    std::uint32_t outside = 0;  // anything but the Basic Multilingual Plane's scalar values
    for (std::size_t i = 0; i < size; ++i) {
        const auto v = static_cast<std::uint32_t>(points[i]);
        outside |= static_cast<std::uint32_t>(v > 0xFFFFu) |
                   static_cast<std::uint32_t>(v - 0xD800u < 0x800u);
    }
    const std::size_t start = out.size();
    if (outside == 0) {
        out.resize(start + size);
        char16_t* to = out.data() + start;
        for (std::size_t i = 0; i < size; ++i) {
            to[i] = static_cast<char16_t>(points[i]);
        }
        return kWhole;
    }
    out.resize(start + 2 * size);
    char16_t* to = out.data() + start;
    std::size_t written = 0;
    for (std::size_t i = 0; i < size; ++i) {
        const auto v = static_cast<std::uint32_t>(points[i]);
        if (v > 0x10FFFFu || U_IS_SURROGATE(v)) {
            out.resize(start);
            return i;
        }
        U16_APPEND_UNSAFE(to, written, v);
    }
    out.resize(start + written);
    return kWhole;
}

int utf8BytesExtended(std::uint32_t codePoint, unsigned char (&bytes)[6]) noexcept {
    if (codePoint < 0x80u) {
        bytes[0] = static_cast<unsigned char>(codePoint);
        return 1;
    }
    const int length = codePoint < 0x800u       ? 2
                       : codePoint < 0x10000u   ? 3
                       : codePoint < 0x200000u  ? 4
                       : codePoint < 0x4000000u ? 5
                                                : 6;
    static constexpr unsigned char kLead[7] = {0, 0, 0xC0, 0xE0, 0xF0, 0xF8, 0xFC};
    for (int i = length - 1; i > 0; --i) {
        bytes[i] = static_cast<unsigned char>(0x80u | (codePoint & 0x3Fu));
        codePoint >>= 6;
    }
    bytes[0] = static_cast<unsigned char>(kLead[length] | codePoint);
    return length;
}

std::size_t announcedUtf8Length(unsigned char byte) noexcept {
    if ((byte & 0xE0u) == 0xC0u) {
        return 2;
    }
    if ((byte & 0xF0u) == 0xE0u) {
        return 3;
    }
    if ((byte & 0xF8u) == 0xF0u) {
        return 4;
    }
    if ((byte & 0xFCu) == 0xF8u) {
        return 5;
    }
    if ((byte & 0xFEu) == 0xFCu) {
        return 6;
    }
    return 0;
}

std::string escapeBrokenUtf8(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 2);
    std::size_t i = 0;
    while (i < bytes.size()) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        if (byte < 0x80u) {
            out.push_back(static_cast<char>(byte));
            ++i;
            continue;
        }
        const std::size_t length = announcedUtf8Length(byte);
        bool whole = length != 0 && i + length <= bytes.size();
        for (std::size_t k = 1; whole && k < length; ++k) {
            whole = (static_cast<unsigned char>(bytes[i + k]) & 0xC0u) == 0x80u;
        }
        if (whole) {
            out.append(bytes.substr(i, length));
            i += length;
        } else {
            appendPercentEscape(out, byte);
            ++i;
        }
    }
    return out;
}

}  // namespace foundation::text
