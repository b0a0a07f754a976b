// fnet parse: checks each input against the IRI grammar and shows the seven components.
#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

#include "Commands.h"
#include "Json.h"
#include "Runner.h"
#include "Text.h"
#include "foundation/network/IRI.h"

namespace fnet {
namespace {

using foundation::network::IRI;

constexpr const char* kNotAnIri = "not an IRI reference";

constexpr const char* kComponentNames[] = {"scheme", "userInfo", "host",    "port",
                                           "path",   "query",    "fragment"};

// The seven components of a reference the IRI grammar accepted, as written, in the order of
// kComponentNames; nothing for an absent one (the path is always there, possibly empty). In a
// valid reference the delimiters alone mark the components (RFC 3986 appendix B), so they are
// read straight from the text: no conversion, no copy.
void splitComponents(std::string_view text, std::optional<std::string_view> (&out)[7]) {
    // Where the first character that ends a part is, or the text's end.
    const auto firstOf = [&](auto endsPart) {
        return static_cast<std::size_t>(std::find_if(text.begin(), text.end(), endsPart) -
                                        text.begin());
    };
    const auto queryOrFragment = [](char c) { return c == '?' || c == '#'; };
    const auto pathQueryOrFragment = [](char c) { return c == '/' || c == '?' || c == '#'; };
    const auto take = [&](std::size_t end) {
        const std::string_view part = text.substr(0, end);
        text.remove_prefix(std::min(text.size(), end + 1));
        return part;
    };
    if (const std::size_t colon =
            firstOf([](char c) { return c == ':' || c == '/' || c == '?' || c == '#'; });
        colon < text.size() && text[colon] == ':') {
        out[0] = take(colon);
    }
    if (text.substr(0, 2) == "//") {
        text.remove_prefix(2);
        std::string_view authority = text.substr(0, firstOf(pathQueryOrFragment));
        text.remove_prefix(authority.size());
        if (const std::size_t at = authority.find('@'); at != std::string_view::npos) {
            out[1] = authority.substr(0, at);
            authority.remove_prefix(at + 1);
        }
        const std::size_t hostEnd = authority.find(':', authority.rfind(']') + 1);
        out[2] = authority.substr(0, hostEnd);
        if (hostEnd != std::string_view::npos) {
            out[3] = authority.substr(hostEnd + 1);
        }
    }
    out[4] = text.substr(0, firstOf(queryOrFragment));
    text.remove_prefix(out[4]->size());
    if (!text.empty() && text.front() == '?') {
        text.remove_prefix(1);
        out[5] = text.substr(0, text.find('#'));
        text.remove_prefix(out[5]->size());
    }
    if (!text.empty() && text.front() == '#') {
        out[6] = text.substr(1);
    }
}

void parseOne(std::string_view input, Outcome& out, bool json) {
    std::optional<std::string_view> components[7];
    const std::optional<std::u16string> utf16 = decodeInput(input);
    bool valid = false;
    if (!utf16) {
        out.fail(kInvalidUtf8);
    } else {
        try {
            [[maybe_unused]] const IRI checked(*utf16);
            splitComponents(input, components);
            valid = true;
        } catch (const std::logic_error&) {
            out.fail(kNotAnIri);
        }
    }
    if (json) {
        out.keys["valid"] = valid;
        for (int i = 0; i < 7; ++i) {
            if (components[i]) {
                out.keys[kComponentNames[i]] = *components[i];
            }
        }
        return;
    }
    out.text = "input     " + jsonString(input) + "\nvalid     " + (valid ? "yes" : "no") + "\n";
    if (valid) {
        for (int i = 0; i < 7; ++i) {
            const std::string name = kComponentNames[i];
            out.text += name + std::string(10 - name.size(), ' ') +
                        (components[i] ? jsonString(*components[i]) : std::string("(absent)")) +
                        "\n";
        }
    }
    out.text += "\n";
}

Job prepare(const Cli& cli) {
    const bool json = cli.json();
    return {{"valid", "scheme", "userInfo", "host", "port", "path", "query", "fragment"},
            [json]() -> Handler {
                return [json](std::span<const std::string_view> items, Outcome& out) {
                    parseOne(items[0], out, json);
                };
            }};
}

}  // namespace

const Command kParseCommand{
    .name = "parse",
    .summary = "check IRI references and show their seven components",
    .usage = "[--json] [--] TEXT...",
    .description =
        "Checks each TEXT (UTF-8) against the IRI grammar (RFC 3987 IRI-reference, a port\n"
        "from 0 to 65535) and shows its components: scheme, userInfo, host, port, path,\n"
        "query, fragment, each with its text as written or absent. A present component may\n"
        "be empty (\"x://@h?\" has an empty user info and query). Plain output: a block\n"
        "of \"name value\" lines per input (valid yes/no, then each component quoted, or\n"
        "(absent)), a blank line after it. With --json: one object per input with the keys\n"
        "input, valid, scheme, userInfo, host, port, path, query, fragment (text or null)\n"
        "and error (null, or the message). Text the grammar refuses counts as failed.",
    .prepare = prepare,
};

}  // namespace fnet
