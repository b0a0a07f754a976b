// fnet resolve: the target of each reference resolved against a base.
#include <exception>
#include <iostream>
#include <optional>
#include <string>

#include "Cli.h"
#include "Commands.h"
#include "IriInput.h"
#include "Json.h"
#include "Text.h"

namespace fnet {

using foundation::network::IRI;

int runResolve(int argc, char** argv) {
    Cli cli("resolve", "[--ascii] [--json] [--] BASE REF...",
            "Resolves each reference REF against BASE (RFC 3986 section 5.2) and prints the\n"
            "target, one per line, as IRI text (toString), or with --ascii as ASCII URI text\n"
            "(toAsciiString). Every component's text passes through as written. With --json:\n"
            "one object per reference with the keys base, reference, target, targetAscii and\n"
            "error (null, or the message).",
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
    return forEachInput(cli.inputs(1), [&](const std::string& referenceText) {
        std::string error;
        std::optional<IRI> target;
        if (!base) {
            error = "base: " + baseError;
        } else if (const std::optional<IRI> reference = readIri(referenceText, error)) {
            try {
                target = reference->resolveAgainst(*base);
            } catch (const std::exception& e) {
                error = e.what();
            }
        }
        std::optional<std::string> text;
        std::optional<std::string> ascii;
        if (target) {
            try {
                text = utf16ToUtf8(target->toString(false));
                ascii = utf16ToUtf8(target->toAsciiString(false));
            } catch (const std::exception& e) {
                error = e.what();
            }
        }
        const bool ok = text.has_value() && ascii.has_value();
        if (!ok) {
            cli.error(error + ": " + sanitizeUtf8(referenceText));
        }
        if (cli.json()) {
            JsonObject json;
            json.text("base", baseText)
                .text("reference", referenceText)
                .optionalText("target", ok ? &*text : nullptr)
                .optionalText("targetAscii", ok ? &*ascii : nullptr);
            if (ok) {
                json.null("error");
            } else {
                json.text("error", error);
            }
            std::cout << json.str() << "\n";
        } else if (ok) {
            std::cout << (cli.has("--ascii") ? *ascii : *text) << "\n";
        }
        return ok;
    });
}

}  // namespace fnet
