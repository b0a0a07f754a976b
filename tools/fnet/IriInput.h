/// @file
/// @brief One UTF-8 input read as an IRI, for the subcommands that take IRIs.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "Commands.h"
#include "foundation/network/IRI.h"

namespace fnet {

/// The IRI parsed from `utf8`, or nothing with `error` set to the message (invalid UTF-8, or
/// the library's exception text).
std::optional<foundation::network::IRI> readIri(std::string_view utf8, std::string& error);

/// What a command does with one IRI and the base: sets its keys or plain text in `out`.
using AgainstBase = std::function<void(const foundation::network::IRI& iri,
                                       const foundation::network::IRI& base, Outcome& out)>;

/// The job of a "BASE IRI..." command (its inputs from the second argument on): the first
/// argument is the base, every input an IRI handed to `handle` with it. The record carries the
/// base; a base that does not parse fails every input with a message about the base.
Job againstBase(const Cli& cli, RecordKeys keys, const AgainstBase& handle);

}  // namespace fnet
