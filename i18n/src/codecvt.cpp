#include "fl/i18n/codecvt.h"

#include "text/Text.h"

namespace fl::i18n {

codecvt_ustring_to_ascii::~codecvt_ustring_to_ascii() = default;
codecvt_ascii_to_ustring::~codecvt_ascii_to_ustring() = default;

// Ill-formed text is never refused: each ill-formed part becomes U+FFFD.
std::string codecvt_ustring_to_ascii::do_convert(const char16_t* data, std::size_t length) const {
    std::string out;
    foundation::text::utf16ToUtf8(std::u16string_view(data, length), out, true);
    return out;
}

std::u16string codecvt_ascii_to_ustring::do_convert(const char* data, std::size_t length) const {
    std::u16string out;
    foundation::text::utf8ToUtf16(std::string_view(data, length), out, true);
    return out;
}

}  // namespace fl::i18n
