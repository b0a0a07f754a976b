/// @file
/// @brief Character rules of the IRI grammar (RFC 3987 section 2.2, RFC 3986 section 2) as
/// Spirit.Qi primitives over code points.
///
/// Every class is one primitive parser that tests one code point and consumes it, with no
/// attribute, so that a repetition over it compiles to a plain loop. ASCII is answered from one
/// table; other code points go through Spirit's Unicode tables (Alphabetic, Nd, Hex_Digit),
/// which give the same answers for ASCII as the table.
#pragma once

#include <array>
#include <cstdint>

#include <boost/proto/traits.hpp>
#include <boost/spirit/home/support/char_encoding/unicode.hpp>
#include <boost/spirit/include/qi_char.hpp>
#include <boost/spirit/include/qi_copy.hpp>
#include <boost/spirit/include/qi_operator.hpp>
#include <boost/spirit/include/qi_parse.hpp>

namespace foundation::network::iri::detail::irigrammar {

namespace qi = boost::spirit::qi;

namespace chars {

using Unicode = boost::spirit::char_encoding::unicode;

/// Membership flags of the ASCII table, one per class that the rules use.
enum Flag : std::uint16_t {
    ALPHA = 1u << 0,        ///< A-Z a-z
    DIGIT = 1u << 1,        ///< 0-9
    XDIGIT = 1u << 2,       ///< 0-9 A-F a-f
    UNRESERVED = 1u << 3,   ///< ALPHA DIGIT "-._~"
    SUB_DELIM = 1u << 4,    ///< "!$&'()*+,;="
    GEN_DELIM = 1u << 5,    ///< ":/?#[]@"
    SCHEME_TAIL = 1u << 6,  ///< ALPHA DIGIT "+.-"
};

constexpr std::array<std::uint16_t, 128> makeAsciiTable() {
    std::array<std::uint16_t, 128> table{};
    for (int c = 'A'; c <= 'Z'; ++c)
        table[c] |= ALPHA | UNRESERVED | SCHEME_TAIL;
    for (int c = 'a'; c <= 'z'; ++c)
        table[c] |= ALPHA | UNRESERVED | SCHEME_TAIL;
    for (int c = '0'; c <= '9'; ++c)
        table[c] |= DIGIT | XDIGIT | UNRESERVED | SCHEME_TAIL;
    for (int c = 'A'; c <= 'F'; ++c)
        table[c] |= XDIGIT;
    for (int c = 'a'; c <= 'f'; ++c)
        table[c] |= XDIGIT;
    for (const char c : {'-', '.', '_', '~'})
        table[c] |= UNRESERVED;
    for (const char c : {'!', '$', '&', '\'', '(', ')', '*', '+', ',', ';', '='})
        table[c] |= SUB_DELIM;
    for (const char c : {':', '/', '?', '#', '[', ']', '@'})
        table[c] |= GEN_DELIM;
    for (const char c : {'+', '.', '-'})
        table[c] |= SCHEME_TAIL;
    return table;
}

inline constexpr std::array<std::uint16_t, 128> kAscii = makeAsciiTable();

constexpr bool ascii(std::uint32_t c, std::uint16_t flags) {
    return (kAscii[c] & flags) != 0;
}

// The Unicode tables hold U+0000 to U+10FFFF only; nothing above is a letter or a digit.
inline bool isAlpha(std::uint32_t c) {
    return c <= 0x10FFFF && Unicode::isalpha(c);
}
inline bool isDigit(std::uint32_t c) {
    return c <= 0x10FFFF && Unicode::isdigit(c);
}
inline bool isXdigit(std::uint32_t c) {
    return c <= 0x10FFFF && Unicode::isxdigit(c);
}
inline bool isAlnum(std::uint32_t c) {
    return c <= 0x10FFFF && Unicode::isalnum(c);
}

// ucschar = %xA0-D7FF / %xF900-FDCF / %xFDF0-FFEF / %x10000-1FFFD / ... / %xD0000-DFFFD
//         / %xE1000-EFFFD
constexpr bool isUcschar(std::uint32_t c) {
    if (c < 0x10000) {
        return (c >= 0xA0 && c <= 0xD7FF) || (c >= 0xF900 && c <= 0xFDCF) ||
               (c >= 0xFDF0 && c <= 0xFFEF);
    }
    // Planes 1 to 13 without their last two code points, and plane 14 from U+E1000.
    if (c < 0xE0000) {
        return (c & 0xFFFF) <= 0xFFFD;
    }
    return c >= 0xE1000 && c <= 0xEFFFD;
}

// iprivate = %xE000-F8FF / %xE0000-E0FFF / %xF0000-FFFFD / %x100000-10FFFD
// Kept deliberately: the range %xE0000-E0FFF is not in RFC 3987 (which leaves it out of both
// ucschar and iprivate); here such code points are allowed in queries.
constexpr bool isIprivate(std::uint32_t c) {
    return (c >= 0xE000 && c <= 0xF8FF) || (c >= 0xE0000 && c <= 0xE0FFF) ||
           (c >= 0xF0000 && c <= 0xFFFFD) || (c >= 0x100000 && c <= 0x10FFFD);
}

// iunreserved = alnum / "-" / "." / "_" / "~" / ucschar
// alnum is Unicode (Alphabetic or Nd), not ASCII as in RFC 3987.
constexpr bool isIunreserved(std::uint32_t c) {
    return c < 128 ? ascii(c, UNRESERVED) : (isUcschar(c) || isAlnum(c));
}

// Non-ASCII code points are never delimiters; these classes differ from iunreserved in ASCII
// only.
template <std::uint16_t AsciiFlags, char... Extra>
constexpr bool unreservedOr(std::uint32_t c) {
    if (c < 128) {
        return ascii(c, UNRESERVED | AsciiFlags) ||
               ((c == static_cast<std::uint32_t>(Extra)) || ...);
    }
    return isUcschar(c) || isAlnum(c);
}

/// A Spirit.Qi primitive that consumes one code point for which `Test` holds. It has no
/// attribute: the grammar reads ranges (raw), never characters. Over UTF-16 units a surrogate
/// pair is one code point; a lone surrogate is in no class.
template <bool (*Test)(std::uint32_t)>
struct CharClassParser : qi::primitive_parser<CharClassParser<Test>> {
    // The class over ASCII, one entry per code point.
    static constexpr std::array<bool, 128> kAsciiMembers = [] {
        std::array<bool, 128> members{};
        for (std::uint32_t c = 0; c < 128; ++c) {
            members[c] = Test(c);
        }
        return members;
    }();

