#include "iri/grammar/Unicode.h"

#include <algorithm>
#include <cstdint>
#include <stdexcept>

#include <boost/regex/pending/unicode_iterator.hpp>

#include "iri/Utf16.h"
#include "text/Text.h"

namespace foundation::network::iri::detail {

namespace {

constexpr const char* kInvalidUtf8 =
    "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character";

// The text module converts; Boost's iterators run only on text the module refused, so that the
// exception carries Boost's own text, as it always has.
template <class Decoder, class Iterator>
[[noreturn]] void throwWithBoostText(Iterator first, Iterator last) {
    const Decoder end(last, first, last);
    for (Decoder it(first, first, last); it != end; ++it) {
        static_cast<void>(*it);
    }
    // Boost reads a lead byte 0xF8 to 0xFF as a four-byte lead and may accept what follows; such
    // a byte is never UTF-8 and gets the text Boost gives every bad sequence.
    throw std::out_of_range(kInvalidUtf8);
}

bool isWellFormedUtf8(std::string_view bytes, std::u16string& scratch) {
    return text::utf8ToUtf16(bytes, scratch, false) == text::kWhole;
}

}  // namespace

std::size_t writeCodePoints(std::u16string_view utf16, wchar_t* out) {
    std::size_t written = 0;
    if (text::utf16ToCodePoints(utf16, out, written) != text::kWhole) {
        const std::u16string copy(utf16);
        throwWithBoostText<boost::u16_to_u32_iterator<std::u16string::const_iterator>>(copy.begin(),
                                                                                       copy.end());
    }
    return written;
}

void appendUtf16(std::wstring_view codePoints, std::u16string& out) {
    const std::size_t at = text::codePointsToUtf16(codePoints, out);
    if (at != text::kWhole) {
        boost::detail::invalid_utf32_code_point(static_cast<std::uint32_t>(codePoints[at]));
    }
}

std::wstring utf16ToCodePoints(const std::u16string& text) {
    return widen(text);
}

std::u16string codePointsToUtf16(const std::wstring& text) {
    return narrow(text);
}

// Surrogate values are written in the UTF-8 bit layout like any other (Boost's encoder does);
// only values beyond U+10FFFF are refused.
std::string codePointsToUtf8(const std::wstring& text) {
    std::string out;
    out.reserve(text.size());
    for (const wchar_t c : text) {
        const auto v = static_cast<std::uint32_t>(c);
        if (v > 0x10FFFFu) {
            boost::detail::invalid_utf32_code_point(v);
        }
        unsigned char bytes[6];
        out.append(reinterpret_cast<const char*>(bytes),
                   static_cast<std::size_t>(text::utf8BytesExtended(v, bytes)));
    }
    return out;
}

std::wstring utf8ToCodePoints(const std::string& bytes) {
    std::u16string utf16;
    if (!isWellFormedUtf8(bytes, utf16)) {
        throwWithBoostText<boost::u8_to_u32_iterator<std::string::const_iterator>>(bytes.begin(),
                                                                                   bytes.end());
    }
    return widen(utf16);
}

std::wstring codePointsToUtf8Octets(const std::wstring& text) {
    const std::string bytes = codePointsToUtf8(text);
    std::wstring out(bytes.size(), L'\0');
    std::transform(bytes.begin(), bytes.end(), out.begin(), [](char byte) {
        return static_cast<wchar_t>(static_cast<unsigned char>(byte));
    });
    return out;
}

std::string toAsciiStringAssumingAsciiCodePoints(const std::wstring& text) {
    std::string out;
    out.reserve(text.size());
    for (const wchar_t c : text) {
        out.push_back(static_cast<char>(static_cast<std::uint32_t>(c) & 0xFFu));
    }
    return out;
}

Utf8Check validateUTF8String(const std::string& bytes) {
    std::u16string scratch;
    if (isWellFormedUtf8(bytes, scratch)) {
        return {false, bytes};
    }
    return {true, text::escapeBrokenUtf8(bytes)};
}

}  // namespace foundation::network::iri::detail
