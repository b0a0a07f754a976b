#include "iri/Utf16.h"

namespace foundation::network::iri::detail {

// Every parse widens its whole text first: the first loop is kept free of branches so that it
// vectorises (see CMakeLists.txt).
std::size_t writeCodePoints(std::u16string_view utf16, wchar_t* out) {
    const char16_t* in = utf16.data();
    const std::size_t size = utf16.size();
    std::uint32_t surrogates = 0;
    for (std::size_t i = 0; i < size; ++i) {
        const std::uint32_t unit = in[i];
        out[i] = static_cast<wchar_t>(unit);
        surrogates |= static_cast<std::uint32_t>(unit - 0xD800u < 0x800u);
    }
    if (surrogates == 0) {
        return utf16.size();
    }
    wchar_t* to = out;
    for (std::size_t i = 0; i < utf16.size(); ++i) {
        const char16_t unit = utf16[i];
        if (!isSurrogate(unit)) {
            *to++ = static_cast<wchar_t>(unit);
        } else if (unit <= 0xDBFF && i + 1 < utf16.size() && utf16[i + 1] >= 0xDC00 &&
                   utf16[i + 1] <= 0xDFFF) {
            *to++ =
                static_cast<wchar_t>(0x10000 + ((unit - 0xD800) << 10) + (utf16[i + 1] - 0xDC00));
            ++i;
        } else {
            utf16ToCodePoints(std::u16string(utf16));  // throws with the conversion's own text
        }
    }
    return static_cast<std::size_t>(to - out);
}

}  // namespace foundation::network::iri::detail
