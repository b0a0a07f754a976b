/// @file
/// @brief One UTF-8 input read as an IRI, for the subcommands that take IRIs.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "foundation/network/IRI.h"

namespace fnet {

/// The IRI parsed from `utf8`, or nothing with `error` set to the message (invalid UTF-8, or
/// the library's exception text).
std::optional<foundation::network::IRI> readIri(std::string_view utf8, std::string& error);

}  // namespace fnet
