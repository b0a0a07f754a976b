#include "iri/grammar/Unicode.h"

#include <cstdint>
#include <stdexcept>

#include <boost/regex/pending/unicode_iterator.hpp>

namespace foundation::network::iri::detail {

namespace {

// The checked constructors make Boost refuse a sequence cut short at either end instead of
// reading past it.
template <class Decoder, class Iterator, class Out>
void decodeAll(Iterator first, Iterator last, Out& out) {
    const Decoder end(last, first, last);
    for (Decoder it(first, first, last); it != end; ++it) {
        out.push_back(static_cast<typename Out::value_type>(*it));
    }
}

// Boost's decoder reads a lead byte 0xF8 to 0xFF as a four-byte lead and so takes, for example,
// F8 90 80 80 for U+10000; such a byte is never UTF-8, so it is refused before decoding.
void refuseImpossibleBytes(const std::string& bytes) {
    for (const char byte : bytes) {
        if (static_cast<unsigned char>(byte) >= 0xF8u) {
            throw std::out_of_range(
                "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character");
        }
    }
}

}  // namespace

std::wstring utf16ToCodePoints(const std::u16string& text) {
    std::wstring out;
    out.reserve(text.size());
    decodeAll<boost::u16_to_u32_iterator<std::u16string::const_iterator>>(text.begin(), text.end(),
                                                                          out);
    return out;
}

std::u16string codePointsToUtf16(const std::wstring& text) {
    using Encoder = boost::u32_to_u16_iterator<std::wstring::const_iterator, char16_t>;
    std::u16string out;
    out.reserve(text.size());
    for (Encoder it(text.begin()), end(text.end()); it != end; ++it) {
        out.push_back(*it);
    }
    return out;
}

std::string codePointsToUtf8(const std::wstring& text) {
    using Encoder = boost::u32_to_u8_iterator<std::wstring::const_iterator, char>;
    std::string out;
    out.reserve(text.size());
    for (Encoder it(text.begin()), end(text.end()); it != end; ++it) {
        out.push_back(*it);
    }
    return out;
}

std::wstring utf8ToCodePoints(const std::string& bytes) {
    refuseImpossibleBytes(bytes);
    std::wstring out;
    out.reserve(bytes.size());
    decodeAll<boost::u8_to_u32_iterator<std::string::const_iterator>>(bytes.begin(), bytes.end(),
                                                                      out);
    return out;
}

std::wstring codePointsToUtf8Octets(const std::wstring& text) {
    using Encoder = boost::u32_to_u8_iterator<std::wstring::const_iterator, unsigned char>;
    std::wstring out;
    out.reserve(text.size());
    for (Encoder it(text.begin()), end(text.end()); it != end; ++it) {
        out.push_back(static_cast<wchar_t>(*it));
    }
    return out;
}

std::wstring utf8OctetsToCodePoints(const std::wstring& octets) {
    // Boost's UTF-8 decoder wants 8-bit units; anything above 0xFF cannot be an octet.
    std::string bytes;
    bytes.reserve(octets.size());
    for (const wchar_t octet : octets) {
        if (octet < 0 || octet > 0xFF) {
            throw std::out_of_range(
                "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character");
        }
        bytes.push_back(static_cast<char>(octet));
    }
    return utf8ToCodePoints(bytes);
}

std::string toAsciiStringAssumingAsciiCodePoints(const std::wstring& text) {
    std::string out;
    out.reserve(text.size());
    for (const wchar_t c : text) {
        out.push_back(static_cast<char>(static_cast<std::uint32_t>(c) & 0xFFu));
    }
    return out;
}

std::string toAsciiStringAssumingAsciiCodePoints(const std::u16string& text) {
    std::string out;
    out.reserve(text.size());
    for (const char16_t c : text) {
        out.push_back(static_cast<char>(c & 0xFFu));
    }
    return out;
}

namespace {

bool isContinuation(unsigned char byte) {
    return (byte & 0xC0u) == 0x80u;
}

void appendEscape(std::string& out, unsigned char byte) {
    static constexpr char kHex[] = "0123456789ABCDEF";
    out.push_back('%');
    out.push_back(kHex[byte >> 4]);
    out.push_back(kHex[byte & 0x0Fu]);
}

// Keeps every well-formed sequence (by its lead byte's announced length, five- and six-byte
// forms included) and escapes every other byte.
std::string repairUtf8(const std::string& bytes) {
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
            whole = isContinuation(static_cast<unsigned char>(bytes[i + k]));
        }
        if (whole) {
            out.append(bytes, i, length);
            i += length;
        } else {
            appendEscape(out, byte);
            ++i;
        }
    }
    return out;
}

}  // namespace

std::size_t announcedUtf8Length(unsigned char byte) {
    if ((byte & 0xE0u) == 0xC0u)
        return 2;
    if ((byte & 0xF0u) == 0xE0u)
        return 3;
    if ((byte & 0xF8u) == 0xF0u)
        return 4;
    if ((byte & 0xFCu) == 0xF8u)
        return 5;
    if ((byte & 0xFEu) == 0xFCu)
        return 6;
    return 0;
}

Utf8Check validateUTF8String(const std::string& bytes) {
    try {
        refuseImpossibleBytes(bytes);
        using Decoder = boost::u8_to_u32_iterator<std::string::const_iterator>;
        const Decoder end(bytes.end(), bytes.begin(), bytes.end());
        for (Decoder it(bytes.begin(), bytes.begin(), bytes.end()); it != end; ++it) {
            static_cast<void>(*it);
        }
        return {false, bytes};
    } catch (const std::out_of_range&) {
        return {true, repairUtf8(bytes)};
    }
}

}  // namespace foundation::network::iri::detail
