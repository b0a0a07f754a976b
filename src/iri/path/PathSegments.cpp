#include "iri/path/PathSegments.h"

#include "iri/Utf16.h"

namespace foundation::network::iri::detail {

// The first element is "//" and a segment, "/" and a segment, a lone "/" (the root, or an empty
// first segment before another "/"), or a segment; every later one "/" and a segment, or "/"
// alone for an empty segment or a trailing slash.
namespace {

template <class Segments>
bool split(std::u16string_view path, Segments& out) {
    if (path.empty()) {
        return false;
    }
    constexpr auto npos = std::u16string_view::npos;
    const std::size_t n = path.size();
    Segments& segments = out;
    segments.clear();
    const auto take = [&](std::size_t from, std::size_t to) {
        segments.emplace_back(path.substr(from, to == npos ? npos : to - from));
        return to == npos ? n : to;
    };
    const auto slashFrom = [&](std::size_t from) { return findUnit(path, u'/', from); };
    std::size_t i = 0;
    if (n >= 3 && path[0] == u'/' && path[1] == u'/' && path[2] != u'/') {
        i = take(0, slashFrom(2));
    } else if (path[0] == u'/') {
        i = n > 1 && path[1] == u'/' ? take(0, 1) : take(0, slashFrom(1));
    } else {
        i = take(0, slashFrom(0));
    }
    while (i < n) {
        i = i + 1 < n && path[i + 1] == u'/' ? take(i, i + 1) : take(i, slashFrom(i + 1));
    }
    return true;
}

}  // namespace

bool splitPathIntoSegments(std::u16string_view path, SegmentList& out) {
    return split(path, out);
}

bool splitPathIntoSegments(std::u16string_view path, SegmentViews& out) {
    return split(path, out);
}

namespace {

std::size_t nextDot(std::u16string_view path, std::size_t from) {
    return findUnit(path, u'.', from);
}

std::size_t nextDot(std::wstring_view path, std::size_t from) {
    return path.find(L'.', from);
}

template <class Char>
bool holdsDotSegments(std::basic_string_view<Char> path) {
    const std::size_t length = path.size();
    const auto at = [&](std::size_t i, Char c) { return i < length && path[i] == c; };
    if (length == 0) {
        return false;
    }
    if (length == 2) {
        return (at(0, Char('.')) && at(1, Char('.'))) || (at(0, Char('.')) && at(1, Char('/'))) ||
               (at(0, Char('/')) && at(1, Char('.')));
    }
    if (length == 1) {
        return at(0, Char('.'));
    }
    for (std::size_t p = nextDot(path, 0); p != path.npos; p = nextDot(path, p + 1)) {
        if (p == 0) {
            if ((at(1, Char('.')) && at(2, Char('/'))) || at(1, Char('/'))) {
                return true;
            }
        } else if (p == length - 1) {
            return at(p - 1, Char('/'));
        } else if (p == length - 2) {
            // Kept deliberately: the scan stops here, so "/a/./" is not seen as holding a dot
            // segment; resolution relies on exactly this answer.
            return at(length - 3, Char('/')) && at(length - 1, Char('.'));
        } else if (at(p - 1, Char('/')) &&
                   ((at(p + 1, Char('.')) && at(p + 2, Char('/'))) || at(p + 1, Char('/')))) {
            return true;
        }
    }
    return false;
}

}  // namespace

bool containsDotSegments(std::u16string_view path) {
    return holdsDotSegments(path);
}

bool containsDotSegments(std::wstring_view codePoints) {
    return holdsDotSegments(codePoints);
}

}  // namespace foundation::network::iri::detail
