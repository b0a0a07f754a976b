/// @file
/// @brief `iri::Encoding`: the form in which an IRI component is given or wanted.
#pragma once

#include <cstdint>

namespace foundation::network::iri {

/// Selects one of the five forms of an IRI component or of a whole IRI:
///
/// | value | form |
/// |---|---|
/// | 0 | decoded: the characters themselves, no percent-escapes |
/// | 1 | IRI text: non-ASCII characters as they are, escapes as written |
/// | 2 | IRI text with percent repair (a stray "%" becomes "%25", brackets in paths escaped) |
/// | 3 | ASCII (URI) text: every non-ASCII character as UTF-8 escapes |
/// | 4 | ASCII text with percent repair |
///
/// The IRI getters throw `std::invalid_argument` for any other value. Passed by const reference.
class Encoding {
public:
    /// An Encoding of the given value (0 to 4 are meaningful). Never throws.
    constexpr explicit Encoding(std::uint32_t value) noexcept : value_(value) {}

    /// The value 0 to 4. Never throws.
    constexpr std::uint32_t value() const noexcept { return value_; }

    /// Encoding 0: plain characters, every escape resolved.
    static constexpr Encoding decoded() noexcept { return Encoding(0); }
    /// Encoding 1: IRI text as written (what `IRI::toString(false)` uses).
    static constexpr Encoding iri() noexcept { return Encoding(1); }
    /// Encoding 2: IRI text with percent repair (what `IRI::toString(true)` uses).
    static constexpr Encoding iriStrict() noexcept { return Encoding(2); }
    /// Encoding 3: ASCII (URI) text (what `IRI::toAsciiString(false)` uses).
    static constexpr Encoding ascii() noexcept { return Encoding(3); }
    /// Encoding 4: ASCII text with percent repair (what `IRI::toAsciiString(true)` uses).
    static constexpr Encoding asciiStrict() noexcept { return Encoding(4); }

    friend constexpr bool operator==(const Encoding& a, const Encoding& b) noexcept {
        return a.value_ == b.value_;
    }
    friend constexpr bool operator!=(const Encoding& a, const Encoding& b) noexcept {
        return a.value_ != b.value_;
    }

private:
    std::uint32_t value_;
};

}  // namespace foundation::network::iri
