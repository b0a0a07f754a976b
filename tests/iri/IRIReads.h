// What an IRI value answers, for tests that compare two values or one value across threads.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "foundation/network/IRI.h"
#include "support/Text.h"

namespace fntest {

using foundation::network::IRI;
using foundation::network::iri::Encoding;
using Reads = std::vector<std::optional<std::u16string>>;

// Scheme, port, user info, host, path, query, fragment, authority, scheme-specific part and the
// text from the parts, in `form`, after `out`; an absent part (its getter throws) as nullopt.
inline Reads reads(const IRI& iri, const Encoding& form, Reads out = {}) {
    const auto add = [&out](const std::function<std::u16string()>& get) {
        try {
            out.emplace_back(get());
        } catch (const std::runtime_error&) {
            out.emplace_back();
        }
    };
    add([&] { return iri.getScheme(); });
    add([&] { return iri.getPort(); });
    for (const auto get :
         {&IRI::getUserInfo, &IRI::getHost, &IRI::getPath, &IRI::getQuery, &IRI::getFragment,
          &IRI::getAuthority, &IRI::getSchemeSpecificPart, &IRI::toStringFromParts}) {
        add([&] { return (iri.*get)(form); });
    }
    return out;
}

// Every read in every form (the derived forms in a mixed order), the four texts and the hash.
inline Reads readEverything(const IRI& iri) {
    Reads out;
    for (unsigned form : {3u, 0u, 4u, 1u, 2u}) {
        out = reads(iri, Encoding(form), std::move(out));
    }
    out.insert(out.end(), {iri.toString(true), iri.toAsciiString(true), iri.toString(false),
                           iri.toAsciiString(false)});
    out.emplace_back(u16(std::to_string(iri.hashValue())));
    return out;
}

// Values are ordered by their text code point by code point (the byte order of its UTF-8), equal
// exactly when their texts are and then hashed alike; so `<` is a strict weak order whose
// equivalent values are the equal ones.
inline void expectOrderedByText(const std::vector<IRI>& values) {
    std::vector<std::string> texts;
    for (const IRI& value : values) {
        texts.push_back(utf8(value.toString(false)));
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        for (std::size_t j = 0; j < values.size(); ++j) {
            const IRI &a = values[i], &b = values[j];
            ASSERT_EQ(a < b, texts[i] < texts[j]) << texts[i] << " < " << texts[j];
            ASSERT_TRUE((a == b) == (texts[i] == texts[j]) && (a != b) != (a == b))
                << texts[i] << " == " << texts[j];
            ASSERT_TRUE(a != b || a.hashValue() == b.hashValue()) << texts[i];
        }
    }
}

}  // namespace fntest
