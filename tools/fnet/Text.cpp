#include "Text.h"

#include <algorithm>
#include <boost/json/serialize.hpp>
#include <boost/json/string_view.hpp>
#include <stdexcept>

namespace fnet {

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool isUtf8(std::string_view text) {
    // Plain ASCII, the common case, needs no conversion to be checked.
    return isAscii(text) || decodeInput(text).has_value();
}

std::optional<std::u16string> decodeInput(std::string_view utf8) {
    try {
        return foundation::network::utf8ToUtf16(utf8);
    } catch (const std::invalid_argument&) {
        return std::nullopt;
    }
}

std::string sanitizeUtf8(std::string_view utf8) {
    if (isUtf8(utf8)) {
        return std::string(utf8);
    }
    return utf16ToUtf8(foundation::network::utf8ToUtf16Replacing(utf8));
}

std::string jsonString(std::string_view utf8) {
    const std::string text = sanitizeUtf8(utf8);
    return boost::json::serialize(boost::json::string_view(text.data(), text.size()));
}

std::string printable(std::string_view utf8) {
    const std::string text = jsonString(utf8);
    std::string out;
    out.reserve(text.size());
    // The JSON literal without its quotes, and with its escaped quotes and backslashes plain
    // again: only the control characters stay escaped.
    for (std::size_t i = 1; i + 1 < text.size(); ++i) {
        if (text[i] == '\\' && (text[i + 1] == '"' || text[i + 1] == '\\')) {
            ++i;
        }
        out += text[i];
    }
    return out;
}

}  // namespace fnet
