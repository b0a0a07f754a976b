/// @file
/// @brief ICU's UTS #46 engine called directly, as the reference the converter is checked against.
#pragma once

#include <unicode/errorcode.h>
#include <unicode/idna.h>
#include <unicode/unistr.h>

#include <memory>
#include <stdexcept>
#include <string>

namespace fntest {

struct RawIcuResult {
    icu::UnicodeString text;
    uint32_t errors = 0;  ///< IDNAInfo::getErrors()
};

/// ICU's engine with default options, created once per test process.
inline const icu::IDNA& rawEngine() {
    static const std::unique_ptr<icu::IDNA> engine = [] {
        icu::ErrorCode status;
        std::unique_ptr<icu::IDNA> created(icu::IDNA::createUTS46Instance(UIDNA_DEFAULT, status));
        if (status.isFailure()) {
            throw std::runtime_error(status.errorName());
        }
        return created;
    }();
    return *engine;
}

inline RawIcuResult rawToAscii(const icu::UnicodeString& name) {
    RawIcuResult result;
    icu::ErrorCode status;
    icu::IDNAInfo info;
    rawEngine().nameToASCII(name, result.text, info, status);
    if (status.isFailure()) {
        throw std::runtime_error(status.errorName());
    }
    result.errors = info.getErrors();
    return result;
}

inline RawIcuResult rawToUnicode(const icu::UnicodeString& name) {
    RawIcuResult result;
    icu::ErrorCode status;
    icu::IDNAInfo info;
    rawEngine().nameToUnicode(name, result.text, info, status);
    if (status.isFailure()) {
        throw std::runtime_error(status.errorName());
    }
    result.errors = info.getErrors();
    return result;
}

inline icu::UnicodeString icuString(const std::u16string& text) {
    return icu::UnicodeString(text.data(), static_cast<int32_t>(text.size()));
}

inline std::u16string u16(const icu::UnicodeString& text) {
    return std::u16string(text.getBuffer(), static_cast<std::size_t>(text.length()));
}

inline std::string utf8(const icu::UnicodeString& text) {
    std::string out;
    text.toUTF8String(out);
    return out;
}

inline std::u16string fromUtf8(const std::string& text) {
    return u16(icu::UnicodeString::fromUTF8(text));
}

}  // namespace fntest
