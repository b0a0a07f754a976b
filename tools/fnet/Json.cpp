#include "Json.h"

#include "Text.h"

namespace fnet {

std::string jsonString(std::string_view utf8) {
    static constexpr char kHex[] = "0123456789abcdef";
    const std::string text = sanitizeUtf8(utf8);
    std::string out = "\"";
    out.reserve(text.size() + 2);
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        switch (c) {
            case '"': out += "\\\""; break;
            case '\\': out += "\\\\"; break;
            case '\n': out += "\\n"; break;
            case '\r': out += "\\r"; break;
            case '\t': out += "\\t"; break;
            default:
                if (byte < 0x20 || byte == 0x7F) {
                    out += "\\u00";
                    out += kHex[byte >> 4];
                    out += kHex[byte & 0xF];
                } else {
                    out += c;
                }
        }
    }
    out += '"';
    return out;
}

void JsonObject::key(std::string_view name) {
    if (body_.size() > 1) {
        body_ += ',';
    }
    body_ += jsonString(name);
    body_ += ':';
}

JsonObject& JsonObject::text(std::string_view name, std::string_view utf8) {
    key(name);
    body_ += jsonString(utf8);
    return *this;
}

JsonObject& JsonObject::boolean(std::string_view name, bool value) {
    key(name);
    body_ += value ? "true" : "false";
    return *this;
}

JsonObject& JsonObject::number(std::string_view name, std::int64_t value) {
    key(name);
    body_ += std::to_string(value);
    return *this;
}

JsonObject& JsonObject::null(std::string_view name) {
    key(name);
    body_ += "null";
    return *this;
}

JsonObject& JsonObject::raw(std::string_view name, std::string_view json) {
    key(name);
    body_ += json;
    return *this;
}

JsonObject& JsonObject::optionalText(std::string_view name, const std::string* utf8) {
    return utf8 != nullptr ? text(name, *utf8) : null(name);
}

JsonObject& JsonObject::texts(std::string_view name, const std::vector<std::string>& utf8) {
    key(name);
    body_ += '[';
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        body_ += (i == 0 ? "" : ",") + jsonString(utf8[i]);
    }
    body_ += ']';
    return *this;
}

}  // namespace fnet
