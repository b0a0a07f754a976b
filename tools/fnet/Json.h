/// @file
/// @brief Writes one JSON object per line.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace fnet {

/// A JSON string literal for UTF-8 text; invalid UTF-8 bytes become U+FFFD.
std::string jsonString(std::string_view utf8);

/// Builds one JSON object, fields in insertion order.
class JsonObject {
public:
    JsonObject& text(std::string_view key, std::string_view utf8);
    JsonObject& boolean(std::string_view key, bool value);
    JsonObject& number(std::string_view key, std::int64_t value);
    JsonObject& null(std::string_view key);
    /// `json` must already be valid JSON (an object or array built here).
    JsonObject& raw(std::string_view key, std::string_view json);
    /// The text, or null when `utf8` is absent.
    JsonObject& optionalText(std::string_view key, const std::string* utf8);
    JsonObject& texts(std::string_view key, const std::vector<std::string>& utf8);

    std::string str() const { return body_ + "}"; }

private:
    void key(std::string_view name);
    std::string body_ = "{";
};

}  // namespace fnet
