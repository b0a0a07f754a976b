/// @file
/// @brief ICU's UTS #46 engine called directly, as the reference the converter is checked against.
#pragma once

#include <unicode/errorcode.h>
#include <unicode/idna.h>
#include <unicode/unistr.h>

#include <map>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>

namespace fntest {

struct RawIcuResult {
    icu::UnicodeString text;
    uint32_t errors = 0;  ///< IDNAInfo::getErrors()
};

/// ICU's engine with these options, created once per options and test process.
inline const icu::IDNA& rawEngine(uint32_t options = UIDNA_DEFAULT) {
    static std::mutex mutex;
    static std::map<uint32_t, std::unique_ptr<icu::IDNA>> engines;
    const std::lock_guard<std::mutex> lock(mutex);
    std::unique_ptr<icu::IDNA>& engine = engines[options];
    if (!engine) {
        icu::ErrorCode status;
        engine.reset(icu::IDNA::createUTS46Instance(options, status));
        if (status.isFailure()) {
            throw std::runtime_error(status.errorName());
        }
    }
    return *engine;
}

/// `name` through ICU's nameToASCII or nameToUnicode with these options.
inline RawIcuResult rawConvert(decltype(&icu::IDNA::nameToASCII) operation,
                               const icu::UnicodeString& name, uint32_t options) {
    RawIcuResult result;
    icu::ErrorCode status;
    icu::IDNAInfo info;
    (rawEngine(options).*operation)(name, result.text, info, status);
    if (status.isFailure()) {
        throw std::runtime_error(status.errorName());
    }
    result.errors = info.getErrors();
    return result;
}

inline RawIcuResult rawToAscii(const icu::UnicodeString& name, uint32_t options = UIDNA_DEFAULT) {
    return rawConvert(&icu::IDNA::nameToASCII, name, options);
}

inline RawIcuResult rawToUnicode(const icu::UnicodeString& name, uint32_t options = UIDNA_DEFAULT) {
    return rawConvert(&icu::IDNA::nameToUnicode, name, options);
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
