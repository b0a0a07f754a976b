/// @file
/// @brief Short names for the UTF-8 door in tests: literals are written as UTF-8.
#pragma once

#include <string>
#include <string_view>

#include "foundation/network/Utf8.h"

namespace fntest {

inline std::u16string u16(std::string_view utf8) {
    return foundation::network::utf8ToUtf16(utf8);
}

inline std::string utf8(std::u16string_view text) {
    return foundation::network::utf16ToUtf8(text);
}

}  // namespace fntest
