// fnet normalize: each input in normal form, for deduplicating and comparing IRIs.
#include <exception>
#include <optional>
#include <string>

#include "Commands.h"
#include "IriInput.h"
#include "Runner.h"
#include "Text.h"
#include "foundation/network/Normalization.h"

namespace fnet {

using foundation::network::IRI;

namespace {

Job prepare(const Cli& cli) {
    foundation::network::iri::Normalization how;
    how.characters = cli.has("--characters");
    how.host = cli.has("--host");
    how.letterCase = !cli.has("--no-case");
    how.percentEncoding = !cli.has("--no-percent");
    how.pathSegments = !cli.has("--no-path");
    how.schemeBased = !cli.has("--no-scheme");
    const bool json = cli.json();
    return {{"normalized", "uri", "changed"}, [json, how]() -> Handler {
                return [json, how](std::span<const std::string_view> items, Outcome& out) {
                    std::string error;
                    const std::optional<IRI> iri = readIri(items[0], error);
                    if (!iri) {
                        out.fail(error);
                        return;
                    }
                    try {
                        const IRI normal = iri->normalize(how);
                        const std::string text = utf16ToUtf8(normal.toString());
                        if (json) {
                            out.keys["normalized"] = text;
                            out.keys["uri"] = utf16ToUtf8(normal.toAsciiString());
                            out.keys["changed"] = normal != *iri;
                        } else {
                            out.text = text + "\n";
                        }
                    } catch (const std::exception& e) {
                        out.fail(e.what());
                    }
                };
            }};
}

}  // namespace

const Command kNormalizeCommand{
    .name = "normalize",
    .summary = "write IRIs in normal form (case, escapes, dot segments, defaults)",
    .usage =
        "[--characters] [--host] [--no-case] [--no-percent] [--no-path] [--no-scheme] "
        "[--json] [--] TEXT...",
    .description =
        "Prints each TEXT (UTF-8) as an IRI in normal form (IRI::normalize), one per line:\n"
        "scheme and registered-name host in lower case and escapes' hexadecimal digits in\n"
        "upper case, escapes of characters that need none decoded, dot segments removed,\n"
        "and the default port and empty path of http, https, ws, wss (ftp: port) dropped;\n"
        "the --no-... options switch those steps off, --characters adds Unicode NFC and\n"
        "--host the Unicode form of IDN hosts. With --json: one object per input with the\n"
        "keys input, normalized, uri (its ASCII form, toAsciiString), changed (whether it\n"
        "differs from the input's value) and error (null, or the message).",
    .options = {{"--characters", "", "put every component in Unicode Normalization Form C"},
                {"--host", "", "write an IDN host in its Unicode form (xn--bcher-kva: bücher)"},
                {"--no-case", "", "leave the case of scheme, host and escapes"},
                {"--no-percent", "", "leave escapes of characters that need none"},
                {"--no-path", "", "leave dot segments in the path"},
                {"--no-scheme", "", "leave default ports and empty paths"}},
    .prepare = prepare,
};

}  // namespace fnet
