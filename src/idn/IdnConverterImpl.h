/// @file
/// @brief The state shared by copies of an IdnConverter: one ICU UTS #46 engine and the two
/// text facets. Never changes after construction.
#pragma once

#include <unicode/idna.h>
#include <unicode/uidna.h>

#include <cstdint>
#include <memory>
#include <string>

#include "fl/i18n/codecvt.h"

namespace foundation::network {

class IdnConverterImpl {
public:
    /// One of icu::IDNA::nameToASCII and icu::IDNA::nameToUnicode.
    using EngineOperation = icu::UnicodeString& (icu::IDNA::*)(const icu::UnicodeString&,
                                                               icu::UnicodeString&, icu::IDNAInfo&,
                                                               UErrorCode&) const;

    /// Creates the engine with ICU's `options` (UIDNA_DEFAULT, 0, unless a caller chose
    /// others). Throws IdnConverterException with ICU's error name when ICU cannot create it.
    explicit IdnConverterImpl(uint32_t options = UIDNA_DEFAULT);

    IdnConverterImpl(const IdnConverterImpl&) = delete;
    IdnConverterImpl& operator=(const IdnConverterImpl&) = delete;

    /// Runs `operation` on `name`. The label errors ICU records in its IDNAInfo do not throw:
    /// the caller gets ICU's text, and the error bits in `errors` when it is not null. Throws
    /// IdnConverterException when ICU's error code is a failure.
    std::u16string convert(EngineOperation operation, const std::u16string& name,
                           uint32_t* errors = nullptr) const;

    const fl::i18n::codecvt_ustring_to_ascii& toNarrow() const { return toNarrow_; }
    const fl::i18n::codecvt_ascii_to_ustring& toWide() const { return toWide_; }

private:
    // Declared in this order so that they are destroyed in the reverse one: the facets first,
    // the engine last.
    std::unique_ptr<icu::IDNA> engine_;
    fl::i18n::codecvt_ustring_to_ascii toNarrow_;
    fl::i18n::codecvt_ascii_to_ustring toWide_;
};

}  // namespace foundation::network
