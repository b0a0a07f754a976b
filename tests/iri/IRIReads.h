// What an IRI value answers, for tests that compare two values or one value across threads.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "foundation/network/IRI.h"
#include "support/Text.h"

namespace fntest {

using Reads = std::vector<std::optional<std::u16string>>;

// Scheme, user info, host, port, path, query, fragment, authority, scheme-specific part and the
// text from the parts, in `form`; an absent part (its getter throws) as nullopt.
inline Reads reads(const foundation::network::IRI& iri,
                   const foundation::network::iri::Encoding& form) {
    using foundation::network::IRI;
    const std::function<std::u16string()> getters[] = {
        [&] { return iri.getScheme(); },
        [&] { return iri.getUserInfo(form); },
        [&] { return iri.getHost(form); },
        [&] { return iri.getPort(); },
        [&] { return iri.getPath(form); },
        [&] { return iri.getQuery(form); },
        [&] { return iri.getFragment(form); },
        [&] { return iri.getAuthority(form); },
        [&] { return iri.getSchemeSpecificPart(form); },
        [&] { return iri.toStringFromParts(form); }};
    Reads out;
    for (const auto& get : getters) {
        try {
            out.emplace_back(get());
        } catch (const std::runtime_error&) {
            out.emplace_back();
        }
    }
    return out;
}

// Every read in every form (the derived forms in a mixed order), the four texts and the hash.
inline Reads readEverything(const foundation::network::IRI& iri) {
    Reads out;
    for (unsigned form : {3u, 0u, 4u, 1u, 2u}) {
        const Reads some = reads(iri, foundation::network::iri::Encoding(form));
        out.insert(out.end(), some.begin(), some.end());
    }
    for (const bool strict : {true, false}) {
        out.insert(out.end(), {iri.toString(strict), iri.toAsciiString(strict)});
    }
    const std::uint64_t hash = iri.hashValue();
    out.emplace_back(std::u16string{char16_t(hash), char16_t(hash >> 16), char16_t(hash >> 32),
                                    char16_t(hash >> 48)});
    return out;
}

// Values are ordered by their text code point by code point (the byte order of its UTF-8), equal
// exactly when their texts are and then hashed alike; so `<` is a strict weak order whose
// equivalent values are the equal ones.
inline void expectOrderedByText(const std::vector<const foundation::network::IRI*>& values) {
    std::vector<std::string> texts;
    for (const auto* value : values) {
        texts.push_back(utf8(value->toString(false)));
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        for (std::size_t j = 0; j < values.size(); ++j) {
            const auto &a = *values[i], &b = *values[j];
            ASSERT_EQ(a < b, texts[i] < texts[j]) << texts[i] << " < " << texts[j];
            ASSERT_EQ(a == b, texts[i] == texts[j]) << texts[i] << " == " << texts[j];
            ASSERT_EQ(a != b, texts[i] != texts[j]) << texts[i] << " != " << texts[j];
            ASSERT_TRUE(a != b || a.hashValue() == b.hashValue()) << texts[i];
        }
    }
}

}  // namespace fntest
