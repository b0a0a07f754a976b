#include "fl/i18n/codecvt.h"

#include <unicode/ustring.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <climits>

namespace fl::i18n {
namespace {

constexpr UChar32 kReplacement = 0xFFFD;

// ICU counts in int32_t; longer inputs are converted in pieces cut where no character spans
// the cut.
constexpr std::size_t kMaxChunk = INT32_MAX / 4;

bool isAscii(const char16_t* data, std::size_t length) {
    return std::all_of(data, data + length, [](char16_t c) { return c < 0x80; });
}

bool isAscii(const char* data, std::size_t length) {
    return std::all_of(data, data + length,
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::size_t utf16Cut(const char16_t* data, std::size_t length) {
    std::size_t cut = std::min(length, kMaxChunk);
    if (cut < length && U16_IS_LEAD(data[cut - 1])) {
        --cut;
    }
    return cut;
}

std::size_t utf8Cut(const char* data, std::size_t length) {
    std::size_t cut = std::min(length, kMaxChunk);
    // Step back over continuation bytes so that a sequence is never split.
    for (int back = 0; cut < length && back < 4 && (data[cut] & 0xC0) == 0x80; ++back) {
        --cut;
    }
    return cut;
}

}  // namespace

codecvt_ustring_to_ascii::~codecvt_ustring_to_ascii() = default;
codecvt_ascii_to_ustring::~codecvt_ascii_to_ustring() = default;

std::string codecvt_ustring_to_ascii::do_convert(const char16_t* data, std::size_t length) const {
    if (isAscii(data, length)) {
        return std::string(data, data + length);
    }
    std::string out;
    while (length > 0) {
        const std::size_t chunk = utf16Cut(data, length);
        const std::size_t start = out.size();
        out.resize(start + chunk * 3);  // at most three bytes per UTF-16 unit
        int32_t written = 0;
        UErrorCode status = U_ZERO_ERROR;
        u_strToUTF8WithSub(out.data() + start, static_cast<int32_t>(chunk * 3), &written,
                           reinterpret_cast<const UChar*>(data), static_cast<int32_t>(chunk),
                           kReplacement, nullptr, &status);
        out.resize(start + (U_SUCCESS(status) ? static_cast<std::size_t>(written) : 0));
        data += chunk;
        length -= chunk;
    }
    return out;
}

std::u16string codecvt_ascii_to_ustring::do_convert(const char* data, std::size_t length) const {
    if (isAscii(data, length)) {
        return std::u16string(data, data + length);
    }
    std::u16string out;
    while (length > 0) {
        const std::size_t chunk = utf8Cut(data, length);
        const std::size_t start = out.size();
        out.resize(start + chunk);  // never more UTF-16 units than UTF-8 bytes
        int32_t written = 0;
        UErrorCode status = U_ZERO_ERROR;
        u_strFromUTF8WithSub(reinterpret_cast<UChar*>(out.data() + start),
                             static_cast<int32_t>(chunk), &written, data,
                             static_cast<int32_t>(chunk), kReplacement, nullptr, &status);
        out.resize(start + (U_SUCCESS(status) ? static_cast<std::size_t>(written) : 0));
        data += chunk;
        length -= chunk;
    }
    return out;
}

}  // namespace fl::i18n
