#include "IriInput.h"

#include <exception>

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

}  // namespace fnet
