/// @file
/// @brief Paths as segment lists, dot-segment detection and the path's percent decoder.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace foundation::network::iri::detail {

/// Splits a path into segments, every segment after the first keeping its leading "/", so that
/// concatenating the list gives the path back ("/a/b/" -> "/a", "/b", "/"; "a/b" -> "a", "/b";
/// "/a//b" -> "/a", "/", "/b"). Replaces `out` and returns true for every non-empty path;
/// returns false and leaves `out` untouched for the empty path.
bool splitPathIntoSegments(const std::wstring& path, std::vector<std::wstring>& out);

/// Whether the path holds a "." or ".." segment. A "." just before a final "/" ("/a/./") is
/// not seen; resolution relies on exactly this scan.
bool containsDotSegments(const std::wstring& path);
bool containsDotSegments(std::u16string_view path);

/// Decodes the percent-escapes of a path, except those of characters that would change how the
/// path parses (the path's do-not-decode set), which stay as written. Stateless; its grammar is
/// built once and shared.
class PathPercentDecoder {
public:
    void transcode(const std::wstring& in, std::wstring& out) const;
};

}  // namespace foundation::network::iri::detail
