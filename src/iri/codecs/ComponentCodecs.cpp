#include "iri/codecs/ComponentCodecs.h"

#include <stdexcept>

#include "iri/Utf16.h"
#include "iri/codecs/DoNotDecodeSets.h"
#include "iri/codecs/PercentDecoder.h"
#include "iri/codecs/PercentEncoders.h"
#include "iri/grammar/IriGrammar.h"
#include "iri/grammar/Parts.h"
#include "iri/grammar/Unicode.h"
#include "text/Text.h"

namespace foundation::network::iri::detail {

namespace {

// RFC 3986 unreserved and sub-delims, the characters every component may hold raw.
constexpr AsciiSet kUnreservedAndSubDelims =
    AsciiSet(L"-._~!$&'()*+,;=").addRange(L'a', L'z').addRange(L'A', L'Z').addRange(L'0', L'9');

// The ASCII characters each component escapes when written from its decoded form: all that
// its grammar rule does not take raw, its do-not-decode characters, and "%" itself.
constexpr AsciiSet escapedAscii(std::wstring_view alsoRaw, std::wstring_view doNotDecode) {
    return AsciiSet(kUnreservedAndSubDelims)
        .add(alsoRaw)
        .remove(doNotDecode)
        .remove(L"%")
        .complement();
}

constexpr AsciiSet kUserInfoEscaped = escapedAscii(L":", kUserInfoDoNotDecode);
constexpr AsciiSet kHostEscaped = escapedAscii(L"", kHostDoNotDecode);
constexpr AsciiSet kPathEscaped = escapedAscii(L":@/", kPathDoNotDecode);
constexpr AsciiSet kQueryEscaped = escapedAscii(L":@/?", kQueryDoNotDecode);
constexpr AsciiSet kFragmentEscaped = escapedAscii(L":@/?", kFragmentDoNotDecode);

bool isScalarValue(wchar_t c) {
    const auto v = static_cast<std::uint32_t>(c);
    return v <= 0x10FFFFu && (v < 0xD800u || v > 0xDFFFu);
}

// The repaired bytes may still hold sequences the strict decoder refuses (five- and six-byte
// forms, encoded surrogates): decode sequence by sequence and keep every such byte escaped.
std::wstring decodeKeepingInvalidEscaped(const std::string& bytes) {
    std::wstring out;
    out.reserve(bytes.size());
    std::size_t i = 0;
    while (i < bytes.size()) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        if (byte < 0x80u) {
            out.push_back(static_cast<wchar_t>(byte));
            ++i;
            continue;
        }
        std::size_t length = text::announcedUtf8Length(byte);
        if (length == 0 || i + length > bytes.size()) {
            length = 1;
        }
        // The strict decoder takes one well-formed sequence, which is one scalar value.
        std::u16string one;
        const bool decoded =
            length > 1 && text::utf8ToUtf16(std::string_view(bytes).substr(i, length), one,
                                            false) == text::kWhole;
        if (decoded) {
            out += widen(one);
        } else {
            for (std::size_t k = 0; k < length; ++k) {
                appendEscapedByte(out, static_cast<unsigned char>(bytes[i + k]));
            }
        }
        i += length;
    }
    return out;
}

std::wstring utf8BytesToText(const std::string& bytes) {
    try {
        std::wstring text = utf8ToCodePoints(bytes);
        bool allScalar = true;
        for (const wchar_t c : text) {
            allScalar = allScalar && isScalarValue(c);
        }
        if (allScalar) {
            return text;
        }
    } catch (const std::out_of_range&) {
    }
    return decodeKeepingInvalidEscaped(bytes);
}

// Text the pipeline would give back unchanged: no escape to resolve, no space (every
// do-not-decode set keeps "%20"), only Unicode scalar values.
bool decodesToItself(const std::wstring& text, bool asOctets) {
    for (const wchar_t c : text) {
        if (c == L'%' || c == L' ' || !isScalarValue(c) || (asOctets && c >= 0x80)) {
            return false;
        }
    }
    return true;
}

bool isIpLiteral(const std::wstring& host) {
    if (host.size() < 2 || host.front() != L'[' || host.back() != L']') {
        return false;
    }
    const std::wstring probe = L"//" + host;
    Parts<std::wstring> parts;
    return irigrammar::parseString<std::wstring>(probe.cbegin(), probe.cend(), parts) &&
           parts.host.present && parts.host.first == 2 && parts.host.last == probe.size();
}

// A path with no authority before it must not begin with "//" (it would read as one), and a
// relative reference's first segment must not hold ":" (it would read as a scheme).
void protectPathStart(std::wstring& path, const ComponentOptions& options) {
    if (options.hostPresent || options.userInfoPresent) {
        return;
    }
    if (path.size() >= 2 && path[0] == L'/' && path[1] == L'/') {
        path.replace(1, 1, L"%2F");
    }
    if (options.schemePresent) {
        return;
    }
    for (std::size_t i = 0; i < path.size() && path[i] != L'/'; ++i) {
        if (path[i] == L':') {
            path.replace(i, 1, L"%3A");
            i += 2;
        }
    }
}

// The query's decoded form may hold UTF-8 octets, one per element.
std::wstring octetsToIri(const std::wstring& octets) {
    std::wstring out;
    out.reserve(octets.size());
    for (const wchar_t c : octets) {
        const auto v = static_cast<std::uint32_t>(c);
        if (v < 0x80u) {
            if (kQueryEscaped.contains(c)) {
                appendEscapedByte(out, v);
            } else {
                out.push_back(c);
            }
        } else if (v <= 0xFFu) {
            appendEscapedByte(out, v);
        } else {
            appendEscapedUtf8(out, v);
        }
    }
    return out;
}

}  // namespace

