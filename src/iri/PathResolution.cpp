#include "iri/PathResolution.h"

#include <iterator>

#include "iri/grammar/PathSegments.h"

namespace foundation::network::iri::detail {
namespace {

bool startsWithSlash(const std::wstring& s) {
    return !s.empty() && s.front() == L'/';
}

bool isDot(const std::wstring& s) {
    return s == L"." || s == L"..";
}

// The short cuts of dot removal; true when one applied. They compare whole strings only, so a
// relative list such as "a" with ".." gives "/" (the short cut does not look at the absolute
// flag). Kept deliberately.
bool applyShortCut(const std::wstring& path, SegmentList& segments) {
    const bool single = path == L"." || path == L"./";
    const bool parent = path == L".." || path == L"../";
    if (!single && !parent) {
        return false;
    }
    // An empty list absorbs "." and "..", and so "./" and "../" too; the root absorbs all four.
    if (segments.empty() || (segments.size() == 1 && segments.front() == L"/")) {
        return true;
    }
    if (single) {
        if (segments.back() != L"/") {
            segments.emplace_back(L"/");
        }
        return true;
    }
    if (segments.back() == L"/") {
        segments.pop_back();
    }
    if (!segments.empty()) {
        segments.pop_back();
    }
    segments.emplace_back(L"/");
    return true;
}

}  // namespace

void removeDotSegments(std::deque<std::wstring>& queue, SegmentList& out) {
    while (!queue.empty()) {
        std::wstring& front = queue.front();
        const std::size_t n = queue.size();
        if (n >= 2 && isDot(front)) {
            // A leading "./" or "../": drop it, and the "/" that the next segment carries.
            queue.pop_front();
            if (startsWithSlash(queue.front())) {
                queue.front().erase(0, 1);
            }
        } else if (front == L"/.") {
            if (n == 1) {
                front = L"/";
            } else {
                queue.pop_front();
            }
        } else if (front == L"/..") {
            if (n == 1) {
                front = L"/";
            } else {
                queue.pop_front();
            }
            // ".." above the root is absorbed.
            if (!out.empty()) {
                out.pop_back();
            }
        } else if (n == 1 && isDot(front)) {
            queue.pop_front();
        } else {
            out.push_back(std::move(front));
            queue.pop_front();
        }
    }
}

bool resolvePath(const std::wstring& path, SegmentList& segments, bool absolute, bool removeDots) {
    const bool needsSeparator =
        !segments.empty() && segments.back() != L"/" && !path.empty() && path.front() != L'/';
    if (!removeDots) {
        if (needsSeparator) {
            segments.emplace_back(L"/");
        }
        segments.push_back(path);
        return true;
    }
    if (applyShortCut(path, segments)) {
        return true;
    }

    const bool wasRelative = segments.empty() || !startsWithSlash(segments.front());
    SegmentList appended;
    splitPathIntoSegments(path, appended);  // an empty path appends nothing
    if (!appended.empty() && !startsWithSlash(appended.front())) {
        if (needsSeparator) {
            appended.front().insert(0, 1, L'/');
        } else if (!segments.empty() && segments.back() == L"/") {
            // A trailing slash joins the first segment, so that a ".." removes both: "/" with
            // "b/../c" is "/c" (not "//c"), "/a/" with it "/a/c".
            segments.pop_back();
            appended.front().insert(0, 1, L'/');
        }
    }
    std::deque<std::wstring> queue(std::make_move_iterator(segments.begin()),
                                   std::make_move_iterator(segments.end()));
    queue.insert(queue.end(), std::make_move_iterator(appended.begin()),
                 std::make_move_iterator(appended.end()));
    segments.clear();
    removeDotSegments(queue, segments);

    if (!absolute) {
        if (wasRelative && !segments.empty() && startsWithSlash(segments.front())) {
            segments.front().erase(0, 1);
        }
    } else if (segments.empty()) {
        segments.emplace_back(L"/");
    } else if (!startsWithSlash(segments.front())) {
        segments.front().insert(0, 1, L'/');
    }
    return true;
}

std::wstring removeRelativePathSegments(const std::wstring& path, bool absolute) {
    if (!containsDotSegments(path)) {
        return path;
    }
    SegmentList segments;
    resolvePath(path, segments, absolute, true);
    return joinSegments(segments);
}

std::wstring joinSegments(const SegmentList& segments) {
    std::size_t length = 0;
    for (const auto& segment : segments) {
        length += segment.size();
    }
    std::wstring joined;
    joined.reserve(length);
    for (const auto& segment : segments) {
        joined += segment;
    }
    return joined;
}

}  // namespace foundation::network::iri::detail
