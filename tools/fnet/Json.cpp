#include "Json.h"

#include <boost/json/array.hpp>

#include "Text.h"

namespace fnet {

std::string jsonSafe(std::string_view utf8) {
    return sanitizeUtf8(utf8);
}

void setText(boost::json::value& target, const std::optional<std::string>& utf8) {
    if (utf8) {
        target = jsonSafe(*utf8);
    } else {
        target = nullptr;
    }
}

void setTexts(boost::json::value& target, const std::vector<std::string>& utf8) {
    boost::json::array& array = target.emplace_array();
    array.reserve(utf8.size());
    for (const auto& text : utf8) {
        array.emplace_back(jsonSafe(text));
    }
}

}  // namespace fnet
