#include "iri/normalize/Characters.h"

#include "foundation/core/except/Exception.h"

#include <unicode/errorcode.h>
#include <unicode/normalizer2.h>
#include <unicode/unistr.h>

#include <stdexcept>

#include "text/Text.h"

namespace foundation::network::iri::detail {

using foundation::core::except::detail::AnonymousInternalException;

std::u16string toNfc(const std::u16string& text) {
    if (text::isAscii(text)) {
        return text;
    }
    icu::ErrorCode status;
    // The instance is ICU's own singleton, shared by every thread.
    const icu::Normalizer2* nfc = icu::Normalizer2::getNFCInstance(status);
    if (status.isFailure()) {
        throw AnonymousInternalException<std::runtime_error>(
            std::string("Unicode normalisation unavailable: ") + status.errorName());
    }
    const icu::UnicodeString source(false, text.data(), static_cast<int32_t>(text.size()));
    if (nfc->isNormalized(source, status) && status.isSuccess()) {
        return text;
    }
    status.reset();
    const icu::UnicodeString result = nfc->normalize(source, status);
    if (status.isFailure()) {
        throw AnonymousInternalException<std::runtime_error>(
            std::string("Unicode normalisation failed: ") + status.errorName());
    }
    return {result.getBuffer(), result.getBuffer() + result.length()};
}

}  // namespace foundation::network::iri::detail
