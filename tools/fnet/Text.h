/// @file
/// @brief The tool's text at its edges: arguments and lines are UTF-8, the library speaks UTF-16.
/// Conversions go through the library's public UTF-8 door.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "foundation/network/Utf8.h"

namespace fnet {

using foundation::network::utf16ToUtf8;

/// An input as UTF-16; nothing when it is not valid UTF-8 (the caller reports kInvalidUtf8).
std::optional<std::u16string> decodeInput(std::string_view utf8);

/// Whether every byte of the text is ASCII.
bool isAscii(std::string_view text);

/// Whether the text is well-formed UTF-8.
bool isUtf8(std::string_view text);

/// The text with every ill-formed UTF-8 part replaced by U+FFFD, for echoing inputs.
std::string sanitizeUtf8(std::string_view utf8);

/// The text as it may be shown in a message on a terminal: ill-formed UTF-8 replaced by U+FFFD,
/// control characters (NUL, ESC, DEL...) written as JSON escapes ("\u0000", "\n").
std::string printable(std::string_view utf8);

/// A JSON string literal (quoted, escaped) for UTF-8 text; ill-formed parts become U+FFFD.
std::string jsonString(std::string_view utf8);

/// The message for an input that is not UTF-8.
inline constexpr const char* kInvalidUtf8 = "input is not valid UTF-8";

}  // namespace fnet
