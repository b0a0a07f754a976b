#include "IriInput.h"

#include <exception>

#include "Json.h"
#include "Text.h"

namespace fnet {

std::optional<foundation::network::IRI> readIri(std::string_view utf8, std::string& error) {
    const std::optional<std::u16string> utf16 = decodeInput(utf8);
    if (!utf16) {
        error = kInvalidUtf8;
        return std::nullopt;
    }
    try {
        return foundation::network::IRI(*utf16);
    } catch (const std::exception& e) {
        error = e.what();
        return std::nullopt;
    }
}

Job againstBase(const Cli& cli, RecordKeys keys, const AgainstBase& handle) {
    std::string baseText = cli.arguments().front();
    std::string baseError;
    std::optional<foundation::network::IRI> base = readIri(baseText, baseError);
    const bool json = cli.json();
    return {std::move(keys), [=]() -> Handler {
                // Each worker works against its own copy of the base.
                return [=](std::span<const std::string_view> items, Outcome& out) {
                    if (json) {
                        out.keys["base"] = jsonSafe(baseText);
                    }
                    if (!base) {
                        out.subject = baseText;
                        out.fail("base: " + baseError);
                        return;
                    }
                    std::string error;
                    const std::optional<foundation::network::IRI> iri = readIri(items[0], error);
                    if (!iri) {
                        out.fail(error);
                        return;
                    }
                    handle(*iri, *base, out);
                };
            }};
}

}  // namespace fnet
