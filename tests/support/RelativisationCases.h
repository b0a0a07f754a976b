/// @file
/// @brief Recognisers for the relativisations that do not resolve back to their target, shared by
/// the relativisation tests and the fuzz targets.
#pragma once

#include <string>

#include "foundation/network/IRI.h"
#include "iri/grammar/PathSegments.h"
#include "iri/grammar/Unicode.h"

namespace fntest {

/// A target that no reference resolves to against this base: resolution removes the dot
/// segments of a merged path ("/../../etc/passwd"), so a target path holding some is out of
/// reach once the base has a path.
inline bool unreachableByResolution(const foundation::network::IRI& target,
                                    const foundation::network::IRI& base) {
    using namespace foundation::network::iri::detail;
    const foundation::network::iri::Encoding asWritten(1);
    return containsDotSegments(utf16ToCodePoints(target.getPath(asWritten))) &&
           !base.getPath(asWritten).empty();
}

/// The kept case of one ".." too few, recognised by its shape: the result starts with "..", the
/// base path does not end in "/", and one more "../" in front resolves to the target.
inline bool isOneDotDotTooFew(const foundation::network::IRI& relative,
                              const foundation::network::IRI& target,
                              const foundation::network::IRI& base) {
    using foundation::network::IRI;
    const std::u16string text = relative.toString(false);
    const std::u16string basePath = base.getPath(foundation::network::iri::Encoding(1));
    return text.rfind(u"..", 0) == 0 && !basePath.empty() && basePath.back() != u'/' &&
           IRI(u"../" + text).resolveAgainst(base) == target;
}

/// A target path with dot segments against a base with an authority and an empty path: the
/// reference takes the path as it stands, absolute, and resolution removes its dot segments
/// (only a relative path is appended there without removal).
inline bool keepsDotSegmentsOfTarget(const foundation::network::IRI& relative,
                                     const foundation::network::IRI& target,
                                     const foundation::network::IRI& base) {
    using namespace foundation::network::iri::detail;
    const foundation::network::iri::Encoding asWritten(1);
    const std::u16string path = target.getPath(asWritten);
    return containsDotSegments(utf16ToCodePoints(path)) && base.getPath(asWritten).empty() &&
           relative.getPath(asWritten) == path;
}

}  // namespace fntest
