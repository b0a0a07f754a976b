// fnet parse: runs the IRI grammar over each input and shows the seven components.
#include <iostream>
#include <optional>
#include <stdexcept>
#include <string>

#include "Cli.h"
#include "Commands.h"
#include "Json.h"
#include "Text.h"
#include "iri/grammar/IriGrammar.h"
#include "iri/grammar/Unicode.h"

namespace fnet {
namespace {

using foundation::network::iri::detail::codePointsToUtf8;
using foundation::network::iri::detail::Parts;
using foundation::network::iri::detail::utf16ToCodePoints;
namespace irigrammar = foundation::network::iri::detail::irigrammar;

constexpr const char* kNotAnIri = "not an IRI reference";

constexpr const char* kComponentNames[] = {"scheme", "userInfo", "host",    "port",
                                           "path",   "query",    "fragment"};

// The seven components of a valid reference as UTF-8 (nothing when absent), in the order of
// kComponentNames; nothing at all when the text is not an IRI reference.
using Components = std::optional<std::string>[7];

bool parseComponents(const std::wstring& text, Components& out) {
    Parts<std::wstring> parts;
    if (!irigrammar::parseString<std::wstring>(text.begin(), text.end(), parts)) {
        return false;
    }
    const decltype(parts.scheme)* ranges[] = {&parts.scheme,  &parts.userInfo, &parts.host,
                                              &parts.port,    &parts.path,     &parts.query,
                                              &parts.fragment};
    for (int i = 0; i < 7; ++i) {
        if (ranges[i]->present) {
            out[i] = codePointsToUtf8(std::wstring(ranges[i]->first, ranges[i]->last));
        }
    }
    return true;
}

void printJson(const std::string& input, bool valid, const Components& components,
               const char* error) {
    JsonObject object;
    object.text("input", sanitizeUtf8(input)).boolean("valid", valid);
    for (int i = 0; i < 7; ++i) {
        object.optionalText(kComponentNames[i], components[i] ? &*components[i] : nullptr);
    }
    if (error != nullptr) {
        object.text("error", error);
    }
    std::cout << object.str() << "\n";
}

void printBlock(const std::string& input, bool valid, const Components& components) {
    std::cout << "input     " << jsonString(sanitizeUtf8(input)) << "\n"
              << "valid     " << (valid ? "yes" : "no") << "\n";
    if (valid) {
        for (int i = 0; i < 7; ++i) {
            const std::string name = kComponentNames[i];
            std::cout << name << std::string(10 - name.size(), ' ')
                      << (components[i] ? jsonString(*components[i]) : "(absent)") << "\n";
        }
    }
    std::cout << "\n";
}

}  // namespace

int runParse(int argc, char** argv) {
    Cli cli("parse", "[--json] [--] TEXT...",
            "Checks each TEXT (UTF-8) against the IRI grammar (RFC 3987 IRI-reference) and shows "
            "its\ncomponents: scheme, userInfo, host, port, path, query, fragment, each with its "
            "text or\nabsent. A present component may be empty (\"x://h:/\" has an empty port).\n"
            "Plain output: a block of \"name value\" lines per input (valid yes/no, then each\n"
            "component quoted, or (absent)), a blank line after it. With --json: one object per\n"
            "input with the keys input, valid, scheme, userInfo, host, port, path, query and\n"
            "fragment (text or null), and error for a failure. Text the grammar refuses counts\n"
            "as failed.");
    if (const auto status = cli.parse(argc, argv)) {
        return *status;
    }
    if (cli.arguments().empty()) {
        return cli.usageError("no input");
    }
    return forEachInput(cli.inputs(), [&](const std::string& input) {
        Components components;
        const std::optional<std::u16string> utf16 = decodeInput(input);
        if (!utf16) {
            cli.error(std::string(kInvalidUtf8) + ": " + sanitizeUtf8(input));
            if (cli.json()) {
                printJson(input, false, components, kInvalidUtf8);
            }
            return false;
        }
        bool valid = false;
        try {
            valid = parseComponents(utf16ToCodePoints(*utf16), components);
        } catch (const std::out_of_range& e) {  // an unpaired surrogate cannot come from UTF-8
            cli.error(e.what());
        }
        if (cli.json()) {
            printJson(input, valid, components, valid ? nullptr : kNotAnIri);
        } else {
            printBlock(input, valid, components);
        }
        if (!valid) {
            cli.error(std::string(kNotAnIri) + ": " + sanitizeUtf8(input));
        }
        return valid;
    });
}

}  // namespace fnet
