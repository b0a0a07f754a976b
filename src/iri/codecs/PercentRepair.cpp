#include "iri/codecs/PercentRepair.h"

#include <cstdint>

#include "text/Text.h"

namespace foundation::network::iri::detail {

namespace {

template <class Char>
bool isHexDigit(Char c) {
    return text::hexValue(static_cast<std::uint32_t>(c)) >= 0;
}

// Runs without anything to repair are copied whole.
template <class Char>
std::basic_string<Char> repair(std::basic_string_view<Char> text, bool escapeBrackets) {
    static constexpr Char kEscapedPercent[] = {'%', '2', '5', 0};
    static constexpr Char kOpen[] = {'%', '5', 'B', 0};
    static constexpr Char kClose[] = {'%', '5', 'D', 0};
    std::basic_string<Char> out;
    out.reserve(text.size());
    std::size_t copied = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const Char c = text[i];
        const Char* replacement = nullptr;
        if (c == Char('%')) {
            const bool escape =
                i + 2 < text.size() && isHexDigit(text[i + 1]) && isHexDigit(text[i + 2]);
            replacement = escape ? nullptr : kEscapedPercent;
        } else if (escapeBrackets && c == Char('[')) {
            replacement = kOpen;
        } else if (escapeBrackets && c == Char(']')) {
            replacement = kClose;
        }
        if (replacement != nullptr) {
            out.append(text.substr(copied, i - copied));
            out.append(replacement);
            copied = i + 1;
        }
    }
    out.append(text.substr(copied));
    return out;
}

}  // namespace

std::wstring repairPercents(std::wstring_view text, bool escapeBrackets) {
    return repair(text, escapeBrackets);
}

std::u16string repairPercents(std::u16string_view text, bool escapeBrackets) {
    return repair(text, escapeBrackets);
}

}  // namespace foundation::network::iri::detail
