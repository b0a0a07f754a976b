/// @file
/// @brief The path work of relativisation: a target path written relative to a base path.
#pragma once

#include <string>
#include <string_view>

namespace foundation::network::iri::detail {

/// The path `target` written relative to the path `base`, both already free of dot segments
/// (removeRelativePathSegments). `targetAbsolute` is the target's absolute-path flag. Empty
/// when the two are equal. The target's text is kept exactly as written: no escape is decoded.
///
/// Kept deliberately: for a base whose path does not end in "/" and that lies two or more
/// directories below the shared prefix, the result has one ".." too few (base "/a/b/e/d",
/// target "/a/c" gives "../c").
std::u16string relativePath(std::u16string_view target, bool targetAbsolute,
                            std::u16string_view base);

/// The shortest relative path naming the last segment of `path`: "." for an empty path or one
/// ending in "/", else "./" followed by the last segment (the whole path when it has no "/").
std::u16string minimalRelativePath(std::u16string_view path);

}  // namespace foundation::network::iri::detail
