#include "foundation/network/Utf8.h"

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <cstdint>
#include <stdexcept>

#include "foundation/core/except/Exception.h"

namespace foundation::network {
namespace {

using InvalidText =
    foundation::core::except::detail::AnonymousInternalException<std::invalid_argument>;

// ICU's U8_NEXT checks one sequence after Unicode's table of well-formed byte sequences and
// leaves the index after the maximal subpart of an ill-formed one; `onError` decides what an
// ill-formed part becomes.
template <class OnError>
std::u16string decode(std::string_view utf8, OnError onError) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(utf8.data());
    const std::size_t length = utf8.size();
    // At most one unit per byte: written through a pointer, the size fixed at the end.
    std::u16string out(length, u'\0');
    char16_t* units = out.data();
    std::size_t written = 0;
    std::size_t i = 0;
    while (i != length) {
        if (bytes[i] < 0x80) {  // the common case, ASCII, needs no decoding
            units[written++] = bytes[i++];
            continue;
        }
        const std::size_t start = i;
        UChar32 c = 0;
        U8_NEXT(bytes, i, length, c);
        if (c < 0) {
            c = onError(start);
        }
        U16_APPEND_UNSAFE(units, written, c);
    }
    out.resize(written);
    return out;
}

}  // namespace

std::u16string utf8ToUtf16(std::string_view utf8) {
    return decode(utf8, [](std::size_t at) -> UChar32 {
        throw InvalidText("invalid UTF-8 at byte " + std::to_string(at));
    });
}

std::u16string utf8ToUtf16Replacing(std::string_view utf8) {
    return decode(utf8, [](std::size_t) -> UChar32 { return 0xFFFD; });
}

std::string utf16ToUtf8(std::u16string_view utf16) {
    const char16_t* units = utf16.data();
    const std::size_t length = utf16.size();
    std::string out;
    out.reserve(length + length / 2);
    std::size_t i = 0;
    while (i != length) {
        const std::size_t start = i;
        UChar32 c = 0;
        U16_NEXT(units, i, length, c);
        if (U_IS_SURROGATE(c)) {
            throw InvalidText("unpaired UTF-16 surrogate at index " + std::to_string(start));
        }
        char sequence[U8_MAX_LENGTH];
        std::size_t written = 0;
        U8_APPEND_UNSAFE(sequence, written, c);
        out.append(sequence, written);
    }
    return out;
}

}  // namespace foundation::network
