#include "iri/path/PathResolution.h"

#include <initializer_list>
#include <iterator>

#include "iri/Utf16.h"
#include "iri/path/DotSegments.h"
#include "iri/path/PathSegments.h"

namespace foundation::network::iri::detail {
namespace {

bool startsWithSlash(std::u16string_view s) {
    return !s.empty() && s.front() == u'/';
}

bool isDot(std::u16string_view s) {
    return s == u"." || s == u"..";
}

// The short cuts of dot removal; true when one applied. They compare whole strings only, so a
// relative list such as "a" with ".." gives "/" (the short cut does not look at the absolute
// flag). Kept deliberately.
bool applyShortCut(std::u16string_view path, SegmentList& segments) {
    const bool single = path == u"." || path == u"./";
    const bool parent = path == u".." || path == u"../";
    if (!single && !parent) {
        return false;
    }
    // An empty list absorbs "." and "..", and so "./" and "../" too; the root absorbs all four.
    if (segments.empty() || (segments.size() == 1 && segments.front() == u"/")) {
        return true;
    }
    if (single) {
        if (segments.back() != u"/") {
            segments.emplace_back(u"/");
        }
        return true;
    }
    if (segments.back() == u"/") {
        segments.pop_back();
    }
    if (!segments.empty()) {
        segments.pop_back();
    }
    segments.emplace_back(u"/");
    return true;
}

// Whether the list and the path appended to it hold an empty segment: a "/" element with more
// after it, or a "//" inside the path or where the two meet.
bool holdsEmptySegment(const SegmentList& segments, std::u16string_view path, bool separated) {
    if (path.find(u"//") != std::u16string::npos) {
        return true;
    }
    if (!segments.empty()) {
        if (segments.front().rfind(u"//", 0) == 0) {
            return true;
        }
        for (std::size_t i = 0; i + 1 < segments.size(); ++i) {
            if (segments[i] == u"/") {
                return true;
            }
        }
        if (!separated && segments.back() == u"/" && startsWithSlash(path)) {
            return true;
        }
    }
    return false;
}

// The segment form reads a "/" element as a trailing slash, so paths with empty segments go
// through the text form of RFC 3986 section 5.2.4 instead; the absolute flag then applies as in
// the general case, except that a result beginning "//" keeps both (dropping one would change
// the segments; keepPathReadable protects its text).
void resolveWithEmptySegments(std::u16string_view path, SegmentList& segments, bool absolute,
                              bool separated) {
    const bool wasRelative = segments.empty() || !startsWithSlash(segments.front());
    std::u16string merged = joinSegments(segments);
    if (separated) {
        merged += u'/';
    }
    merged += path;
    std::u16string result = removeDotSegmentsOfText(merged);
    if (!absolute) {
        if (wasRelative && startsWithSlash(result) && result.rfind(u"//", 0) != 0) {
            result.erase(0, 1);
        }
    } else if (!startsWithSlash(result)) {
        result.insert(0, 1, u'/');
    }
    segments.clear();
    splitPathIntoSegments(result, segments);
}

}  // namespace

void removeDotSegments(SegmentList& queue, SegmentList& out) {
    // The queue is consumed from its front by index: its elements move out or are dropped,
    // never shifted.
    std::size_t i = 0;
    const std::size_t end = queue.size();
    while (i != end) {
        std::u16string& front = queue[i];
        const std::size_t n = end - i;
        if (n >= 2 && isDot(front)) {
            // A leading "./" or "../": drop it, and the "/" that the next segment carries.
            ++i;
            if (startsWithSlash(queue[i])) {
                queue[i].erase(0, 1);
            }
        } else if (front == u"/.") {
            if (n == 1) {
                front = u"/";
            } else {
                ++i;
            }
        } else if (front == u"/..") {
            if (n == 1) {
                front = u"/";
            } else {
                ++i;
            }
            // ".." above the root is absorbed.
            if (!out.empty()) {
                out.pop_back();
            }
        } else if (n == 1 && isDot(front)) {
            ++i;
        } else {
            out.push_back(std::move(front));
            ++i;
        }
    }
    queue.clear();
}

void resolvePath(std::u16string_view path, SegmentList& segments, bool absolute, bool removeDots) {
    const bool needsSeparator =
        !segments.empty() && segments.back() != u"/" && !path.empty() && path.front() != u'/';
    if (!removeDots) {
        if (needsSeparator) {
            segments.emplace_back(u"/");
        }
        segments.emplace_back(path);
        return;
    }
    if (holdsEmptySegment(segments, path, needsSeparator)) {
        resolveWithEmptySegments(path, segments, absolute, needsSeparator);
        return;
    }
    if (applyShortCut(path, segments)) {
        return;
    }

    const bool wasRelative = segments.empty() || !startsWithSlash(segments.front());
    SegmentList appended;
    splitPathIntoSegments(path, appended);  // an empty path appends nothing
    if (!appended.empty() && !startsWithSlash(appended.front())) {
        if (needsSeparator) {
            appended.front().insert(0, 1, u'/');
        } else if (!segments.empty() && segments.back() == u"/") {
            // A trailing slash joins the first segment, so that a ".." removes both: "/" with
            // "b/../c" is "/c" (not "//c"), "/a/" with it "/a/c".
            segments.pop_back();
            appended.front().insert(0, 1, u'/');
        }
    }
    SegmentList queue = std::move(segments);
    queue.insert(queue.end(), std::make_move_iterator(appended.begin()),
                 std::make_move_iterator(appended.end()));
    segments.clear();
    removeDotSegments(queue, segments);

    if (!absolute) {
        if (wasRelative && !segments.empty() && startsWithSlash(segments.front())) {
            segments.front().erase(0, 1);
        }
    } else if (segments.empty()) {
        segments.emplace_back(u"/");
    } else if (!startsWithSlash(segments.front())) {
        segments.front().insert(0, 1, u'/');
    }
}

std::u16string removeRelativePathSegments(std::u16string_view path, bool absolute) {
    if (!containsDotSegments(path)) {
        return std::u16string(path);
    }
    SegmentList segments;
    resolvePath(path, segments, absolute, true);
    return joinSegments(segments);
}

void keepPathReadable(PathPieces& path, bool schemePresent, bool authorityPresent) {
    path.prefix = PathPrefix::None;
    if (authorityPresent || path.empty()) {
        return;
    }
    // The head and the tail read as one text.
    const auto at = [&](std::size_t i) {
        return i < path.head.size() ? path.head[i] : path.tail[i - path.head.size()];
    };
    if (path.size() >= 2 && at(0) == u'/' && at(1) == u'/') {
        path.prefix = PathPrefix::SlashDot;
        return;
    }
    if (schemePresent) {
        return;
    }
    // A ":" before the first "/".
    for (const std::u16string_view piece : {path.head, path.tail}) {
        for (const char16_t unit : piece) {
            if (unit == u'/') {
                return;
            }
            if (unit == u':') {
                path.prefix = PathPrefix::DotSlash;
                return;
            }
        }
    }
}

std::u16string joinSegments(const SegmentList& segments) {
    std::size_t length = 0;
    for (const auto& segment : segments) {
        length += segment.size();
    }
    std::u16string joined;
    joined.reserve(length);
    for (const auto& segment : segments) {
        joined += segment;
    }
    return joined;
}

}  // namespace foundation::network::iri::detail
