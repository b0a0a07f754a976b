// fnet iri: parses each input as an IRI value and shows its flags, its components in every
// Encoding and its serialisations.
#include <exception>
#include <optional>
#include <string>

#include "foundation/network/IdnConverter.h"

#include "Commands.h"
#include "IriInput.h"
#include "IriJson.h"
#include "Runner.h"
#include "Text.h"

namespace fnet {

namespace {

Job prepare(const Cli& cli) {
    const bool json = cli.json();
    const bool uri = cli.has("--uri");
    RecordKeys keys = kIriKeys;
    if (uri) {
        keys.push_back("uri");
    }
    return {keys, [json, uri]() -> Handler {
                return [json, uri, idn = foundation::network::IdnConverter()](
                           std::span<const std::string_view> items, Outcome& out) {
                    std::string error;
                    const std::optional<foundation::network::IRI> iri = readIri(items[0], error);
                    if (!iri) {
                        out.fail(error);
                        if (!json) {
                            out.text = iriErrorText(items[0], error);
                        }
                    } else if (json) {
                        iriJson(*iri, out.keys);
                    } else {
                        out.text = iriText(items[0], *iri);
                    }
                    if (iri && uri) {
                        try {
                            const std::string text = utf16ToUtf8(iri->toUriString(idn));
                            if (json) {
                                out.keys["uri"] = text;
                            } else {
                                // before the blank line that ends the input's block
                                out.text.insert(out.text.size() - 1, "uri" + std::string(21, ' ') +
                                                                         jsonString(text) + "\n");
                            }
                        } catch (const std::exception& e) {
                            out.fail(e.what());
                        }
                    }
                };
            }};
}

}  // namespace

const Command kIriCommand{
    .name = "iri",
    .summary = "parse IRIs and show every component in every Encoding and serialisation",
    .usage = "[--uri] [--json] [--] TEXT...",
    .description =
        "Parses each TEXT (UTF-8) as an IRI reference and shows its flags, every present\n"
        "component in Encodings 0 (decoded), 1 (IRI text) and 3 (ASCII URI text), and in 2\n"
        "and 4 (with percent repair) where the repair changes it, the scheme-specific part,\n"
        "the port number, and the four serialisations (toString and toAsciiString, plain\n"
        "and strict). With --json: one object per input with the keys input, empty,\n"
        "absolute, opaque, hasAuthority, hasAbsolutePath, scheme, port, portNumber,\n"
        "userInfo, host, path, query, fragment, authority, schemeSpecificPart (each null or\n"
        "an object with the keys \"0\" to \"4\"), toString, toStringStrict, toAsciiString,\n"
        "toAsciiStringStrict and error (null, or the message). Plain output: one \"key\n"
        "value\" line per item, values quoted as JSON strings, a blank line after each\n"
        "input. Text that is not an IRI reference prints the reason (\"IRI parsing\n"
        "failed\") and counts as failed. With --uri also the ASCII form a client looks\n"
        "up (toUriString: the host in Punycode; line \"uri\", JSON key uri); a host with\n"
        "no such form prints the reason and counts as failed.",
    .options = {{"--uri", "", "add the ASCII form with the host in Punycode (toUriString)"}},
    .prepare = prepare,
};

}  // namespace fnet
