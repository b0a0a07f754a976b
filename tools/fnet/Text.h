/// @file
/// @brief UTF-8 (the terminal's text) to and from UTF-16 (the library's text).
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace fnet {

/// UTF-8 to UTF-16; nothing when the input is not valid UTF-8.
std::optional<std::u16string> utf8ToUtf16(std::string_view utf8);

/// UTF-16 to UTF-8; an unpaired surrogate becomes U+FFFD.
std::string utf16ToUtf8(std::u16string_view utf16);

/// The text with every invalid UTF-8 sequence replaced by U+FFFD.
std::string sanitizeUtf8(std::string_view utf8);

/// The message for an input that is not UTF-8.
inline constexpr const char* kInvalidUtf8 = "input is not valid UTF-8";

}  // namespace fnet
