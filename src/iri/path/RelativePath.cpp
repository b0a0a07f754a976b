#include "iri/path/RelativePath.h"

#include <algorithm>

#include "iri/Utf16.h"
#include "iri/path/PathResolution.h"
#include "iri/path/PathSegments.h"

namespace foundation::network::iri::detail {
namespace {

bool startsWithSlash(std::u16string_view s) {
    return !s.empty() && s.front() == u'/';
}

void appendParents(std::u16string& out, std::size_t count) {
    out.reserve(out.size() + 3 * count + 2);
    for (std::size_t i = 0; i < count; ++i) {
        out += u"../";
    }
}

// A relative path whose first segment holds a colon would read as a scheme: "./" in front
// keeps it a path (RFC 3986 section 4.2).
std::u16string guardColon(std::u16string path) {
    const auto colon = path.find(u':');
    if (colon != std::u16string::npos && colon < path.find(u'/')) {
        path.insert(0, u"./");
    }
    return path;
}

std::u16string relativePathUnguarded(std::u16string_view target, bool targetAbsolute,
                                     std::u16string_view base) {
    if (sameUnits(target, base)) {
        return {};
    }
    SegmentViews baseSegments;
    splitPathIntoSegments(base, baseSegments);
    if (baseSegments.empty()) {
        return std::u16string(target);
    }
    SegmentViews targetSegments;
    splitPathIntoSegments(target, targetSegments);

    // A base of one absolute segment: the target without its leading "/" merges back onto
    // the root.
    if (baseSegments.size() == 1 && startsWithSlash(baseSegments.front()) &&
        !targetSegments.empty() && startsWithSlash(targetSegments.front())) {
        // The root alone would become the empty path, which names the base itself.
        return std::u16string(target == u"/" ? target : target.substr(1));
    }

    // Shared leading segments; the last segment of the shorter list never counts.
    const std::size_t n = std::min(baseSegments.size(), targetSegments.size());
    std::size_t shared = 0;
    if (n >= 2) {
        while (shared < n - 1 && sameUnits(targetSegments[shared], baseSegments[shared])) {
            ++shared;
        }
    }

    std::u16string result;
    if (shared == 0) {
        appendParents(result, std::max<std::size_t>(baseSegments.size() - 1, 1));
        result += targetAbsolute && startsWithSlash(target) ? target.substr(1) : target;
        return result;
    }

    std::size_t up = baseSegments.size() - 1 - shared;
    if (up == 0) {
        result = u".";
    } else {
        // Kept deliberately: lowering the count for a base not ending in "/" gives one ".."
        // too few when the base lies two or more directories below the shared prefix.
        if (baseSegments.back() != u"/") {
            --up;
        }
        appendParents(result, up > 1 ? up - 1 : 0);
        result += u"..";
    }
    if (!startsWithSlash(targetSegments[shared])) {
        result += u'/';
    }
    // The segments from the first unshared one on: the rest of the target's text.
    result +=
        target.substr(static_cast<std::size_t>(targetSegments[shared].data() - target.data()));
    return result;
}

}  // namespace

std::u16string relativePath(std::u16string_view target, bool targetAbsolute,
                            std::u16string_view base) {
    return guardColon(relativePathUnguarded(target, targetAbsolute, base));
}

std::u16string minimalRelativePath(std::u16string_view path) {
    std::u16string result = u".";
    if (path.empty() || path.back() == u'/') {
        return result;
    }
    const auto slash = path.rfind(u'/');
    if (slash == std::u16string::npos) {
        result += u'/';
        result += path;
    } else {
        result.append(path, slash, std::u16string::npos);
    }
    return result;
}

}  // namespace foundation::network::iri::detail
