#include "iri/codecs/PercentDecoder.h"

#include <boost/fusion/include/at_c.hpp>
#include <boost/spirit/include/qi.hpp>

namespace foundation::network::iri::detail {

namespace {

namespace qi = boost::spirit::qi;
using Iterator = std::wstring::const_iterator;

// Semantic action of the escape: refuses it when its value is in the do-not-decode set (the
// rule's inherited attribute, passed by pointer because Spirit would try to call a view), so that
// the item falls to the any-character branch and the escape is copied as written.
struct DoNotDecodeMatching {
    template <class Context>
    void operator()(unsigned value, Context& context, bool& pass) const {
        const std::wstring_view* doNotDecode = boost::fusion::at_c<1>(context.attributes);
        pass = doNotDecode->find(static_cast<wchar_t>(value)) == std::wstring_view::npos;
    }
};

struct DecoderGrammar : qi::grammar<Iterator, std::wstring(const std::wstring_view*)> {
    DecoderGrammar() : DecoderGrammar::base_type(items) {
        // escape = "%" 2HEXDIG ; its value as one element
        escape %= (qi::lit(L'%') >> qi::uint_parser<unsigned, 16, 2, 2>())[DoNotDecodeMatching()];
        // items = *( escape / any character )
        items = *(escape(qi::_r1) | qi::standard_wide::char_);
    }
    qi::rule<Iterator, wchar_t(const std::wstring_view*)> escape;
    qi::rule<Iterator, std::wstring(const std::wstring_view*)> items;
};

}  // namespace

std::wstring percentDecode(const std::wstring& in, std::wstring_view doNotDecode) {
    if (in.find(L'%') == std::wstring::npos) {
        return in;  // nothing to decode: the grammar would copy every character
    }
    static const DecoderGrammar grammar;
    std::wstring out;
    out.reserve(in.size());
    auto first = in.begin();
    qi::parse(first, in.end(), grammar(&doNotDecode), out);
    return out;
}

}  // namespace foundation::network::iri::detail
