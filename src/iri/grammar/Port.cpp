#include "iri/grammar/Port.h"

namespace foundation::network::iri::detail {
namespace {

// ASCII digits only, any count (leading zeros), no sign; fails on overflow.
template <class Char>
bool toPort(std::basic_string_view<Char> text, unsigned short& out) {
    if (text.empty()) {
        return false;
    }
    unsigned value = 0;
    for (const Char c : text) {
        if (c < Char('0') || c > Char('9')) {
            return false;
        }
        value = value * 10 + static_cast<unsigned>(c - Char('0'));
        if (value > 65535) {
            return false;
        }
    }
    out = static_cast<unsigned short>(value);
    return true;
}

}  // namespace

bool portStringToNumeric(std::wstring_view text, unsigned short& out) {
    return toPort(text, out);
}

bool portStringToNumeric(std::u16string_view text, unsigned short& out) {
    return toPort(text, out);
}

}  // namespace foundation::network::iri::detail
