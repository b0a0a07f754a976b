#include "Text.h"

#include <unicode/ustring.h>

#include <climits>

namespace fnet {

std::optional<std::u16string> utf8ToUtf16(std::string_view utf8) {
    if (utf8.size() > INT32_MAX) {
        return std::nullopt;
    }
    std::u16string out(utf8.size(), u'\0');
    int32_t written = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF8(reinterpret_cast<UChar*>(out.data()), static_cast<int32_t>(out.size()), &written,
                  utf8.data(), static_cast<int32_t>(utf8.size()), &status);
    if (U_FAILURE(status)) {
        return std::nullopt;
    }
    out.resize(static_cast<std::size_t>(written));
    return out;
}

std::string utf16ToUtf8(std::u16string_view utf16) {
    std::string out(utf16.size() * 3, '\0');
    int32_t written = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strToUTF8WithSub(out.data(), static_cast<int32_t>(out.size()), &written,
                       reinterpret_cast<const UChar*>(utf16.data()),
                       static_cast<int32_t>(utf16.size()), 0xFFFD, nullptr, &status);
    out.resize(U_SUCCESS(status) ? static_cast<std::size_t>(written) : 0);
    return out;
}

std::string sanitizeUtf8(std::string_view utf8) {
    if (utf8ToUtf16(utf8)) {
        return std::string(utf8);
    }
    std::u16string wide(utf8.size(), u'\0');
    int32_t written = 0;
    UErrorCode status = U_ZERO_ERROR;
    u_strFromUTF8WithSub(reinterpret_cast<UChar*>(wide.data()), static_cast<int32_t>(wide.size()),
                         &written, utf8.data(), static_cast<int32_t>(utf8.size()), 0xFFFD, nullptr,
                         &status);
    wide.resize(U_SUCCESS(status) ? static_cast<std::size_t>(written) : 0);
    return utf16ToUtf8(wide);
}

}  // namespace fnet
