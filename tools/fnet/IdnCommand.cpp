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
using foundation::network::IdnErrors;
using foundation::network::IdnOptions;

struct Converted {
    std::optional<std::string> output;  ///< UTF-8; absent on failure
    std::string error;
    std::optional<IdnErrors> labelErrors;  ///< what ICU found in the name, if ICU ran
};

Converted convert(const IdnConverter& converter, bool toAscii, std::string_view input) {
    const std::optional<std::u16string> wide = decodeInput(input);
    if (!wide) {
        return {std::nullopt, kInvalidUtf8, {}};
    }
    Converted converted;
    try {
        IdnErrors errors;
        converted.output = toAscii ? converter.toAscii(*wide, errors)
                                   : utf16ToUtf8(converter.toUnicode(std::string(input), errors));
        converted.labelErrors = errors;
    } catch (const std::exception& e) {  // IdnConverterException, or a result UTF-8 cannot carry
        converted.error = e.what();
    }
    return converted;
}

Job prepare(const Cli& cli) {
    if (cli.has("--to-ascii") && cli.has("--to-unicode")) {
        throw UsageError("--to-ascii and --to-unicode exclude each other");
    }
    const bool toAscii = !cli.has("--to-unicode");
    const bool json = cli.json();
    const bool strict = cli.has("--strict");
    IdnOptions options;
    options.nontransitional = cli.has("--nontransitional");
    options.useStd3Rules = cli.has("--std3");
    options.checkBidi = options.checkContextJ = options.checkContextO = strict;
    return {{"direction", "output", "errors"}, [toAscii, json, strict, options]() -> Handler {
                // One engine per worker, reused for every input.
                return [toAscii, json, strict, converter = IdnConverter(options)](
                           std::span<const std::string_view> items, Outcome& out) {
                    Converted converted = convert(converter, toAscii, items[0]);
                    if (strict && converted.labelErrors && !converted.labelErrors->empty()) {
                        converted.output.reset();
                        converted.error = "label errors: " + converted.labelErrors->toString();
                    }
                    if (json) {
                        out.keys["direction"] = toAscii ? "toAscii" : "toUnicode";
                        setText(out.keys["output"], converted.output);
                        if (converted.labelErrors) {
                            setTexts(out.keys["errors"], converted.labelErrors->names());
                        }
                    } else if (converted.output) {
                        out.text = *converted.output + "\n";
                    }
                    if (!converted.output) {
                        out.fail(converted.error);
                    }
                };
            }};
}

}  // namespace

const Command kIdnCommand{
    .name = "idn",
    .summary = "convert host names between Unicode and ASCII (Punycode) form",
    .usage =
        "[--to-ascii|--to-unicode] [--nontransitional] [--std3] [--strict] [--json] [--] NAME...",
    .description =
        "Converts host names between Unicode and ASCII (Punycode) form after Unicode TS #46\n"
        "(transitional processing unless --nontransitional). Labels ICU finds faulty are\n"
        "printed as ICU writes them, unless --strict refuses the name and names its errors\n"
        "(\"label errors: EMPTY_LABEL, DISALLOWED\"); a failure of ICU itself prints ICU's\n"
        "error name. Plain output: one converted name per line. With --json: one object per\n"
        "name with the keys input, direction (\"toAscii\" or \"toUnicode\"), output, errors\n"
        "(the names of the label errors ICU found, [] when none, null when ICU was not\n"
        "asked) and error (output or error null). A name that is not UTF-8 fails with\n"
        "\"input is not valid UTF-8\".",
    .options = {{"--to-ascii", "", "Unicode to ASCII form (the default)"},
                {"--to-unicode", "", "ASCII to Unicode form"},
                {"--nontransitional", "",
                 "keep deviation characters (\u00df, \u03c2, ZWJ, ZWNJ) as browsers do"},
                {"--std3", "", "STD3 rules: only letters, digits and hyphens in ASCII"},
                {"--strict", "", "check Bidi, ContextJ, ContextO; fail names with label errors"}},
    .inputs = {.missing = "no NAME given"},
    .prepare = prepare,
};

}  // namespace fnet
