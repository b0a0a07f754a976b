#include "iri/codecs/PercentEncoders.h"

#include "text/Text.h"

namespace foundation::network::iri::detail {

namespace {

constexpr AsciiSet kUnsafeAscii =
    AsciiSet(L"\"<>\\^`{|}").addRange(0x00, 0x1F).addRange(0x7F, 0x7F);

}  // namespace

void appendEscapedByte(std::wstring& out, unsigned byte) {
    text::appendPercentEscape(out, byte);
}

void appendEscapedUtf8(std::wstring& out, std::uint32_t codePoint) {
    unsigned char bytes[6];
    const int length = text::utf8BytesExtended(codePoint, bytes);
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
