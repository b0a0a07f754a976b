// fnet resolve: the target of each reference resolved against a base.
#include <exception>
#include <optional>
#include <string>

#include "Commands.h"
#include "IriInput.h"
#include "Json.h"
#include "Runner.h"
#include "Text.h"

namespace fnet {

using foundation::network::IRI;

int runResolve(int argc, char** argv) {
    Cli cli("resolve", "[--ascii] [--json] [--] BASE REF...",
            "Resolves each reference REF against BASE (RFC 3986 section 5.2) and prints the\n"
            "target, one per line, as IRI text (toString), or with --ascii as ASCII URI text\n"
            "(toAsciiString). Every component's text passes through as written. With --json:\n"
            "one object per reference with the keys input (the reference), base, target,\n"
            "targetAscii and error (null, or the message).",
            {{"--ascii", "", "print the ASCII (URI) form of each target"}});
    if (const auto status = cli.parse(argc, argv)) {
        return *status;
    }
    if (cli.arguments().size() < 2) {
        return cli.usageError("needs a base and at least one reference");
    }
    const std::string& baseText = cli.arguments().front();
    std::string baseError;
    const std::optional<IRI> base = readIri(baseText, baseError);
    const bool json = cli.json();
    const bool ascii = cli.has("--ascii");
    return runInputs(cli, 1, {"base", "target", "targetAscii"}, [&]() -> Handler {
        // Each worker resolves against its own copy of the base.
        return [&, base](std::span<const std::string_view> items, Outcome& out) {
            if (json) {
                out.keys["base"] = jsonSafe(baseText);
            }
            if (!base) {
                out.subject = baseText;
                out.fail("base: " + baseError);
                return;
            }
            std::string error;
            const std::optional<IRI> reference = readIri(items[0], error);
            if (!reference) {
                out.fail(error);
                return;
            }
            const IRI target = reference->resolveAgainst(*base);
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
    });
}

}  // namespace fnet
