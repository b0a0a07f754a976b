#include "idn/IdnConverterImpl.h"

#include <unicode/errorcode.h>
#include <unicode/uidna.h>
#include <unicode/unistr.h>

#include <cstdint>

#include "foundation/network/IdnConverterException.h"

namespace foundation::network {
namespace {

// ICU's defaults and nothing else: transitional processing both ways, no STD3 rules, no Bidi,
// ContextJ or ContextO checks.
constexpr uint32_t kEngineOptions = UIDNA_DEFAULT;

[[noreturn]] void throwIcuError(UErrorCode code) {
    throw IdnConverterException(u_errorName(code));
}

}  // namespace

IdnConverterImpl::IdnConverterImpl() {
    icu::ErrorCode status;
    engine_.reset(icu::IDNA::createUTS46Instance(kEngineOptions, status));
    if (status.isFailure()) {
        throwIcuError(status.get());
    }
    if (!engine_) {
        throwIcuError(U_MEMORY_ALLOCATION_ERROR);  // ICU never returns null on success
    }
}

std::u16string IdnConverterImpl::convert(EngineOperation operation,
                                         const std::u16string& name) const {
    // ICU counts code units in int32_t; a longer name cannot be handed over.
    if (name.size() > static_cast<std::size_t>(INT32_MAX)) {
        throwIcuError(U_INDEX_OUTOFBOUNDS_ERROR);
    }
    icu::ErrorCode status;
    icu::IDNAInfo info;
    icu::UnicodeString destination;
    {
        const icu::UnicodeString source(name.data(), static_cast<int32_t>(name.size()));
        (engine_.get()->*operation)(source, destination, info, status);
    }
    if (status.isFailure()) {
        throwIcuError(status.get());
    }
    return std::u16string(destination.getBuffer(), static_cast<std::size_t>(destination.length()));
}

}  // namespace foundation::network
