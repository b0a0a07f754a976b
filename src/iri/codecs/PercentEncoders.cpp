#include "iri/codecs/PercentEncoders.h"

namespace foundation::network::iri::detail {

namespace {

constexpr wchar_t kHexDigits[] = L"0123456789ABCDEF";

constexpr AsciiSet kUnsafeAscii =
    AsciiSet(L"\"<>\\^`{|}").addRange(0x00, 0x1F).addRange(0x7F, 0x7F);

// Bytes of `codePoint` in the UTF-8 bit layout, extended beyond U+10FFFF (up to six bytes).
int utf8Bytes(std::uint32_t codePoint, unsigned char (&bytes)[6]) {
    if (codePoint < 0x80u) {
        bytes[0] = static_cast<unsigned char>(codePoint);
        return 1;
    }
    int length = codePoint < 0x800u       ? 2
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

}  // namespace

void appendEscapedByte(std::wstring& out, unsigned byte) {
    out.push_back(L'%');
    out.push_back(kHexDigits[(byte >> 4) & 0x0Fu]);
    out.push_back(kHexDigits[byte & 0x0Fu]);
}

void appendEscapedUtf8(std::wstring& out, std::uint32_t codePoint) {
    unsigned char bytes[6];
    const int length = utf8Bytes(codePoint, bytes);
    for (int i = 0; i < length; ++i) {
        appendEscapedByte(out, bytes[i]);
    }
}

std::wstring encodeToUri(std::wstring_view text) {
    std::size_t extra = 0;
    for (const wchar_t c : text) {
        if (c <= 0x20 || c >= 0x7F) {
            extra += 8;
        }
    }
    std::wstring out;
    out.reserve(text.size() + extra);
    for (const wchar_t c : text) {
        if (c > 0x20 && c < 0x7F) {
            out.push_back(c);
        } else {
            appendEscapedUtf8(out, static_cast<std::uint32_t>(c));
        }
    }
    return out;
}

bool isUnsafeInIri(std::uint32_t c) {
    if (c < 0x80u) {
        return kUnsafeAscii.contains(static_cast<wchar_t>(c));
    }
    if (c <= 0x9Fu) {
        return true;
    }
    if (c == 0x200Eu || c == 0x200Fu || (c >= 0x202Au && c <= 0x202Eu)) {
        return true;
    }
    if ((c >= 0xD800u && c <= 0xDFFFu) || (c >= 0xFDD0u && c <= 0xFDEFu) ||
        (c >= 0xFFF0u && c <= 0xFFFFu)) {
        return true;
    }
    return c >= 0x10000u && ((c & 0xFFFFu) == 0xFFFEu || (c & 0xFFFFu) == 0xFFFFu);
}

bool isPrivateUse(std::uint32_t c) {
    return (c >= 0xE000u && c <= 0xF8FFu) || (c >= 0xE0000u && c <= 0xE0FFFu) ||
           (c >= 0xF0000u && c <= 0xFFFFDu) || (c >= 0x100000u && c <= 0x10FFFDu);
}

std::wstring encodeForIri(std::wstring_view text, const AsciiSet& alsoEscape) {
    std::wstring out;
    out.reserve(text.size());
    for (const wchar_t c : text) {
        const auto codePoint = static_cast<std::uint32_t>(c);
        if (alsoEscape.contains(c) || isUnsafeInIri(codePoint) || isPrivateUse(codePoint) ||
            codePoint > 0x10FFFFu) {
            appendEscapedUtf8(out, codePoint);
        } else {
            out.push_back(c);
        }
    }
    return out;
}

}  // namespace foundation::network::iri::detail
