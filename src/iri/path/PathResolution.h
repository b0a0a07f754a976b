/// @file
/// @brief The path work of reference resolution: appending a path to a segment list, with or
/// without dot-segment removal (RFC 3986 section 5.2.4 on pre-split segments).
///
/// A segment list is a path split by splitPathIntoSegments: every segment after the first keeps
/// its leading "/", so concatenating the list gives the path back; a lone "/" element stands for
/// the root or a trailing slash.
#pragma once

#include <string>
#include <string_view>

#include "iri/path/PathPieces.h"
#include "iri/path/PathSegments.h"

namespace foundation::network::iri::detail {

/// Appends `path` to `segments` in place. Without `removeDots`, a plain append (a "/" element is
/// put between when the list does not end in one and `path` is relative). With `removeDots`,
/// "."/".." short cuts first, then the general case: the whole list plus `path` runs through
/// removeDotSegments, and `absolute` decides whether the result starts with "/". Linear in the
/// total length.
void resolvePath(std::u16string_view path, SegmentList& segments, bool absolute, bool removeDots);

/// RFC 3986 section 5.2.4 over a queue of segments: moves what survives from `queue` to the end
/// of `out`; ".." removes the last element of `out` (above the root it is absorbed). Empties
/// the queue.
void removeDotSegments(SegmentList& queue, SegmentList& out);

/// The path with its dot segments removed, or the path unchanged when containsDotSegments does
/// not see any (a "." just before a final "/" is not seen and stays).
std::u16string removeRelativePathSegments(std::u16string_view path, bool absolute);

/// A path made by resolution or relativisation, written so that its IRI's text reads back the
/// same (RFC 3986 section 4.2): without an authority a path beginning "//" gets "/." in front
/// (else it would read as an authority), and without a scheme as well a relative path whose
/// first segment holds ":" gets "./" (else it would read as a scheme). Neither changes what
/// the path resolves to. Sets the prefix of `path` (its head and tail are the path).
void keepPathReadable(PathPieces& path, bool schemePresent, bool authorityPresent);

/// The segments concatenated, with no separator.
std::u16string joinSegments(const SegmentList& segments);

}  // namespace foundation::network::iri::detail
