/// @file
/// @brief Values for the JSON records, built with Boost.JSON.
#pragma once

#include <boost/json/string.hpp>
#include <boost/json/value.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fnet {

/// A JSON string of UTF-8 text; ill-formed parts become U+FFFD.
boost::json::string jsonSafe(std::string_view utf8);

/// The text, or null when absent.
boost::json::value textOrNull(const std::optional<std::string>& utf8);

/// An array of texts.
boost::json::value textArray(const std::vector<std::string>& utf8);

}  // namespace fnet
