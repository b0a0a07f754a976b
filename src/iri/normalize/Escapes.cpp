#include "iri/normalize/Escapes.h"

#include <cstdint>
#include <vector>

#include "iri/grammar/CharacterRules.h"

namespace foundation::network::iri::detail {
namespace {

int hexValue(char16_t c) {
    if (c >= u'0' && c <= u'9') {
        return c - u'0';
    }
    if (c >= u'a' && c <= u'f') {
        return c - u'a' + 10;
    }
    if (c >= u'A' && c <= u'F') {
        return c - u'A' + 10;
    }
    return -1;
}

bool isEscapeAt(const std::u16string& text, std::size_t i) {
    return text[i] == u'%' && i + 2 < text.size() && hexValue(text[i + 1]) >= 0 &&
           hexValue(text[i + 2]) >= 0;
}

bool isAsciiUnreserved(std::uint32_t c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '.' || c == '_' || c == '~';
}

// The code point of the well-formed UTF-8 sequence at bytes[i], and its length; 0 when the
// bytes there are not one.
std::size_t decodeUtf8(const std::vector<unsigned char>& bytes, std::size_t i, std::uint32_t& cp) {
    const unsigned char lead = bytes[i];
    std::size_t length = 0;
    std::uint32_t minimum = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2, cp = lead & 0x1Fu, minimum = 0x80;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3, cp = lead & 0x0Fu, minimum = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4, cp = lead & 0x07u, minimum = 0x10000;
    } else {
        return 0;
    }
    if (i + length > bytes.size()) {
        return 0;
    }
    for (std::size_t k = 1; k < length; ++k) {
        if ((bytes[i + k] & 0xC0u) != 0x80u) {
            return 0;
        }
        cp = (cp << 6) | (bytes[i + k] & 0x3Fu);
    }
    const bool surrogate = cp >= 0xD800 && cp <= 0xDFFF;
    return cp < minimum || cp > 0x10FFFF || surrogate ? 0 : length;
}

void appendCodePoint(std::u16string& out, std::uint32_t cp) {
    if (cp < 0x10000) {
        out.push_back(static_cast<char16_t>(cp));
    } else {
        cp -= 0x10000;
        out.push_back(static_cast<char16_t>(0xD800 + (cp >> 10)));
        out.push_back(static_cast<char16_t>(0xDC00 + (cp & 0x3FF)));
    }
}

void appendEscape(std::u16string& out, const std::u16string& text, std::size_t at, bool upperHex) {
    static constexpr char16_t kHex[] = u"0123456789ABCDEF";
    out.push_back(u'%');
    if (upperHex) {
        out.push_back(kHex[hexValue(text[at + 1])]);
        out.push_back(kHex[hexValue(text[at + 2])]);
    } else {
        out.append(text, at + 1, 2);
    }
}

}  // namespace

std::u16string normalizeEscapes(const std::u16string& text, bool upperHex, bool decode) {
    if (text.find(u'%') == std::u16string::npos) {
        return text;
    }
    std::u16string out;
    out.reserve(text.size());
    std::vector<unsigned char> bytes;
    std::vector<std::size_t> positions;
    std::size_t i = 0;
    while (i < text.size()) {
        if (!isEscapeAt(text, i)) {
            out.push_back(text[i++]);
            continue;
        }
        // A run of escapes, so that a multi-byte sequence is seen whole.
        bytes.clear();
        positions.clear();
        while (i < text.size() && isEscapeAt(text, i)) {
            bytes.push_back(
                static_cast<unsigned char>(hexValue(text[i + 1]) * 16 + hexValue(text[i + 2])));
            positions.push_back(i);
            i += 3;
        }
        std::size_t b = 0;
        while (b < bytes.size()) {
            std::uint32_t cp = bytes[b];
            std::size_t length = 1;
            bool plain = false;
            if (cp < 0x80) {
                plain = decode && isAsciiUnreserved(cp);
            } else if (decode) {
                length = decodeUtf8(bytes, b, cp);
                plain = length != 0 && irigrammar::chars::isUcschar(cp);
                length = length == 0 ? 1 : length;
            }
            if (plain) {
                appendCodePoint(out, cp);
            } else {
                for (std::size_t k = 0; k < length; ++k) {
                    appendEscape(out, text, positions[b + k], upperHex);
                }
            }
            b += length;
        }
    }
    return out;
}

std::u16string lowerOutsideEscapes(const std::u16string& text) {
    std::u16string out(text);
    for (std::size_t i = 0; i < out.size(); ++i) {
        if (isEscapeAt(out, i)) {
            i += 2;
        } else if (out[i] >= u'A' && out[i] <= u'Z') {
            out[i] = static_cast<char16_t>(out[i] + (u'a' - u'A'));
        }
    }
    return out;
}

}  // namespace foundation::network::iri::detail
