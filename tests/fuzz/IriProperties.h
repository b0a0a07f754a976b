/// @file
/// @brief Properties every IRI value must have, whichever way it was made: its texts read back,
/// and comparison, order and hash agree (the values are safe container keys).
#pragma once

#include "foundation/network/IRI.h"
#include "fuzz/FuzzSupport.h"

namespace fnfuzz {

using foundation::network::IRI;
using foundation::network::iri::Encoding;

/// Kept: the grammar's letter and digit classes are Unicode ones, so an IP literal may hold
/// non-ASCII letters or fullwidth digits ("[v1.\u00FF]"); its URI form percent-encodes them, and
/// an IP literal has no escapes, so that form does not parse.
inline bool hasNonAsciiIpLiteral(const IRI& iri) {
    const std::u16string host = iri.hasHost() ? iri.getHost(Encoding::iri()) : u"";
    return !host.empty() && host[0] == u'[' &&
           std::any_of(host.begin(), host.end(), [](char16_t c) { return c >= 0x80; });
}

/// Each of the four texts parses again, to the same text in its form and the same components;
/// the IRI text to an equal value with the same hash.
inline void checkTextReadsBack(const IRI& value) {
    using Has = bool (IRI::*)() const noexcept;
    for (std::uint32_t form = 1; form <= 4; ++form) {
        if (form >= 3 && hasNonAsciiIpLiteral(value)) {
            continue;
        }
        const Encoding encoding(form);
        const std::u16string text = value.toStringFromParts(encoding);
        try {
            const IRI again(text);
            FNFUZZ_CHECK(again.toStringFromParts(encoding) == text);
            FNFUZZ_CHECK(value.isEmpty() || again.getPath(encoding) == value.getPath(encoding));
            for (const Has has :
                 {&IRI::isEmpty, &IRI::hasScheme, &IRI::hasAuthority, &IRI::hasUserInfo,
                  &IRI::hasPort, &IRI::hasQuery, &IRI::hasFragment, &IRI::hasAbsolutePath}) {
                FNFUZZ_CHECK((again.*has)() == (value.*has)());
            }
            FNFUZZ_CHECK(form != 1 || (again == value && again.hashValue() == value.hashValue()));
        } catch (const std::logic_error& e) {
            fail(e.what(), "reading a text back");
        }
    }
}

/// Equality, order and hash of two values agree: equal exactly when neither is less, equal
/// values hash alike, and the order is asymmetric.
inline void checkKeys(const IRI& a, const IRI& b) {
    const bool equal = a == b;
    FNFUZZ_CHECK(equal == (b == a) && equal == !(a != b) && !(a < a));
    FNFUZZ_CHECK(!(a < b && b < a) && equal == (!(a < b) && !(b < a)));
    FNFUZZ_CHECK(!equal || a.hashValue() == b.hashValue());
}

}  // namespace fnfuzz
