/// @file
/// @brief Recognisers for the relativisations that do not resolve back to their target, shared by
/// the relativisation tests and the fuzz targets.
#pragma once

#include <string>

#include "foundation/network/IRI.h"
#include "iri/grammar/Unicode.h"
#include "iri/path/PathSegments.h"

namespace fntest {

/// Whether a path holds a "." or ".." segment anywhere, also where the library's scan does not
/// look ("/a/./").
inline bool hasDotSegment(const std::u16string& path) {
    std::size_t start = 0;
    while (true) {
        const std::size_t end = path.find(u'/', start);
        const std::u16string segment = path.substr(start, end - start);
        if (segment == u"." || segment == u"..") {
            return true;
        }
        if (end == std::u16string::npos) {
            return false;
        }
        start = end + 1;
    }
}

/// A target that no reference resolves to against this base: resolution removes the dot
/// segments of a merged path ("/../../etc/passwd"), so a target path holding some is out of
/// reach once the base has a path. That includes a "." the scan does not see ("a/./"): the
/// "../" of a reference makes the scan see the path, and then that "." goes too. Against a base
/// with neither a path nor an authority, every reference path is merged or taken with its dot
/// segments removed, so a target path holding one that the scan sees is out of reach as well
/// ("s:a:b/./c" against "s:?q").
inline bool unreachableByResolution(const foundation::network::IRI& target,
                                    const foundation::network::IRI& base) {
    const foundation::network::iri::Encoding asWritten(1);
    const std::u16string path = target.getPath(asWritten);
    if (!hasDotSegment(path)) {
        return false;
    }
    return !base.getPath(asWritten).empty() ||
           (!base.hasAuthority() &&
            foundation::network::iri::detail::containsDotSegments(std::u16string_view(path)));
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
    const foundation::network::iri::Encoding asWritten(1);
    const std::u16string path = target.getPath(asWritten);
    return hasDotSegment(path) && base.getPath(asWritten).empty() &&
           relative.getPath(asWritten) == path;
}

/// A target path with dot segments whose first segment holds ":", against a base with an
/// authority and an empty path: the relative path that would keep the dots reads as a scheme,
/// and the "./" that protects it is itself a dot segment ("s://h/a:b/../c" gives "./a:b/../c").
inline bool colonGuardMeetsKeptDots(const foundation::network::IRI& relative,
                                    const foundation::network::IRI& target,
                                    const foundation::network::IRI& base) {
    const foundation::network::iri::Encoding asWritten(1);
    const std::u16string path = target.getPath(asWritten);
    return hasDotSegment(path) && base.getPath(asWritten).empty() && !path.empty() &&
           relative.getPath(asWritten) == u"./" + path.substr(1);
}

/// A base path whose only dot segment is a "." before the final "/" ("/a/./"): the scan does not
/// see it, so relativisation counts it as a directory while resolution, through the "../" of the
/// result, removes it.
inline bool baseHasUnseenDotSegment(const foundation::network::IRI& base) {
    using namespace foundation::network::iri::detail;
    const std::u16string path = base.getPath(foundation::network::iri::Encoding(1));
    return hasDotSegment(path) && !containsDotSegments(std::u16string_view(path));
}

/// A rootless base path ("s:a/b") and a result that climbs with "..": dot removal roots the
/// merged path, here as in RFC 3986 section 5.2.4 ("a/../c" gives "/c"), so the target comes
/// back with a leading "/".
inline bool rootlessBaseGetsRooted(const foundation::network::IRI& relative,
                                   const foundation::network::IRI& target,
                                   const foundation::network::IRI& base) {
    const foundation::network::iri::Encoding asWritten(1);
    const std::u16string basePath = base.getPath(asWritten);
    return !basePath.empty() && basePath[0] != u'/' &&
           relative.getPath(asWritten).rfind(u"..", 0) == 0 &&
           relative.resolveAgainst(base).getPath(asWritten) == u"/" + target.getPath(asWritten);
}

}  // namespace fntest
