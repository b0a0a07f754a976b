// fnet build: an IRI built from separately given, unescaped components.
#include <charconv>
#include <exception>
#include <optional>
#include <string>

#include "Commands.h"
#include "IriJson.h"
#include "Runner.h"
#include "Text.h"
#include "foundation/network/IRI.h"
#include "foundation/network/IRIArgs.h"

namespace fnet {

using foundation::network::IRI;
using foundation::network::IRIArgs;

namespace {

int run(const Cli& cli) {
    IRIArgs args;
    std::string input;
    std::string error;
    const auto take = [&](const char* option, IRIArgs& (IRIArgs::*set)(const std::u16string&)) {
        if (!cli.has(option) || !error.empty()) {
            return;
        }
        input += (input.empty() ? "" : " ") + std::string(option) + " " + cli.value(option);
        if (const std::optional<std::u16string> utf16 = decodeInput(cli.value(option))) {
            (args.*set)(*utf16);
        } else {
            error = std::string(kInvalidUtf8) + " (" + option + ")";
        }
    };
    take("--scheme", &IRIArgs::setScheme);
    take("--user-info", &IRIArgs::setUserInfo);
    take("--host", &IRIArgs::setHost);
    if (cli.has("--port")) {
        const std::string& text = cli.value("--port");
        unsigned value = 0;
        const auto [end, code] = std::from_chars(text.data(), text.data() + text.size(), value);
        if (code != std::errc() || end != text.data() + text.size() || value > 65535) {
            throw UsageError("--port needs a number from 0 to 65535");
        }
        args.setPort(static_cast<std::uint16_t>(value));
        input += (input.empty() ? "" : " ") + std::string("--port ") + text;
    }
    take("--path", &IRIArgs::setPath);
    take("--query", &IRIArgs::setQuery);
    take("--fragment", &IRIArgs::setFragment);
    args.queryAsOctets = cli.has("--query-as-octets");
    args.schemeChecked = cli.has("--scheme-checked");

    std::optional<IRI> iri;
    if (error.empty()) {
        try {
            iri.emplace(args);
        } catch (const std::exception& e) {
            error = e.what();
        }
    }
    Outcome outcome;
    if (!iri) {
        outcome.fail(error);
    } else if (cli.json()) {
        iriJson(*iri, outcome.keys);
    } else {
        outcome.text = iriText(input, *iri);
    }
    return writeOutcome(cli, kIriKeys, outcome, input);
}

}  // namespace

const Command kBuildCommand{
    .name = "build",
    .summary = "build an IRI from separately given components",
    .usage =
        "[--json] [--scheme S] [--user-info U] [--host H] [--port N] [--path P] "
        "[--query Q] [--fragment F]",
    .description =
        "Builds an IRI from the components given (UTF-8, unescaped: the IRI escapes what\n"
        "needs escaping) and prints it as `fnet iri` does. Refused combinations print\n"
        "their reason (\"Malformed scheme\", \"User Info requires a host\", \"Port requires\n"
        "a host\", \"Path cannot be relative if authority present\") and exit with 1. With\n"
        "--json: one object with the keys of `fnet iri --json` (input is the options given).",
    .options = {{"--scheme", "S", "the scheme"},
                {"--user-info", "U", "the user info"},
                {"--host", "H", "the host (an IP literal with its brackets: [::1])"},
                {"--port", "N", "the port, 0 to 65535"},
                {"--path", "P", "the path"},
                {"--query", "Q", "the query"},
                {"--fragment", "F", "the fragment"},
                {"--query-as-octets", "", "store the query as its UTF-8 octets"},
                {"--scheme-checked", "", "skip the scheme check"}},
    .run = run,
};

}  // namespace fnet
