// fnet relativize: each IRI written relative to a base, and whether it resolves back.
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

namespace {

// Checked through the printed text, as a reader of the output gets it: the text parses, and
// resolving it against the base gives the IRI's own text.
bool readsBack(const IRI& relative, const IRI& base, const IRI& iri) {
    try {
        return IRI(relative.toString(false)).resolveAgainst(base).toString(false) ==
               iri.toString(false);
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace

int runRelativize(int argc, char** argv) {
    Cli cli("relativize", "[--json] [--] BASE IRI...",
            "Writes each IRI as a reference relative to BASE and prints it, one per line\n"
            "(toString). Resolving it against BASE gives the IRI back, except for a base path\n"
            "not ending in \"/\" two or more directories below the shared prefix (one \"..\" too\n"
            "few). IRIs that cannot be made relative print the reason and count as failed.\n"
            "With --json: one object per IRI with the keys base, iri, relative, roundTrip\n"
            "(whether the printed reference, parsed and resolved against base, gives the text\n"
            "of iri back) and error.");
    if (const auto status = cli.parse(argc, argv)) {
        return *status;
    }
    if (cli.arguments().size() < 2) {
        return cli.usageError("needs a base and at least one IRI");
    }
    const std::string& baseText = cli.arguments().front();
    std::string baseError;
    const std::optional<IRI> base = readIri(baseText, baseError);
    return forEachInput(cli.inputs(1), [&](const std::string& iriText) {
        std::string error;
        std::optional<std::string> relative;
        bool roundTrip = false;
        if (!base) {
            error = "base: " + baseError;
        } else if (const std::optional<IRI> iri = readIri(iriText, error)) {
            try {
                const IRI result = iri->makeRelativeTo(*base);
                relative = utf16ToUtf8(result.toString(false));
                roundTrip = readsBack(result, *base, *iri);
            } catch (const std::exception& e) {
                error = e.what();
            }
        }
        if (!relative) {
            cli.error(error + ": " + sanitizeUtf8(iriText));
        }
        if (cli.json()) {
            JsonObject json;
            json.text("base", baseText)
                .text("iri", iriText)
                .optionalText("relative", relative ? &*relative : nullptr);
            if (relative) {
                json.boolean("roundTrip", roundTrip).null("error");
            } else {
                json.null("roundTrip").text("error", error);
            }
            std::cout << json.str() << "\n";
        } else if (relative) {
            std::cout << *relative << "\n";
        }
        return relative.has_value();
    });
}

}  // namespace fnet
