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

// Whether `text` at `at` begins with `prefix` followed by "/" or the end.
bool segmentAt(const std::wstring& text, std::size_t at, const wchar_t* prefix,
               std::size_t length) {
    return text.compare(at, length, prefix) == 0 &&
           (at + length == text.size() || text[at + length] == L'/');
}

// Whether the list and the path appended to it hold an empty segment: a "/" element with more
// after it, or a "//" inside the path or where the two meet.
bool holdsEmptySegment(const SegmentList& segments, const std::wstring& path, bool separated) {
    if (path.find(L"//") != std::wstring::npos) {
        return true;
    }
    if (!segments.empty()) {
        if (segments.front().rfind(L"//", 0) == 0) {
            return true;
        }
        for (std::size_t i = 0; i + 1 < segments.size(); ++i) {
            if (segments[i] == L"/") {
                return true;
            }
        }
        if (!separated && segments.back() == L"/" && startsWithSlash(path)) {
            return true;
        }
    }
    return false;
}

// The segment form reads a "/" element as a trailing slash, so paths with empty segments go
// through the text form of RFC 3986 section 5.2.4 instead; the absolute flag then applies as in
// the general case, except that a result beginning "//" keeps both (dropping one would change
// the segments; keepPathReadable protects its text).
void resolveWithEmptySegments(const std::wstring& path, SegmentList& segments, bool absolute,
                              bool separated) {
    const bool wasRelative = segments.empty() || !startsWithSlash(segments.front());
    std::wstring merged = joinSegments(segments);
    if (separated) {
        merged += L'/';
    }
    merged += path;
    std::wstring result = removeDotSegmentsOfText(merged);
    if (!absolute) {
        if (wasRelative && startsWithSlash(result) && result.rfind(L"//", 0) != 0) {
            result.erase(0, 1);
        }
    } else if (!startsWithSlash(result)) {
        result.insert(0, 1, L'/');
    }
    segments.clear();
    splitPathIntoSegments(result, segments);
}

}  // namespace

std::wstring removeDotSegmentsOfText(const std::wstring& path) {
    std::wstring out;
    out.reserve(path.size());
    std::size_t i = 0;
    while (i < path.size()) {
        // A: a leading "../" or "./" goes.
        if (path.compare(i, 3, L"../") == 0) {
            i += 3;
            continue;
        }
        if (path.compare(i, 2, L"./") == 0) {
            i += 2;
            continue;
        }
        // D: an input of "." or ".." alone goes.
        if (path.compare(i, std::wstring::npos, L".") == 0 ||
            path.compare(i, std::wstring::npos, L"..") == 0) {
            break;
        }
        if (path[i] == L'/') {
            // B: "/./" becomes "/"; a final "/." becomes "/", moved to the output at once.
            if (segmentAt(path, i + 1, L".", 1)) {
                i += 2;
                if (i == path.size()) {
                    out += L'/';
                }
                continue;
            }
            // C: the same for "/../" and "/..", which also drop the output's last segment.
            if (segmentAt(path, i + 1, L"..", 2)) {
                i += 3;
                const auto last = out.rfind(L'/');
                out.erase(last == std::wstring::npos ? 0 : last);
                if (i == path.size()) {
                    out += L'/';
                }
                continue;
            }
        }
        // E: the first segment, with its leading "/" if any, moves to the output.
        const auto end = path.find(L'/', i + 1);
        const std::size_t stop = end == std::wstring::npos ? path.size() : end;
        out.append(path, i, stop - i);
        i = stop;
    }
    return out;
}

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
    if (holdsEmptySegment(segments, path, needsSeparator)) {
        resolveWithEmptySegments(path, segments, absolute, needsSeparator);
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

void keepPathReadable(std::wstring& path, bool schemePresent, bool authorityPresent) {
    if (authorityPresent) {
        return;
    }
    if (path.rfind(L"//", 0) == 0) {
        path.insert(0, L"/.");
    } else if (!schemePresent && !path.empty() && path.front() != L'/') {
        const auto colon = path.find(L':');
        if (colon != std::wstring::npos && colon < path.find(L'/')) {
            path.insert(0, L"./");
        }
    }
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
