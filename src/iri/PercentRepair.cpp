#include "iri/PercentRepair.h"

namespace foundation::network::iri::detail {

namespace {

bool isHexDigit(wchar_t c) {
    return (c >= L'0' && c <= L'9') || (c >= L'A' && c <= L'F') || (c >= L'a' && c <= L'f');
}

}  // namespace

std::wstring repairPercents(std::wstring_view text, bool escapeBrackets) {
    std::wstring out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t c = text[i];
        if (c == L'%') {
            const bool escape =
                i + 2 < text.size() && isHexDigit(text[i + 1]) && isHexDigit(text[i + 2]);
            out.append(escape ? L"%" : L"%25");
        } else if (escapeBrackets && c == L'[') {
            out.append(L"%5B");
        } else if (escapeBrackets && c == L']') {
            out.append(L"%5D");
        } else {
            out.push_back(c);
        }
    }
    return out;
}

}  // namespace foundation::network::iri::detail
