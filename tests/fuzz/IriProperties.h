/// @file
/// @brief Properties every IRI value must have, whichever way it was made: its texts read back,
/// and comparison, order and hash agree (the values are safe container keys).
#pragma once

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <string>

#include "foundation/network/IRI.h"
#include "fuzz/FuzzSupport.h"

namespace fnfuzz {

/// Kept: the grammar's letter and digit classes are Unicode ones, so an IP literal may hold
/// non-ASCII letters or fullwidth digits ("[v1.\u00FF]"); its URI form percent-encodes them, and
/// an IP literal has no escapes, so that form does not parse.
inline bool hasNonAsciiIpLiteral(const foundation::network::IRI& iri) {
    if (!iri.hasHost()) {
        return false;
    }
    const std::u16string host = iri.getHost(foundation::network::iri::Encoding::iri());
    return !host.empty() && host[0] == u'[' &&
           std::any_of(host.begin(), host.end(), [](char16_t c) { return c >= 0x80; });
}

/// Each of the four texts parses again, to the same text in its form and the same components;
/// the IRI text to an equal value with the same hash.
inline void checkTextReadsBack(const foundation::network::IRI& value) {
    using foundation::network::IRI;
    using foundation::network::iri::Encoding;
    const auto sameShape = [&value](const IRI& again) {
        FNFUZZ_CHECK(again.isEmpty() == value.isEmpty());
        FNFUZZ_CHECK(again.hasScheme() == value.hasScheme());
        FNFUZZ_CHECK(again.hasAuthority() == value.hasAuthority());
        FNFUZZ_CHECK(again.hasUserInfo() == value.hasUserInfo());
        FNFUZZ_CHECK(again.hasPort() == value.hasPort());
        FNFUZZ_CHECK(again.hasQuery() == value.hasQuery());
        FNFUZZ_CHECK(again.hasFragment() == value.hasFragment());
        FNFUZZ_CHECK(again.hasAbsolutePath() == value.hasAbsolutePath());
    };
    for (std::uint32_t form = 1; form <= 4; ++form) {
        if (form >= 3 && hasNonAsciiIpLiteral(value)) {
            continue;
        }
        const Encoding encoding(form);
        const std::u16string text = value.toStringFromParts(encoding);
        try {
            const IRI again(text);
            FNFUZZ_CHECK(again.toStringFromParts(encoding) == text);
            if (!value.isEmpty()) {
                FNFUZZ_CHECK(again.getPath(encoding) == value.getPath(encoding));
            }
            sameShape(again);
            if (form == 1) {
                FNFUZZ_CHECK(again == value && again.hashValue() == value.hashValue());
            }
        } catch (const std::logic_error& e) {
            fail(e.what(), __FILE__, __LINE__);
        }
    }
}

/// Equality, order and hash of two values agree: equal exactly when neither is less, equal
/// values hash alike, and the order is asymmetric.
inline void checkKeys(const foundation::network::IRI& a, const foundation::network::IRI& b) {
    const bool equal = a == b;
    FNFUZZ_CHECK(equal == (b == a) && equal == !(a != b));
    FNFUZZ_CHECK(!(a < a));
    FNFUZZ_CHECK(!(a < b && b < a));
    FNFUZZ_CHECK(equal == (!(a < b) && !(b < a)));
    FNFUZZ_CHECK(!equal || a.hashValue() == b.hashValue());
}

}  // namespace fnfuzz
