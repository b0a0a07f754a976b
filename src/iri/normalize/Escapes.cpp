#include "iri/normalize/Escapes.h"

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <cstdint>
#include <vector>

#include "iri/grammar/CharacterRules.h"
#include "text/Text.h"

namespace foundation::network::iri::detail {
namespace {

using text::hexValue;

bool isEscapeAt(const std::u16string& text, std::size_t i) {
    return text[i] == u'%' && i + 2 < text.size() && hexValue(text[i + 1]) >= 0 &&
           hexValue(text[i + 2]) >= 0;
}

bool isAsciiUnreserved(std::uint32_t c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '.' || c == '_' || c == '~';
}

// The code point of the well-formed UTF-8 sequence at bytes[i], and its length; 0 when the
// bytes there are not one (ICU checks after Unicode's table of well-formed sequences).
std::size_t decodeUtf8(const std::vector<unsigned char>& bytes, std::size_t i, std::uint32_t& cp) {
    std::int32_t next = static_cast<std::int32_t>(i);
    UChar32 c = 0;
    U8_NEXT(bytes.data(), next, static_cast<std::int32_t>(bytes.size()), c);
    if (c < 0) {
        return 0;
    }
    cp = static_cast<std::uint32_t>(c);
    return static_cast<std::size_t>(next) - i;
}

void appendCodePoint(std::u16string& out, std::uint32_t cp) {
    if (U16_LENGTH(cp) == 1) {
        out.push_back(static_cast<char16_t>(cp));
    } else {
        out.push_back(U16_LEAD(cp));
        out.push_back(U16_TRAIL(cp));
    }
}

// Whether writing `c` after `out` could make a new escape with a stray "%" ("%%333" would
// become "%33", and that "3" on a second pass): the escape is then kept, so that normalising
// twice changes nothing.
bool wouldFormEscape(const std::u16string& out, std::uint32_t c) {
    if (c >= 0x80 || hexValue(static_cast<char16_t>(c)) < 0) {
        return false;
    }
    const std::size_t n = out.size();
    return (n >= 1 && out[n - 1] == u'%') ||
           (n >= 2 && out[n - 2] == u'%' && hexValue(out[n - 1]) >= 0);
}

void appendEscape(std::u16string& out, const std::u16string& text, std::size_t at, bool upperHex) {
    if (upperHex) {
        text::appendPercentEscape(
            out, static_cast<unsigned>(hexValue(text[at + 1]) * 16 + hexValue(text[at + 2])));
    } else {
        out.push_back(u'%');
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
                plain = decode && isAsciiUnreserved(cp) && !wouldFormEscape(out, cp);
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
