// fnet idn: host names between Unicode and ASCII (Punycode) form.
#include <exception>
#include <optional>
#include <string>

#include "Commands.h"
#include "Json.h"
#include "Runner.h"
#include "Text.h"
#include "foundation/network/IdnConverter.h"

namespace fnet {
namespace {

using foundation::network::IdnConverter;

struct Converted {
    std::optional<std::string> output;  ///< UTF-8; absent on failure
    std::string error;
};

Converted convert(const IdnConverter& converter, bool toAscii, std::string_view input) {
    const std::optional<std::u16string> wide = decodeInput(input);
    if (!wide) {
        return {std::nullopt, kInvalidUtf8};
    }
    try {
        if (toAscii) {
            return {converter.toAscii(*wide), {}};
        }
        return {utf16ToUtf8(converter.toUnicode(std::string(input))), {}};
    } catch (const std::exception& e) {  // IdnConverterException, or a result UTF-8 cannot carry
        return {std::nullopt, e.what()};
    }
}

}  // namespace

int runIdn(int argc, char** argv) {
    Cli cli("idn", "[--to-ascii|--to-unicode] [--json] [--] NAME...",
            "Converts host names between Unicode and ASCII (Punycode) form after Unicode TS #46\n"
            "(transitional processing). Labels ICU finds faulty are printed as ICU writes them;\n"
            "a failure prints ICU's error name. Plain output: one converted name per line. With\n"
            "--json: one object per name with the keys input, direction (\"toAscii\" or\n"
            "\"toUnicode\"), output and error (one of the two null). A name that is not UTF-8\n"
            "fails with \"input is not valid UTF-8\".",
            {{"--to-ascii", "", "Unicode to ASCII form (the default)"},
             {"--to-unicode", "", "ASCII to Unicode form"}});
    if (const auto status = cli.parse(argc, argv)) {
        return *status;
    }
    if (cli.has("--to-ascii") && cli.has("--to-unicode")) {
        return cli.usageError("--to-ascii and --to-unicode exclude each other");
    }
    if (cli.arguments().empty()) {
        return cli.usageError("no NAME given");
    }
    const bool toAscii = !cli.has("--to-unicode");
    const bool json = cli.json();
    return runInputs(cli, 0, {"direction", "output"}, [&]() -> Handler {
        // One engine per worker, reused for every input.
        return [toAscii, json, converter = IdnConverter()](std::span<const std::string_view> items,
                                                           Outcome& out) {
            const Converted converted = convert(converter, toAscii, items[0]);
            if (json) {
                out.keys["direction"] = toAscii ? "toAscii" : "toUnicode";
                setText(out.keys["output"], converted.output);
            } else if (converted.output) {
                out.text = *converted.output + "\n";
            }
            if (!converted.output) {
                out.fail(converted.error);
            }
        };
    });
}

}  // namespace fnet
