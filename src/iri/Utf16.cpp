#include "iri/Utf16.h"

namespace foundation::network::iri::detail {

// Every parse widens its whole text first, and every stored component narrows: the first loop
// of each is kept free of branches so that it vectorises (see CMakeLists.txt).
std::size_t writeCodePoints(std::u16string_view utf16, wchar_t* out) {
    const char16_t* in = utf16.data();
    const std::size_t size = utf16.size();
    std::uint32_t surrogates = 0;
    for (std::size_t i = 0; i < size; ++i) {
        const std::uint32_t unit = in[i];
        out[i] = static_cast<wchar_t>(unit);
        surrogates |= static_cast<std::uint32_t>(unit - 0xD800u < 0x800u);
    }
    if (surrogates == 0) {
        return utf16.size();
    }
    wchar_t* to = out;
    for (std::size_t i = 0; i < utf16.size(); ++i) {
        const char16_t unit = utf16[i];
        if (!isSurrogate(unit)) {
            *to++ = static_cast<wchar_t>(unit);
        } else if (unit <= 0xDBFF && i + 1 < utf16.size() && utf16[i + 1] >= 0xDC00 &&
                   utf16[i + 1] <= 0xDFFF) {
            *to++ =
                static_cast<wchar_t>(0x10000 + ((unit - 0xD800) << 10) + (utf16[i + 1] - 0xDC00));
            ++i;
        } else {
            utf16ToCodePoints(std::u16string(utf16));  // throws with the conversion's own text
        }
    }
    return static_cast<std::size_t>(to - out);
}

// Code points of the Basic Multilingual Plane (the common case) narrow in one vectorised pass;
// anything else unit by unit.
void appendUtf16(std::wstring_view codePoints, std::u16string& out) {
    const wchar_t* in = codePoints.data();
    const std::size_t size = codePoints.size();
    std::uint32_t outside = 0;
    for (std::size_t i = 0; i < size; ++i) {
        const auto v = static_cast<std::uint32_t>(in[i]);
        outside |= static_cast<std::uint32_t>(v > 0xFFFFu) |
                   static_cast<std::uint32_t>(v - 0xD800u < 0x800u);
    }
    const std::size_t start = out.size();
    if (outside == 0) {
        out.resize(start + size);
        char16_t* to = out.data() + start;
        for (std::size_t i = 0; i < size; ++i) {
            to[i] = static_cast<char16_t>(in[i]);
        }
        return;
    }
    std::size_t units = size;
    for (const wchar_t c : codePoints) {
        units += static_cast<std::uint32_t>(c) > 0xFFFF ? 1 : 0;
    }
    out.resize(start + units);
    char16_t* to = out.data() + start;
    for (const wchar_t c : codePoints) {
        const auto v = static_cast<std::uint32_t>(c);
        if (v < 0xD800 || (v > 0xDFFF && v <= 0xFFFF)) {
            *to++ = static_cast<char16_t>(v);
        } else if (v > 0xFFFF && v <= 0x10FFFF) {
            *to++ = static_cast<char16_t>(0xD800 + ((v - 0x10000) >> 10));
            *to++ = static_cast<char16_t>(0xDC00 + ((v - 0x10000) & 0x3FF));
        } else {
            out.resize(start);
            codePointsToUtf16(std::wstring(1, c));  // throws with the conversion's own text
        }
    }
}

}  // namespace foundation::network::iri::detail
