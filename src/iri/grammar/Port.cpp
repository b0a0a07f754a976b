#include "iri/grammar/Port.h"

#include <boost/spirit/include/qi_numeric.hpp>
#include <boost/spirit/include/qi_parse.hpp>

namespace foundation::network::iri::detail {

namespace qi = boost::spirit::qi;

bool portStringToNumeric(std::wstring_view text, unsigned short& out) {
    // ASCII digits only, any count (leading zeros), no sign; the parser fails on overflow.
    static const qi::uint_parser<unsigned short, 10, 1, -1> grammar;
    auto first = text.begin();
    return qi::parse(first, text.end(), grammar, out) && first == text.end();
}

}  // namespace foundation::network::iri::detail
