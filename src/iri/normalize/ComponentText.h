// The components of an IRI as text in one Encoding, and their assembly into a whole.
#pragma once

#include <string>

#include "foundation/network/Encoding.h"

namespace foundation::network {
class IRI;
}

namespace foundation::network::iri::detail {

struct ComponentText {
    std::u16string scheme, userInfo, host, port, path, query, fragment;
    bool hasScheme = false, hasAuthority = false, hasUserInfo = false, hasPort = false;
    bool hasQuery = false, hasFragment = false;
};

/// The components of `iri` (not empty) in `encoding`; the scheme and port as written.
ComponentText componentText(const IRI& iri, const Encoding& encoding);

/// The reference the components spell, delimiters included.
std::u16string assemble(const ComponentText& text);

/// Whether `host` is a non-empty registered name (not an IP literal).
bool isRegisteredName(const std::u16string& host);

}  // namespace foundation::network::iri::detail
