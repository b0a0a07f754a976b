#include "Json.h"

#include <boost/json/array.hpp>

#include "Text.h"

namespace fnet {

boost::json::string jsonSafe(std::string_view utf8) {
    const std::string text = sanitizeUtf8(utf8);
    return boost::json::string(text.data(), text.size());
}

boost::json::value textOrNull(const std::optional<std::string>& utf8) {
    if (!utf8) {
        return nullptr;
    }
    return jsonSafe(*utf8);
}

boost::json::value textArray(const std::vector<std::string>& utf8) {
    boost::json::array array;
    for (const auto& text : utf8) {
        array.emplace_back(jsonSafe(text));
    }
    return array;
}

}  // namespace fnet
