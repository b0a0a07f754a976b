// fnet iri: parses each input as an IRI value and shows its flags, its components in every
// Encoding and its serialisations.
#include <iostream>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "Cli.h"
#include "Commands.h"
#include "IriJson.h"
#include "Json.h"
#include "Text.h"
#include "foundation/network/IRI.h"

namespace fnet {
namespace {

using foundation::network::IRI;
using foundation::network::iri::Encoding;

void printLine(const std::string& name, const std::string& value) {
    std::cout << name << std::string(name.size() < 24 ? 24 - name.size() : 1, ' ') << value << "\n";
}

std::string quoted(const std::u16string& text) {
    return jsonString(utf16ToUtf8(text));
}

// A component in Encodings 0, 1 and 3, and in 2 and 4 where the repair changes it.
template <class Getter>
void printComponent(const std::string& name, Getter get) {
    std::u16string forms[5];
    for (unsigned value = 0; value < 5; ++value) {
        try {
            forms[value] = get(Encoding(value));
        } catch (const std::exception& e) {
            printLine(name + " [" + std::to_string(value) + "]", std::string("error: ") + e.what());
            return;
        }
    }
    printLine(name + " [0]", quoted(forms[0]));
    printLine(name + " [1]", quoted(forms[1]));
    if (forms[2] != forms[1]) {
        printLine(name + " [2]", quoted(forms[2]));
    }
    printLine(name + " [3]", quoted(forms[3]));
    if (forms[4] != forms[3]) {
        printLine(name + " [4]", quoted(forms[4]));
    }
}

}  // namespace

void printIri(const std::string& input, const IRI& iri) {
    printLine("input", jsonString(sanitizeUtf8(input)));
    std::string flags;
    const std::pair<bool, const char*> named[] = {
        {iri.isEmpty(), "empty"},
        {iri.isAbsolute(), "absolute"},
        {iri.isOpaque(), "opaque"},
        {iri.hasAuthority(), "has-authority"},
        {iri.hasAbsolutePath(), "has-absolute-path"},
        {iri.hasUserInfo(), "has-user-info"},
        {iri.hasHost(), "has-host"},
        {iri.hasPort(), "has-port"},
        {iri.hasQuery(), "has-query"},
        {iri.hasFragment(), "has-fragment"},
    };
    for (const auto& [set, name] : named) {
        if (set) {
            flags += (flags.empty() ? "" : " ") + std::string(name);
        }
    }
    printLine("flags", flags.empty() ? "(none)" : flags);
    if (iri.hasScheme()) {
        printLine("scheme", quoted(iri.getScheme()));
    }
    if (iri.hasUserInfo()) {
        printComponent("userInfo", [&](const Encoding& e) { return iri.getUserInfo(e); });
    }
    if (iri.hasHost()) {
        printComponent("host", [&](const Encoding& e) { return iri.getHost(e); });
    }
    if (iri.hasPort()) {
        printLine("port", quoted(iri.getPort()));
        printLine("portNumber", std::to_string(iri.getPortNumber()));
    }
    if (!iri.isEmpty()) {
        printComponent("path", [&](const Encoding& e) { return iri.getPath(e); });
    }
    if (iri.hasQuery()) {
        printComponent("query", [&](const Encoding& e) { return iri.getQuery(e); });
    }
    if (iri.hasFragment()) {
        printComponent("fragment", [&](const Encoding& e) { return iri.getFragment(e); });
    }
    if (iri.hasAuthority()) {
        printComponent("authority", [&](const Encoding& e) { return iri.getAuthority(e); });
    }
    if (iri.hasScheme()) {
        printComponent("schemeSpecificPart",
                       [&](const Encoding& e) { return iri.getSchemeSpecificPart(e); });
    }
    printLine("toString", quoted(iri.toString(false)));
    printLine("toString strict", quoted(iri.toString(true)));
    printLine("toAsciiString", quoted(iri.toAsciiString(false)));
    printLine("toAsciiString strict", quoted(iri.toAsciiString(true)));
    std::cout << "\n";
}

int runIri(int argc, char** argv) {
    Cli cli("iri", "[--json] [--] TEXT...",
            "Parses each TEXT (UTF-8) as an IRI reference and shows its flags, every present\n"
            "component in Encodings 0 (decoded), 1 (IRI text) and 3 (ASCII URI text), and in 2\n"
            "and 4 (with percent repair) where the repair changes it, the scheme-specific part,\n"
            "the port number, and the four serialisations (toString and toAsciiString, plain\n"
            "and strict). With --json: one object per input with the keys input, error, empty,\n"
            "absolute, opaque, hasAuthority, hasAbsolutePath, scheme, port, portNumber,\n"
            "userInfo, host, path, query, fragment, authority, schemeSpecificPart (each null or\n"
            "an object with the keys \"0\" to \"4\"), toString, toStringStrict, toAsciiString,\n"
            "toAsciiStringStrict. Plain output: one \"key value\" line per item, values quoted\n"
            "as JSON strings, a blank line after each input. Text that is not an IRI reference\n"
            "prints the reason (\"IRI parsing failed\") and counts as failed.");
    if (const auto status = cli.parse(argc, argv)) {
        return *status;
    }
    if (cli.arguments().empty()) {
        return cli.usageError("no input");
    }
    return forEachInput(cli.inputs(), [&](const std::string& input) {
        std::string error;
        std::optional<IRI> iri;
        if (const std::optional<std::u16string> utf16 = decodeInput(input)) {
            try {
                iri.emplace(*utf16);
            } catch (const std::exception& e) {
                error = e.what();
            }
        } else {
            error = kInvalidUtf8;
        }
        if (!iri) {
            cli.error(error + ": " + sanitizeUtf8(input));
            if (cli.json()) {
                std::cout << iriErrorJson(input, error).str() << "\n";
            } else {
                printLine("input", jsonString(sanitizeUtf8(input)));
                printLine("error", error);
                std::cout << "\n";
            }
            return false;
        }
        if (cli.json()) {
            std::cout << iriJson(input, *iri).str() << "\n";
        } else {
            printIri(input, *iri);
        }
        return true;
    });
}

}  // namespace fnet
