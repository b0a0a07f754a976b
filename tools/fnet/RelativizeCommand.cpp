// fnet relativize: each IRI written relative to a base, and whether it resolves back.
#include <exception>
#include <string>

#include "Commands.h"
#include "IriInput.h"
#include "Runner.h"
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

Job prepare(const Cli& cli) {
    const bool json = cli.json();
    const auto relativize = [json](const IRI& iri, const IRI& base, Outcome& out) {
        const IRI result = iri.makeRelativeTo(base);
        const bool roundTrip = readsBack(result, base, iri);
        const std::string relative = utf16ToUtf8(result.toString(false));
        if (json) {
            out.keys["relative"] = relative;
            out.keys["roundTrip"] = roundTrip;
        } else {
            out.text = relative + "\n";
        }
    };
    return againstBase(cli, {"base", "relative", "roundTrip"}, relativize);
}

}  // namespace

const Command kRelativizeCommand{
    .name = "relativize",
    .summary = "write IRIs relative to a base IRI",
    .usage = "[--json] [--] BASE IRI...",
    .description =
        "Writes each IRI as a reference relative to BASE and prints it, one per line\n"
        "(toString). Resolving it against BASE gives the IRI back, except for a base path\n"
        "not ending in \"/\" two or more directories below the shared prefix (one \"..\" too\n"
        "few). IRIs that cannot be made relative print the reason and count as failed.\n"
        "With --json: one object per IRI with the keys input (the IRI), base, relative,\n"
        "roundTrip (whether the printed reference, parsed and resolved against base, gives\n"
        "the text of the IRI back) and error.",
    .inputs = {.fewest = 2, .missing = "needs a base and at least one IRI", .from = 1},
    .prepare = prepare,
};

}  // namespace fnet
