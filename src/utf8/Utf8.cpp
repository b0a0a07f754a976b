#include "foundation/network/Utf8.h"

#include <stdexcept>

#include "foundation/core/except/Exception.h"
#include "text/Text.h"

namespace foundation::network {
namespace {

using InvalidText =
    foundation::core::except::detail::AnonymousInternalException<std::invalid_argument>;

}  // namespace

std::u16string utf8ToUtf16(std::string_view utf8) {
    std::u16string out;
    const std::size_t at = text::utf8ToUtf16(utf8, out, false);
    if (at != text::kWhole) {
        throw InvalidText("invalid UTF-8 at byte " + std::to_string(at));
    }
    return out;
}

std::u16string utf8ToUtf16Replacing(std::string_view utf8) {
    std::u16string out;
    text::utf8ToUtf16(utf8, out, true);
    return out;
}

std::string utf16ToUtf8(std::u16string_view utf16) {
    std::string out;
    const std::size_t at = text::utf16ToUtf8(utf16, out, false);
    if (at != text::kWhole) {
        throw InvalidText("unpaired UTF-16 surrogate at index " + std::to_string(at));
    }
    return out;
}

}  // namespace foundation::network
