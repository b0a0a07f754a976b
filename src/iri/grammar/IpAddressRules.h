/// @file
/// @brief IP address rules of the IRI grammar: IPv4address, IPv6address, IPvFuture and
/// IP-literal (RFC 3986 section 3.2.2), over Unicode hex digits.
#pragma once

#include <cstdint>

#include <boost/spirit/include/qi_numeric.hpp>
#include <boost/spirit/include/qi_omit.hpp>
#include <boost/spirit/include/qi_repeat.hpp>

#include "iri/grammar/CharacterRules.h"

namespace foundation::network::iri::detail::irigrammar {

// h16 = 1*4HEXDIG
inline auto h16() {
    return qi::copy(qi::repeat(1, 4)[xdigit()]);
}

// dec-octet = DIGIT / %x31-39 DIGIT / "1" 2DIGIT / "2" %x30-34 DIGIT / "25" %x30-35
// Built as a look-ahead that refuses "0" followed by a digit, then one to three ASCII digits
// whose value fits in 0 to 255 (the number parser fails on overflow): the same strings.
inline auto decOctet() {
    return qi::copy(!(qi::lit(L'0') >> digit()) >> qi::uint_parser<std::uint8_t, 10, 1, 3>());
}

// IPv4address = dec-octet "." dec-octet "." dec-octet "." dec-octet
inline auto ipv4Address() {
    return qi::copy(qi::omit[decOctet() >> qi::repeat(3)[qi::lit(L'.') >> decOctet()]]);
}

// ls32 = ( h16 ":" h16 ) / IPv4address
inline auto ls32() {
    return qi::copy((h16() >> qi::lit(L':') >> h16()) | ipv4Address());
}

// The optional leading group of the compressed forms below: [ h16 ":" ] that takes an h16 and
// its colon only when that colon is not the first of "::".
inline auto h16ColonNotDouble() {
    return qi::copy(-(h16() >> qi::lit(L':') >> !qi::lit(L':')));
}

// IPv6address =                            6( h16 ":" ) ls32
//             /                       "::" 5( h16 ":" ) ls32
//             / [               h16 ] "::" 4( h16 ":" ) ls32
//             / [ *1( h16 ":" ) h16 ] "::" 3( h16 ":" ) ls32
//             / [ *2( h16 ":" ) h16 ] "::" 2( h16 ":" ) ls32
//             / [ *3( h16 ":" ) h16 ] "::"    h16 ":"   ls32
//             / [ *4( h16 ":" ) h16 ] "::"              ls32
//             / [ *5( h16 ":" ) h16 ] "::"              h16
//             / [ *6( h16 ":" ) h16 ] "::"
// Each "[ *n( h16 ":" ) h16 ]" is written as n optional groups that refuse the colon of "::",
// then an optional h16; the alternatives are tried in this order.
inline auto ipv6Address() {
    const auto pair = qi::copy(h16() >> qi::lit(L':'));
    const auto z = h16ColonNotDouble();
    // "::" as two literals: deep copies keep single characters, not arrays.
    const auto dc = qi::copy(qi::lit(L':') >> qi::lit(L':'));
    return qi::copy(                                                              //
        (qi::repeat(6)[pair] >> ls32())                                           //
        | (dc >> qi::repeat(5)[pair] >> ls32())                                   //
        | (-h16() >> dc >> qi::repeat(4)[pair] >> ls32())                         //
        | (z >> -h16() >> dc >> qi::repeat(3)[pair] >> ls32())                    //
        | (qi::repeat(2)[z] >> -h16() >> dc >> qi::repeat(2)[pair] >> ls32())     //
        | (qi::repeat(3)[z] >> -h16() >> dc >> h16() >> qi::lit(L':') >> ls32())  //
        | (qi::repeat(4)[z] >> -h16() >> dc >> ls32())                            //
        | (qi::repeat(5)[z] >> -h16() >> dc >> h16())                             //
        | (qi::repeat(6)[z] >> -h16() >> dc));
}

// IPvFuture = "v" 1*HEXDIG "." 1*( unreserved / sub-delims / ":" )
// The "v" is matched case-sensitively ("V" is refused); iunreserved stands for unreserved.
inline auto ipvFuture() {
    return qi::copy(qi::lit(L'v') >> +xdigit() >> qi::lit(L'.') >>
                    +(iunreserved() | subDelims() | qi::lit(L':')));
}

}  // namespace foundation::network::iri::detail::irigrammar
