#include "iri/grammar/IriGrammar.h"

#include <boost/fusion/include/at_c.hpp>
#include <boost/spirit/include/qi_action.hpp>
#include <boost/spirit/include/qi_nonterminal.hpp>
#include <boost/spirit/include/qi_raw.hpp>

#include "iri/grammar/CharacterRules.h"
#include "iri/grammar/IpAddressRules.h"
#include "iri/grammar/TextRules.h"

namespace foundation::network::iri::detail::irigrammar {

namespace {

// Semantic action that records the matched range (raw) in one member of the Parts record, the
// attribute of the rule that runs it.
template <auto Member>
struct SetRange {
    template <class Range, class Context>
    void operator()(const Range& range, Context& context, bool&) const {
        auto& parts = boost::fusion::at_c<0>(context.attributes);
        parts.set(parts.*Member, range.begin(), range.end());
    }
};

// Semantic action that clears the record, so that nothing an abandoned alternative recorded
// survives into the next.
struct ClearParts {
    template <class Context>
    void operator()(boost::spirit::unused_type, Context& context, bool&) const {
        boost::fusion::at_c<0>(context.attributes).clear();
    }
};

template <class String>
struct IriGrammar : qi::grammar<typename String::const_iterator, Parts<String>()> {
    using Iterator = typename String::const_iterator;
    using P = Parts<String>;

    IriGrammar() : IriGrammar::base_type(iriReference, "IRI Grammar") {
        using qi::lit;
        using qi::raw;

        // IP-literal = "[" ( IPv6address / IPvFuture ) "]"
        // Only this rule is type-erased: it is long and runs only after a "[".
        ipLiteralAfterBracket = (ipv6Address() | ipvFuture()) >> lit(L']');

        // ihost = IP-literal / IPv4address / ireg-name
        // An IPv4address followed by a character that could continue a registered name, or by
        // "@", is not taken: the host falls through to ireg-name ("1.2.3.4x" is a name).
        const auto ihost =
            qi::copy((lit(L'[') >> ipLiteralAfterBracket) |
                     (ipv4Address() >> !(iunreserved() | pctEncoded() | subDelims() | lit(L'@'))) |
                     iregName());

        // The authority form shared by ihier-part and irelative-part:
        //   ( "//" iuserinfo "@" / "//" ) ihost [ ":" port ] ipath-abempty
        // The user info is recorded only when its "@" follows; otherwise the same "//" goes on
        // with the host, which is what backtracking to the plain "//" form gives.
        const auto authorityForm = qi::copy(
            lit(L'/') >> lit(L'/') >> -(raw[iuserinfo()] >> lit(L'@'))[SetRange<&P::userInfo>()] >>
            raw[ihost][SetRange<&P::host>()] >> -(lit(L':') >> raw[port()][SetRange<&P::port>()]) >>
            raw[ipathAbempty()][SetRange<&P::path>()]);

        // [ "?" iquery ] [ "#" ifragment ]
        const auto queryAndFragment =
            qi::copy(-(lit(L'?') >> raw[iquery()][SetRange<&P::query>()]) >>
                     -(lit(L'#') >> raw[ifragment()][SetRange<&P::fragment>()]));

        // IRI = scheme ":" ihier-part [ "?" iquery ] [ "#" ifragment ]
        // ihier-part = "//" iauthority ipath-abempty / ipath-absolute / ipath-rootless
        //            / ipath-empty
        const auto iri = qi::copy(
            raw[scheme()][SetRange<&P::scheme>()] >> lit(L':') >>
            (authorityForm |
             raw[ipathAbsolute() | ipathRootless() | ipathEmpty()][SetRange<&P::path>()]) >>
            queryAndFragment);

        // irelative-ref = irelative-part [ "?" iquery ] [ "#" ifragment ]
        // irelative-part = "//" iauthority ipath-abempty / ipath-absolute / ipath-noscheme
        //                / ipath-empty
        const auto irelativeRef = qi::copy(
            (authorityForm |
             raw[ipathAbsolute() | ipathNoscheme() | ipathEmpty()][SetRange<&P::path>()]) >>
            queryAndFragment);

        // IRI-reference = IRI / irelative-ref
        // irelative-ref runs only when IRI itself fails; an IRI that matches a prefix wins and
        // the caller's full-match test then fails.
        iriReference = iri | (qi::eps[ClearParts()] >> irelativeRef);
    }

    qi::rule<Iterator> ipLiteralAfterBracket;
    qi::rule<Iterator, Parts<String>()> iriReference;
};

}  // namespace

template <class String>
bool parseString(typename String::const_iterator first, typename String::const_iterator last,
                 Parts<String>& parts) {
    static const IriGrammar<String> grammar;
    parts.reset(first);
    return qi::parse(first, last, grammar, parts) && first == last;
}

template <class String>
bool parseScheme(typename String::const_iterator first, typename String::const_iterator last) {
    const auto grammar = scheme();
    return qi::parse(first, last, grammar) && first == last;
}

template bool parseString<std::wstring>(std::wstring::const_iterator, std::wstring::const_iterator,
                                        Parts<std::wstring>&);
template bool parseString<std::u16string>(std::u16string::const_iterator,
                                          std::u16string::const_iterator, Parts<std::u16string>&);
template bool parseScheme<std::wstring>(std::wstring::const_iterator, std::wstring::const_iterator);

}  // namespace foundation::network::iri::detail::irigrammar