    template <class Context, class Iterator>
    struct attribute {
        using type = boost::spirit::unused_type;
    };

    template <class Iterator, class Context, class Skipper, class Attribute>
    bool parse(Iterator& first, const Iterator& last, Context&, const Skipper& skipper,
               Attribute&) const {
        qi::skip_over(first, last, skipper);
        if (first == last) {
            return false;
        }
        auto c = static_cast<std::uint32_t>(*first);
        if constexpr (sizeof(*first) == 2) {
            if (c >= 0xD800 && c <= 0xDBFF) {
                Iterator next = first;
                if (++next == last || *next < 0xDC00 || *next > 0xDFFF) {
                    return false;
                }
                c = 0x10000 + ((c - 0xD800) << 10) + (static_cast<std::uint32_t>(*next) - 0xDC00);
                if (!Test(c)) {
                    return false;
                }
                first = ++next;
                return true;
            }
        }
        if (c < 128 ? kAsciiMembers[c] : Test(c)) {
            ++first;
            return true;
        }
        return false;
    }

    template <class Context>
    boost::spirit::info what(Context&) const {
        return boost::spirit::info("character-class");
    }
};

template <bool (*Test)(std::uint32_t)>
using Terminal = typename boost::proto::terminal<CharClassParser<Test>>::type;

/// The same class repeated: the longest run of code points for which `Test` holds, failing when
/// it is shorter than `Min`. Equal to `*Terminal<Test>` (Min 0) or `+Terminal<Test>` (Min 1),
/// in one tight loop: the runs (path segments, query, fragment) are most of every text. With a
/// `Lead`, the run matches only where that character stands first, and is empty elsewhere.
template <bool (*Test)(std::uint32_t), unsigned Min, char16_t Lead = 0>
struct CharRunParser : qi::primitive_parser<CharRunParser<Test, Min, Lead>> {
    template <class Context, class Iterator>
    struct attribute {
        using type = boost::spirit::unused_type;
    };

    template <class Iterator, class Context, class Skipper, class Attribute>
    bool parse(Iterator& first, const Iterator& last, Context& context, const Skipper& skipper,
               Attribute& attribute) const {
        qi::skip_over(first, last, skipper);
        if constexpr (Lead != 0) {
            static_assert(Min == 0);
            if (first == last || static_cast<std::uint32_t>(*first) != Lead) {
                return true;
            }
        }
        const CharClassParser<Test> one;
        Iterator it = first;
        unsigned count = 0;
        while (it != last) {
            const auto c = static_cast<std::uint32_t>(*it);
            if (c < 128) {  // ASCII, the common case: one unit, one look-up
                if (!CharClassParser<Test>::kAsciiMembers[c]) {
                    break;
                }
                ++it;
            } else if (!one.parse(it, last, context, boost::spirit::unused, attribute)) {
                break;
            }
            ++count;
        }
        if (count < Min) {
            return false;
        }
        first = it;
        return true;
    }

