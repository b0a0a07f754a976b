/// @file
/// @brief Quick conversions between the IRI's UTF-16 storage and the code points its grammar
/// and codecs work on. Text without surrogates converts unit for unit; anything else goes
/// through the checked conversions, which also give the errors their texts.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "iri/grammar/Unicode.h"

namespace foundation::network::iri::detail {

/// Whether two texts hold the same units, compared as bytes (the character traits of char16_t
/// compare unit by unit).
inline bool sameUnits(std::u16string_view a, std::u16string_view b) {
    return a.size() == b.size() &&
           (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(char16_t)) == 0);
}

/// The index of the first `unit` in `text` at or after `from`, or npos. Four units are tested
/// per step (the character traits of char16_t look at one at a time).
inline std::size_t findUnit(std::u16string_view text, char16_t unit, std::size_t from = 0) {
    constexpr std::uint64_t kOnes = 0x0001000100010001ull;
    constexpr std::uint64_t kHighs = 0x8000800080008000ull;
    const std::uint64_t pattern = kOnes * unit;
    const std::size_t n = text.size();
    std::size_t i = from;
    for (; i + 4 <= n; i += 4) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + i, sizeof word);
        const std::uint64_t x = word ^ pattern;  // a zero unit where `unit` stands
        if (((x - kOnes) & ~x & kHighs) != 0) {
            break;
        }
    }
    for (; i < n; ++i) {
        if (text[i] == unit) {
            return i;
        }
    }
    return std::u16string_view::npos;
}

/// How many times `unit` stands in `text`; four units a step, as findUnit.
inline std::size_t countUnit(std::u16string_view text, char16_t unit) {
    constexpr std::uint64_t kLows = 0x7FFF7FFF7FFF7FFFull;
    const std::uint64_t pattern = 0x0001000100010001ull * unit;
    const std::size_t n = text.size();
    std::size_t count = 0;
    std::size_t i = 0;
    for (; i + 4 <= n; i += 4) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + i, sizeof word);
        const std::uint64_t x = word ^ pattern;
        // Exactly the high bit of every unit equal to `unit`; moved to the low bit, the four
        // are summed by the multiplication into the top unit.
        const std::uint64_t hits = ~(((x & kLows) + kLows) | x | kLows) >> 15;
        count += static_cast<std::size_t>((hits * 0x0001000100010001ull) >> 48);
    }
    for (; i < n; ++i) {
        count += text[i] == unit ? 1 : 0;
    }
    return count;
}

/// The index of the first of two adjacent `unit`s in `text`, or npos; four units a step, as
/// findUnit.
inline std::size_t findUnitPair(std::u16string_view text, char16_t unit) {
    constexpr std::uint64_t kLows = 0x7FFF7FFF7FFF7FFFull;
    const std::uint64_t pattern = 0x0001000100010001ull * unit;
    const std::size_t n = text.size();
    std::size_t i = 0;
    std::uint64_t carried = 0;  // the high bit of the last unit of the previous step
    for (; i + 4 <= n; i += 4) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + i, sizeof word);
        const std::uint64_t x = word ^ pattern;
        // Exactly the high bit of every unit equal to `unit` (no borrow between units).
        const std::uint64_t hits = ~(((x & kLows) + kLows) | x | kLows);
        if ((hits & (hits >> 16)) != 0 || (carried & hits) != 0) {
            break;
        }
        carried = hits >> 48;
    }
    if (i > 0 && i < n && text[i - 1] == unit && text[i] == unit) {
        return i - 1;
    }
    for (std::size_t j = i; j + 1 < n; ++j) {
        if (text[j] == unit && text[j + 1] == unit) {
            return j;
        }
    }
    return std::u16string_view::npos;
}

/// Writes the code points of `utf16` to `out`, which has room for `utf16.size()` of them, and
/// returns how many it wrote. Throws std::out_of_range ("Misplaced UTF-16 surrogate U+...") for
/// an unpaired surrogate.
std::size_t writeCodePoints(std::u16string_view utf16, wchar_t* out);

inline std::wstring widen(std::u16string_view utf16) {
    std::wstring out(utf16.size(), L'\0');
    out.resize(writeCodePoints(utf16, out.data()));
    return out;
}

/// Appends `codePoints` as UTF-16. Throws std::out_of_range for a surrogate value or one above
/// U+10FFFF.
void appendUtf16(std::wstring_view codePoints, std::u16string& out);

inline std::u16string narrow(std::wstring_view codePoints) {
    std::u16string out;
    out.reserve(codePoints.size());
    appendUtf16(codePoints, out);
    return out;
}

}  // namespace foundation::network::iri::detail
