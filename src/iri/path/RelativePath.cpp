#include "iri/path/RelativePath.h"

#include <algorithm>

#include "iri/Utf16.h"
#include "iri/path/PathResolution.h"

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

// The segments of a path as splitPathIntoSegments cuts them, walked in place: every element
// after the first begins at a "/" and runs to the next one.
std::size_t firstSegmentEnd(std::u16string_view path) {
    const std::size_t n = path.size();
    std::size_t end = 0;
    if (n >= 3 && path[0] == u'/' && path[1] == u'/' && path[2] != u'/') {
        end = findUnit(path, u'/', 2);
    } else {
        end = findUnit(path, u'/', path[0] == u'/' ? 1 : 0);
    }
    return end == std::u16string_view::npos ? n : end;
}

// The number of segments of a non-empty path whose first segment ends at `first`.
std::size_t segmentCount(std::u16string_view path, std::size_t first) {
    return 1 + countUnit(path.substr(first), u'/');
}

// Whether `at` ends a segment of `path`: a "/" or the end of the text.
bool endsSegment(std::u16string_view path, std::size_t at) {
    return at == path.size() || path[at] == u'/';
}

}  // namespace

RelativePathPieces relativePathPieces(std::u16string_view target, bool targetAbsolute,
                                      std::u16string_view base) {
    if (sameUnits(target, base)) {
        return {};
    }
    if (base.empty()) {
        return {{}, target};
    }
    const std::size_t baseFirst = firstSegmentEnd(base);
    const std::size_t baseCount = segmentCount(base, baseFirst);
    // A base of one absolute segment: the target without its leading "/" merges back onto
    // the root.
    if (baseCount == 1 && startsWithSlash(base) && startsWithSlash(target)) {
        // The root alone would become the empty path, which names the base itself.
        return {{}, target == u"/" ? target : target.substr(1)};
    }

    // Shared leading segments; the last segment of the shorter list never counts. Equal
    // segments end at the same offset, so after the first one both paths are walked together.
    const std::size_t targetFirst = target.empty() ? 0 : firstSegmentEnd(target);
    const std::size_t n =
        std::min(baseCount, target.empty() ? 0 : segmentCount(target, targetFirst));
    std::size_t shared = 0;
    std::size_t targetStart = 0;
    if (n >= 2 && targetFirst == baseFirst &&
        sameUnits(target.substr(0, targetFirst), base.substr(0, baseFirst))) {
        shared = 1;
        targetStart = targetFirst;
        const std::size_t common = std::min(target.size(), base.size());
        while (shared < n - 1) {
            std::size_t i = targetStart + 1;  // past the segment's "/"
            while (i < common && target[i] == base[i] && target[i] != u'/') {
                ++i;
            }
            if (!endsSegment(target, i) || !endsSegment(base, i)) {
                break;
            }
            ++shared;
            targetStart = i;
        }
    }

    RelativePathPieces result;
    std::u16string& lead = result.lead;
    if (shared == 0) {
        appendParents(lead, std::max<std::size_t>(baseCount - 1, 1));
        result.rest = targetAbsolute && startsWithSlash(target) ? target.substr(1) : target;
        return result;
    }

    std::size_t up = baseCount - 1 - shared;
    if (up == 0) {
        lead = u".";
    } else {
        // Kept deliberately: lowering the count for a base not ending in "/" gives one ".."
        // too few when the base lies two or more directories below the shared prefix.
        const bool lastIsSlash = baseCount == 1 ? base == u"/" : base.back() == u'/';
        if (!lastIsSlash) {
            --up;
        }
        appendParents(lead, up > 1 ? up - 1 : 0);
        lead += u"..";
    }
    // The segments from the first unshared one on: the rest of the target's text.
    if (target[targetStart] != u'/') {
        lead += u'/';
    }
    result.rest = target.substr(targetStart);
    return result;
}

RelativePathPieces minimalRelativePath(std::u16string_view path) {
    if (path.empty() || path.back() == u'/') {
        return {u".", {}};
    }
    const auto slash = path.rfind(u'/');
    if (slash == std::u16string_view::npos) {
        return {u"./", path};
    }
    return {u".", path.substr(slash)};
}

}  // namespace foundation::network::iri::detail