    template <class Context>
    boost::spirit::info what(Context&) const {
        return boost::spirit::info("character-run");
    }
};

/// `*( Terminal<Test> | "%" xdigit xdigit )` as one primitive: the longest run of code points
/// of the class and complete escapes, tried in that order at each step, as the alternative
/// tries them.
template <bool (*Test)(std::uint32_t)>
struct EscapedRunParser : qi::primitive_parser<EscapedRunParser<Test>> {
    template <class Context, class Iterator>
    struct attribute {
        using type = boost::spirit::unused_type;
    };

    template <class Iterator, class Context, class Skipper, class Attribute>
    bool parse(Iterator& first, const Iterator& last, Context& context, const Skipper& skipper,
               Attribute& attribute) const;

    template <class Context>
    boost::spirit::info what(Context&) const {
        return boost::spirit::info("escaped-run");
    }
};

/// `*Terminal<Test>` and `+Terminal<Test>` as single primitives.
template <bool (*Test)(std::uint32_t)>
using Run = typename boost::proto::terminal<CharRunParser<Test, 0>>::type;
template <bool (*Test)(std::uint32_t)>
using RunOfOneOrMore = typename boost::proto::terminal<CharRunParser<Test, 1>>::type;
/// `*( "/" *Terminal<Test> )`: a run that begins with "/" (Test holds for "/"), or nothing.
template <bool (*Test)(std::uint32_t)>
using SlashLedRun = typename boost::proto::terminal<CharRunParser<Test, 0, u'/'>>::type;

constexpr bool alphaTest(std::uint32_t c) {
    return c < 128 ? ascii(c, ALPHA) : isAlpha(c);
}
constexpr bool digitTest(std::uint32_t c) {
    return c < 128 ? ascii(c, DIGIT) : isDigit(c);
}
constexpr bool xdigitTest(std::uint32_t c) {
    return c < 128 ? ascii(c, XDIGIT) : isXdigit(c);
}
constexpr bool subDelimTest(std::uint32_t c) {
    return c < 128 && ascii(c, SUB_DELIM);
}
constexpr bool schemeTailTest(std::uint32_t c) {
    return c < 128 ? ascii(c, SCHEME_TAIL) : isAlnum(c);
}

}  // namespace chars

// Character classes (Unicode classification, not ASCII).
/// alpha: Unicode Alphabetic.
inline auto alpha() {
    return chars::Terminal<chars::alphaTest>{};
}
/// digit: general category Nd.
inline auto digit() {
    return chars::Terminal<chars::digitTest>{};
}
/// xdigit: Unicode Hex_Digit (fullwidth 0-9, A-F, a-f included).
inline auto xdigit() {
    return chars::Terminal<chars::xdigitTest>{};
}
/// sub-delims = "!" / "$" / "&" / "'" / "(" / ")" / "*" / "+" / "," / ";" / "="
inline auto subDelims() {
    return chars::Terminal<chars::subDelimTest>{};
}
/// iunreserved = alnum / "-" / "." / "_" / "~" / ucschar
inline auto iunreserved() {
    return chars::Terminal<chars::isIunreserved>{};
}

namespace chars {

template <bool (*Test)(std::uint32_t)>
template <class Iterator, class Context, class Skipper, class Attribute>
bool EscapedRunParser<Test>::parse(Iterator& first, const Iterator& last, Context& context,
                                   const Skipper& skipper, Attribute& attribute) const {
    qi::skip_over(first, last, skipper);
    const CharClassParser<Test> one;
    const CharClassParser<xdigitTest> hex;
    Iterator it = first;
    while (it != last) {
        const auto c = static_cast<std::uint32_t>(*it);
        if (c < 128 && CharClassParser<Test>::kAsciiMembers[c]) {
            ++it;
            continue;
        }
        if (c >= 128 && one.parse(it, last, context, boost::spirit::unused, attribute)) {
            continue;
        }
        if (c != '%') {
            break;
        }
        Iterator escape = it;
        ++escape;
        if (!hex.parse(escape, last, context, boost::spirit::unused, attribute) ||
            !hex.parse(escape, last, context, boost::spirit::unused, attribute)) {
            break;
        }
        it = escape;
    }
    first = it;
    return true;
}

template <bool (*Test)(std::uint32_t)>
using EscapedRun = typename boost::proto::terminal<EscapedRunParser<Test>>::type;

}  // namespace chars

/// pct-encoded = "%" HEXDIG HEXDIG, with Unicode hex digits (fullwidth ones included).
inline auto pctEncoded() {
    return qi::copy(qi::lit(L'%') >> xdigit() >> xdigit());
}

}  // namespace foundation::network::iri::detail::irigrammar