std::wstring decodePercentEscapes(const std::wstring& text, std::wstring_view doNotDecode,
                                  bool asOctets) {
    if (decodesToItself(text, asOctets)) {
        return text;
    }
    const std::wstring resolved = percentDecode(encodeToUri(text), doNotDecode);
    if (asOctets) {
        std::wstring octets;
        octets.reserve(resolved.size());
        for (const wchar_t c : resolved) {
            octets.push_back(static_cast<wchar_t>(static_cast<std::uint32_t>(c) & 0xFFu));
        }
        return octets;
    }
    const Utf8Check checked = validateUTF8String(toAsciiStringAssumingAsciiCodePoints(resolved));
    return utf8BytesToText(checked.bytes);
}

std::wstring iriToUri(const std::wstring& iri) {
    return encodeToUri(iri);
}

std::wstring decodedToIri(ComponentKind kind, const ComponentOptions& options,
                          const std::wstring& decoded) {
    switch (kind) {
        case ComponentKind::UserInfo:
            return encodeForIri(decoded, kUserInfoEscaped);
        case ComponentKind::Host:
            return isIpLiteral(decoded) ? decoded : encodeForIri(decoded, kHostEscaped);
        case ComponentKind::Path: {
            std::wstring path = encodeForIri(decoded, kPathEscaped);
            protectPathStart(path, options);
            return path;
        }
        case ComponentKind::Query:
            return options.asOctets ? octetsToIri(decoded) : encodeForIri(decoded, kQueryEscaped);
        case ComponentKind::Fragment:
            return encodeForIri(decoded, kFragmentEscaped);
    }
    return decoded;
}

std::wstring decodedToUri(ComponentKind kind, const ComponentOptions& options,
                          const std::wstring& decoded) {
    return encodeToUri(decodedToIri(kind, options, decoded));
}

std::wstring iriToDecoded(ComponentKind, const ComponentOptions& options, const std::wstring& iri) {
    return decodePercentEscapes(iri, {}, options.asOctets);
}

}  // namespace foundation::network::iri::detail
