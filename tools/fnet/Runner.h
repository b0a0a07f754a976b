/// @file
/// @brief The one loop every subcommand with inputs shares: inputs are read (arguments, and the
/// lines of standard input for "-", streamed), handed to the command one at a time, and each
/// outcome written as the command's plain text or as one JSON record, in the order of the inputs.
///
/// A record is always {"input": ..., the command's keys in their declared order, "error": ...}:
/// a key the command left unset is null, and error is null on success.
#pragma once

#include <boost/json/object.hpp>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Cli.h"

namespace fnet {

/// What a command made of one input.
struct Outcome {
    explicit Outcome(boost::json::storage_ptr memory = {}) : keys(std::move(memory)) {}

    /// The record: with --json the runner has put "input", each of the command's keys (null)
    /// and "error" in place; the handler sets the values of its keys.
    boost::json::object keys;
    std::string text;   ///< plain output, whole lines
    std::string error;  ///< the message; empty on success
    /// The text the message is about when it is not the input (the base of a resolution).
    std::optional<std::string> subject;

    bool failed() const { return !error.empty(); }
    /// Marks the outcome failed with `message` (an empty message still counts as a failure).
    void fail(std::string message) { error = message.empty() ? "failed" : std::move(message); }
};

/// Handles one input: `items` holds one text, or two for a command that takes pairs.
using Handler = std::function<void(std::span<const std::string_view> items, Outcome& out)>;

/// The record of a command: its keys in order.
using RecordKeys = std::vector<const char*>;

/// How a command takes its inputs.
struct InputShape {
    /// 1, or 2 for a command that takes inputs in pairs (an unpaired last input is a usage
    /// error).
    std::size_t group = 1;
    /// The fewest inputs worth a thread of their own: many for quick work, 1 for inputs that
    /// wait on the network.
    std::size_t perThread = 64;
};

/// Runs a command over its inputs: the positional arguments from index `from` on, "-" standing
/// for the lines of standard input (a leading byte-order mark and each line's "\r" dropped).
/// `makeHandler` is called once per worker thread (at most cli.jobs()); a handler is only ever
/// called from its own thread. Returns the exit status.
int runInputs(const Cli& cli, std::size_t from, const RecordKeys& keys,
              const std::function<Handler()>& makeHandler, InputShape shape = {});

/// Writes the outcome of a command without inputs: plain text or one record of `keys` (with
/// "input" first when `input` is given), and the message on failure. Returns the exit status.
int writeOutcome(const Cli& cli, const RecordKeys& keys, const Outcome& outcome,
                 const std::optional<std::string>& input = std::nullopt);

}  // namespace fnet
