#include "Text.h"

#include <stdexcept>

namespace fnet {

std::optional<std::u16string> decodeInput(std::string_view utf8) {
    try {
        return foundation::network::utf8ToUtf16(utf8);
    } catch (const std::invalid_argument&) {
        return std::nullopt;
    }
}

std::string sanitizeUtf8(std::string_view utf8) {
    return utf16ToUtf8(foundation::network::utf8ToUtf16Replacing(utf8));
}

}  // namespace fnet
