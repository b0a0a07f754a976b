// fnet resolve: the target of each reference resolved against a base.
#include <exception>
#include <string>

#include "Commands.h"
#include "IriInput.h"
#include "Runner.h"
#include "Text.h"

namespace fnet {

using foundation::network::IRI;

namespace {

Job prepare(const Cli& cli) {
    const bool json = cli.json();
    const bool ascii = cli.has("--ascii");
    const auto resolve = [json, ascii](const IRI& reference, const IRI& base, Outcome& out) {
        const IRI target = reference.resolveAgainst(base);
        const std::string text = utf16ToUtf8(target.toString(false));
        // IRI text without a non-ASCII character is its own URI text.
        const auto asciiText = [&] {
            return isAscii(text) ? text : utf16ToUtf8(target.toAsciiString(false));
        };
        if (json) {
            out.keys["target"] = text;
            out.keys["targetAscii"] = asciiText();
        } else {
            out.text = (ascii ? asciiText() : text) + "\n";
        }
    };
    return againstBase(cli, {"base", "target", "targetAscii"}, resolve);
}

}  // namespace

const Command kResolveCommand{
    .name = "resolve",
    .summary = "resolve references against a base IRI",
    .usage = "[--ascii] [--json] [--] BASE REF...",
    .description =
        "Resolves each reference REF against BASE (RFC 3986 section 5.2) and prints the\n"
        "target, one per line, as IRI text (toString), or with --ascii as ASCII URI text\n"
        "(toAsciiString). Every component's text passes through as written. With --json:\n"
        "one object per reference with the keys input (the reference), base, target,\n"
        "targetAscii and error (null, or the message).",
    .options = {{"--ascii", "", "print the ASCII (URI) form of each target"}},
    .inputs = {.fewest = 2, .missing = "needs a base and at least one reference", .from = 1},
    .prepare = prepare,
};

}  // namespace fnet
