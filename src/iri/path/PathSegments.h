/// @file
/// @brief Paths as segment lists, and dot-segment detection.
///
/// Paths are handled as UTF-16 units: the delimiters ("/", ".", ":") are ASCII, and no unit of a
/// surrogate pair equals one, so every split and scan gives the same answer as over code points.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace foundation::network::iri::detail {

using SegmentList = std::vector<std::u16string>;

/// Splits a path into segments, every segment after the first keeping its leading "/", so that
/// concatenating the list gives the path back ("/a/b/" -> "/a", "/b", "/"; "a/b" -> "a", "/b";
/// "/a//b" -> "/a", "/", "/b"). Replaces `out` and returns true for every non-empty path;
/// returns false and leaves `out` untouched for the empty path.
bool splitPathIntoSegments(std::u16string_view path, SegmentList& out);

/// Whether the path holds a "." or ".." segment. A "." just before a final "/" ("/a/./") is
/// not seen; resolution relies on exactly this scan.
bool containsDotSegments(std::u16string_view path);
bool containsDotSegments(std::wstring_view codePoints);

}  // namespace foundation::network::iri::detail
