/// @file
/// @brief Text rules of the IRI grammar: segments, paths, user info, registered name, port,
/// query, fragment and scheme (RFC 3987 section 2.2, RFC 3986 section 3).
///
/// Where a rule is a repetition of single code points, its alternatives are merged into one
/// class test. In ipchar and its relatives the pct-encoded alternative needs no branch of its
/// own: "%" and every hex digit belong to the class themselves, so every match is the same.
#pragma once

#include <boost/spirit/include/qi_auxiliary.hpp>

#include "iri/grammar/CharacterRules.h"

namespace foundation::network::iri::detail::irigrammar {

namespace chars {

constexpr bool ipcharTest(std::uint32_t c) {
    return unreservedOr<SUB_DELIM, ':', '@', '%'>(c);
}
constexpr bool pathCharTest(std::uint32_t c) {
    return unreservedOr<SUB_DELIM, ':', '@', '%', '/'>(c);
}
constexpr bool noColonTest(std::uint32_t c) {
    return unreservedOr<SUB_DELIM, '@', '%'>(c);
}
constexpr bool userInfoTest(std::uint32_t c) {
    return unreservedOr<SUB_DELIM, ':'>(c);
}
constexpr bool regNameTest(std::uint32_t c) {
    return unreservedOr<SUB_DELIM>(c);
}
constexpr bool fragmentTest(std::uint32_t c) {
    return unreservedOr<SUB_DELIM, ':', '@', '%', '/', '?'>(c);
}
constexpr bool queryTest(std::uint32_t c) {
    return fragmentTest(c) || (c >= 128 && isIprivate(c));
}

}  // namespace chars

// ipchar = iunreserved / pct-encoded / sub-delims / ":" / "@" / "%" (the class ipcharTest)
// Kept deliberately: a bare "%" (not followed by two hex digits) is accepted, unlike RFC 3987.

// isegment = *ipchar: within the runs of the path rules below, "/" and ipchar (pathCharTest).

// isegment-nz = 1*ipchar
inline auto isegmentNz() {
    return chars::RunOfOneOrMore<chars::ipcharTest>{};
}

// isegment-nz-nc = 1*( iunreserved / pct-encoded / sub-delims / "@" / "%" )
// Kept deliberately: a bare "%" is accepted here too.
inline auto isegmentNzNc() {
    return chars::RunOfOneOrMore<chars::noColonTest>{};
}

// ipath-abempty = *( "/" isegment )
inline auto ipathAbempty() {
    return chars::SlashLedRun<chars::pathCharTest>{};
}

// ipath-absolute = "/" [ isegment-nz *( "/" isegment ) ]
inline auto ipathAbsolute() {
    return qi::copy(qi::lit(L'/') >> -(isegmentNz() >> chars::SlashLedRun<chars::pathCharTest>{}));
}

// ipath-rootless = isegment-nz *( "/" isegment )
inline auto ipathRootless() {
    return qi::copy(isegmentNz() >> chars::SlashLedRun<chars::pathCharTest>{});
}

// ipath-noscheme = isegment-nz-nc *( "/" isegment )
inline auto ipathNoscheme() {
    return qi::copy(isegmentNzNc() >> chars::SlashLedRun<chars::pathCharTest>{});
}

// ipath-empty = 0<ipchar>
inline auto ipathEmpty() {
    return qi::copy(qi::eps);
}

// iuserinfo = *( iunreserved / pct-encoded / sub-delims / ":" )
inline auto iuserinfo() {
    return chars::EscapedRun<chars::userInfoTest>{};
}

// ireg-name = *( iunreserved / pct-encoded / sub-delims )
inline auto iregName() {
    return chars::EscapedRun<chars::regNameTest>{};
}

// port = *DIGIT
// Any Unicode decimal digit, not only ASCII; turning the text into a number accepts ASCII only.
inline auto port() {
    return chars::Run<chars::digitTest>{};
}

// iquery = *( ipchar / iprivate / "/" / "?" )
inline auto iquery() {
    return chars::Run<chars::queryTest>{};
}

// ifragment = *( ipchar / "/" / "?" )
inline auto ifragment() {
    return chars::Run<chars::fragmentTest>{};
}

// scheme = ALPHA *( ALPHA / DIGIT / "+" / "-" / "." )
// ALPHA and DIGIT are Unicode (Alphabetic and Nd): a scheme may hold non-ASCII letters.
inline auto scheme() {
    return qi::copy(alpha() >> chars::Run<chars::schemeTailTest>{});
}

}  // namespace foundation::network::iri::detail::irigrammar
