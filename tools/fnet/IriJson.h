/// @file
/// @brief An IRI as one JSON object (what `fnet iri --json` prints per input), for every
/// subcommand that shows IRIs.
#pragma once

#include <string>

#include "Json.h"
#include "foundation/network/IRI.h"

namespace fnet {

/// The object for `iri` parsed from `input`: input, error (null), the flags, scheme, port,
/// portNumber, each component (user info, host, path, query, fragment, authority, scheme-
/// specific part) as null when absent or an object with the keys "0" to "4", and the four
/// serialisations.
JsonObject iriJson(const std::string& input, const foundation::network::IRI& iri);

/// The same keys for an input that failed: input, the error message, every other key null.
JsonObject iriErrorJson(const std::string& input, const std::string& error);

/// What `fnet iri` prints for `iri` parsed from `input` without --json (IriCommand.cpp).
void printIri(const std::string& input, const foundation::network::IRI& iri);

}  // namespace fnet
