/// @file
/// @brief Paths as segment lists, and dot-segment detection.
///
/// Paths are handled as UTF-16 units: the delimiters ("/", ".", ":") are ASCII, and no unit of a
/// surrogate pair equals one, so every split and scan gives the same answer as over code points.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <boost/container/small_vector.hpp>

namespace foundation::network::iri::detail {

using SegmentList = std::vector<std::u16string>;
/// Segments viewed in the path they were split from; most paths need no heap block.
using SegmentViews = boost::container::small_vector<std::u16string_view, 16>;

/// Splits a path into segments, every segment after the first keeping its leading "/", so that
/// concatenating the list gives the path back ("/a/b/" -> "/a", "/b", "/"; "a/b" -> "a", "/b";
/// "/a//b" -> "/a", "/", "/b"). Replaces `out` and returns true for every non-empty path;
/// returns false and leaves `out` untouched for the empty path.
bool splitPathIntoSegments(std::u16string_view path, SegmentList& out);
bool splitPathIntoSegments(std::u16string_view path, SegmentViews& out);

/// Whether the path holds a "." or ".." segment. A "." just before a final "/" ("/a/./") is
/// not seen; resolution relies on exactly this scan.
bool containsDotSegments(std::u16string_view path);
bool containsDotSegments(std::wstring_view codePoints);

}  // namespace foundation::network::iri::detail
