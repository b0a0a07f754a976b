/// @file
/// @brief `IdnErrors`: the label errors Unicode TS #46 processing found in one host name.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "foundation/network/Export.h"

namespace foundation::network {

/// The error bits ICU's `IDNAInfo::getErrors()` reports for one conversion, with their names.
/// The bit values are ICU's `UIDNA_ERROR_*` constants; the names are those constants without the
/// prefix. A plain value; empty when the name had no error.
class FOUNDATION_NETWORK_API IdnErrors {
public:
    static constexpr std::uint32_t EMPTY_LABEL = 0x1;
    static constexpr std::uint32_t LABEL_TOO_LONG = 0x2;
    static constexpr std::uint32_t DOMAIN_NAME_TOO_LONG = 0x4;
    static constexpr std::uint32_t LEADING_HYPHEN = 0x8;
    static constexpr std::uint32_t TRAILING_HYPHEN = 0x10;
    static constexpr std::uint32_t HYPHEN_3_4 = 0x20;
    static constexpr std::uint32_t LEADING_COMBINING_MARK = 0x40;
    static constexpr std::uint32_t DISALLOWED = 0x80;
    static constexpr std::uint32_t PUNYCODE = 0x100;
    static constexpr std::uint32_t LABEL_HAS_DOT = 0x200;
    static constexpr std::uint32_t INVALID_ACE_LABEL = 0x400;
    static constexpr std::uint32_t BIDI = 0x800;
    static constexpr std::uint32_t CONTEXTJ = 0x1000;
    static constexpr std::uint32_t CONTEXTO_PUNCTUATION = 0x2000;
    static constexpr std::uint32_t CONTEXTO_DIGITS = 0x4000;

    /// No error.
    IdnErrors() noexcept = default;

    /// These error bits. Does not throw.
    explicit IdnErrors(std::uint32_t bits) noexcept;

    /// The error bits. Does not throw.
    std::uint32_t bits() const noexcept { return bits_; }

    /// Whether no error bit is set. Does not throw.
    bool empty() const noexcept { return bits_ == 0; }

    /// Whether every bit of `errors` (one of the constants above, or several or'ed) is set;
    /// false for 0. Does not throw.
    bool has(std::uint32_t errors) const noexcept {
        return errors != 0 && (bits_ & errors) == errors;
    }

    /// One name per set bit, lowest bit first ("EMPTY_LABEL", "LABEL_TOO_LONG", ...); a bit this
    /// version does not know is named in hexadecimal ("0x8000"). Throws only std::bad_alloc.
    std::vector<std::string> names() const;

    /// The names joined by ", "; empty when there is no error. Throws only std::bad_alloc.
    std::string toString() const;

    friend bool operator==(IdnErrors a, IdnErrors b) noexcept { return a.bits_ == b.bits_; }
    friend bool operator!=(IdnErrors a, IdnErrors b) noexcept { return a.bits_ != b.bits_; }

private:
    std::uint32_t bits_ = 0;
};

}  // namespace foundation::network
