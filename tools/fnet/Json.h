/// @file
/// @brief Values for the JSON records, built with Boost.JSON.
#pragma once

#include <boost/json/value.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fnet {

/// The text made fit for a JSON string: a copy, with ill-formed UTF-8 parts as U+FFFD.
std::string jsonSafe(std::string_view utf8);

/// Sets `target` to the text, or to null when it is absent.
void setText(boost::json::value& target, const std::optional<std::string>& utf8);

/// Sets `target` to an array of the texts.
void setTexts(boost::json::value& target, const std::vector<std::string>& utf8);

}  // namespace fnet
