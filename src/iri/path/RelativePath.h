/// @file
/// @brief The path work of relativisation: a target path written relative to a base path.
#pragma once

#include <string>
#include <string_view>

namespace foundation::network::iri::detail {

/// A relative path in two pieces written one after the other: `lead`, the dot segments it
/// begins with (short enough to need no allocation as a rule), and `rest`, a view of the end of
/// the path it was made from.
struct RelativePathPieces {
    std::u16string lead;
    std::u16string_view rest;

    bool empty() const noexcept { return lead.empty() && rest.empty(); }
};

/// The path `target` written relative to the path `base`, both already free of dot segments
/// (removeRelativePathSegments), in pieces (`rest` views `target`). `targetAbsolute` is the
/// target's absolute-path flag. Empty when the two are equal. The target's text is kept exactly
/// as written: no escape is decoded. A first segment holding ":" is left for the caller to
/// guard, with the rest of the path's readability (keepPathReadable).
///
/// Kept deliberately: for a base whose path does not end in "/" and that lies two or more
/// directories below the shared prefix, the result has one ".." too few (base "/a/b/e/d",
/// target "/a/c" gives "../c").
RelativePathPieces relativePathPieces(std::u16string_view target, bool targetAbsolute,
                                      std::u16string_view base);

/// The shortest relative path naming the last segment of `path`: "." for an empty path or one
/// ending in "/", else "./" followed by the last segment (the whole path when it has no "/").
RelativePathPieces minimalRelativePath(std::u16string_view path);

}  // namespace foundation::network::iri::detail
