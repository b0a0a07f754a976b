// fnet parse: checks each input against the IRI grammar and shows the seven components.
#include <optional>
#include <string>

#include "Commands.h"
#include "Json.h"
#include "Runner.h"
#include "Text.h"
#include "foundation/network/IRI.h"

namespace fnet {
namespace {

using foundation::network::IRI;
using foundation::network::iri::Encoding;

constexpr const char* kNotAnIri = "not an IRI reference";

constexpr const char* kComponentNames[] = {"scheme", "userInfo", "host",    "port",
                                           "path",   "query",    "fragment"};

// The seven components as written (IRI text), in the order of kComponentNames; nothing for an
// absent one. The path is always there, possibly empty.
void readComponents(const IRI& iri, std::optional<std::string> (&out)[7]) {
    const Encoding asWritten = Encoding::iri();
    if (iri.hasScheme()) {
        out[0] = utf16ToUtf8(iri.getScheme());
    }
    if (iri.hasUserInfo()) {
        out[1] = utf16ToUtf8(iri.getUserInfo(asWritten));
    }
    if (iri.hasHost()) {
        out[2] = utf16ToUtf8(iri.getHost(asWritten));
    }
    if (iri.hasPort()) {
        out[3] = utf16ToUtf8(iri.getPort());
    }
    out[4] = utf16ToUtf8(iri.getPath(asWritten));
    if (iri.hasQuery()) {
        out[5] = utf16ToUtf8(iri.getQuery(asWritten));
    }
    if (iri.hasFragment()) {
        out[6] = utf16ToUtf8(iri.getFragment(asWritten));
    }
}

void parseOne(std::string_view input, Outcome& out, bool json) {
    std::optional<std::string> components[7];
    const std::optional<std::u16string> utf16 = decodeInput(input);
    bool valid = false;
    if (!utf16) {
        out.fail(kInvalidUtf8);
    } else {
        try {
            readComponents(IRI(*utf16), components);
            valid = true;
        } catch (const std::logic_error&) {
            out.fail(kNotAnIri);
        }
    }
    if (json) {
        out.keys["valid"] = valid;
        for (int i = 0; i < 7; ++i) {
            out.keys[kComponentNames[i]] = textOrNull(components[i]);
        }
        return;
    }
    out.text = "input     " + jsonString(input) + "\nvalid     " + (valid ? "yes" : "no") + "\n";
    if (valid) {
        for (int i = 0; i < 7; ++i) {
            const std::string name = kComponentNames[i];
            out.text += name + std::string(10 - name.size(), ' ') +
                        (components[i] ? jsonString(*components[i]) : "(absent)") + "\n";
        }
    }
    out.text += "\n";
}

}  // namespace

int runParse(int argc, char** argv) {
    Cli cli("parse", "[--json] [--] TEXT...",
            "Checks each TEXT (UTF-8) against the IRI grammar (RFC 3987 IRI-reference, a port\n"
            "from 0 to 65535) and shows its components: scheme, userInfo, host, port, path,\n"
            "query, fragment, each with its text as written or absent. A present component may\n"
            "be empty (\"x://@h?\" has an empty user info and query). Plain output: a block of "
            "\"name value\"\n"
            "lines per input (valid yes/no, then each component quoted, or (absent)), a blank\n"
            "line after it. With --json: one object per input with the keys input, valid,\n"
            "scheme, userInfo, host, port, path, query, fragment (text or null) and error (null,\n"
            "or the message). Text the grammar refuses counts as failed.");
    if (const auto status = cli.parse(argc, argv)) {
        return *status;
    }
    if (cli.arguments().empty()) {
        return cli.usageError("no input");
    }
    const bool json = cli.json();
    return runInputs(cli, 0,
                     {"valid", "scheme", "userInfo", "host", "port", "path", "query", "fragment"},
                     [json]() -> Handler {
                         return [json](std::span<const std::string_view> items, Outcome& out) {
                             parseOne(items[0], out, json);
                         };
                     });
}

}  // namespace fnet
