#include "iri/grammar/PathSegments.h"

#include <boost/spirit/include/qi.hpp>

#include "iri/grammar/DoNotDecodeSets.h"
#include "iri/grammar/PercentDecoder.h"

namespace foundation::network::iri::detail {

namespace {

namespace qi = boost::spirit::qi;
using Iterator = std::wstring::const_iterator;
using Segments = std::vector<std::wstring>;

// Splits a path into its segments, each after the first with its leading "/". Every
// alternative yields the text it matched (raw), so the elements concatenate to the path.
struct SplitGrammar : qi::grammar<Iterator, Segments()> {
    SplitGrammar() : SplitGrammar::base_type(start) {
        using qi::eoi;
        using qi::lit;
        using qi::raw;
        const auto segment = qi::copy(+(qi::standard_wide::char_ - L'/'));
        // first = "//" segment / "/" segment / "/" end / segment / "/" before "/"
        // The last alternative is ours: an empty first segment after the root ("//", "///a")
        // becomes a "/" element instead of failing the split.
        first = raw[lit(L"//") >> segment] | raw[lit(L'/') >> segment] | raw[lit(L'/') >> eoi] |
                raw[segment] | raw[lit(L'/') >> &lit(L'/')];
        // middle = "/" segment / "/" before "/" ; an empty inner segment ("/a//b") becomes "/"
        middle = raw[lit(L'/') >> segment] | raw[lit(L'/') >> &lit(L'/')];
        // last = "/" end ; a trailing slash
        last = raw[lit(L'/') >> eoi];
        start = first >> *middle >> -last;
    }
    qi::rule<Iterator, std::wstring()> first;
    qi::rule<Iterator, std::wstring()> middle;
    qi::rule<Iterator, std::wstring()> last;
    qi::rule<Iterator, Segments()> start;
};

}  // namespace

bool splitPathIntoSegments(const std::wstring& path, Segments& out) {
    static const SplitGrammar g;
    Segments segments;
    auto first = path.begin();
    if (!qi::parse(first, path.end(), g, segments) || first != path.end()) {
        return false;
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
