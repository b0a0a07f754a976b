/// @file
/// @brief An IRI as the keys of one record (what `fnet iri --json` prints per input) and as
/// plain text, for every subcommand that shows IRIs.
#pragma once

#include <string>

#include "Runner.h"
#include "foundation/network/IRI.h"

namespace fnet {

/// The keys of an IRI record, in order: the flags, scheme, port, portNumber, each component
/// (user info, host, path, query, fragment, authority, scheme-specific part) as null when
/// absent or an object with the keys "0" to "4", and the four serialisations.
extern const RecordKeys kIriKeys;

/// Sets the keys of `kIriKeys` for `iri`.
void iriJson(const foundation::network::IRI& iri, boost::json::object& keys);

/// What `fnet iri` prints for `iri` parsed from `input` without --json.
std::string iriText(std::string_view input, const foundation::network::IRI& iri);

/// What `fnet iri` prints without --json for an input that failed.
std::string iriErrorText(std::string_view input, const std::string& error);

}  // namespace fnet
