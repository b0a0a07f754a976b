/// @file
/// @brief Shared pieces of the fuzz targets: the checks that stop the run, the reading of fuzz
/// bytes as UTF-8 sequences and UTF-16 text (invalid UTF-16 included).
#pragma once

// The standard headers every fuzz target uses.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fnfuzz {

/// Prints what disagreed and stops the run so that libFuzzer keeps the input.
[[noreturn]] inline void fail(const char* what, const char* file, int line = 0) {
    std::fprintf(stderr, "\n*** property failed at %s:%d: %s\n", file, line, what);
    __builtin_trap();
}

#define FNFUZZ_CHECK(condition) \
    ((condition) ? void() : ::fnfuzz::fail(#condition, __FILE__, __LINE__))

/// No call throws it: `attempt<Never>` lets no exception pass.
struct Never {};

/// Runs `call`: an `Expected` exception gives no value, any other exception stops the run.
template <class Expected, class Call>
auto attempt(Call call, const char* where) -> std::optional<decltype(call())> {
    try {
        return call();
    } catch (const Expected&) {
        return std::nullopt;
    } catch (const std::exception& e) {
        fail(e.what(), where);  // no documented path lets it escape
    }
}

inline bool startsWith(const char* text, std::string_view prefix) {
    return std::string_view(text).substr(0, prefix.size()) == prefix;
}

/// Whether `text` is one of `texts` (the refusals a call may give).
template <std::size_t N>
bool isOneOf(const char* text, const std::string_view (&texts)[N]) {
    return std::find(std::begin(texts), std::end(texts), text) != std::end(texts);
}

/// The texts of the UTF conversion errors (std::out_of_range).
inline bool isConversionError(const std::exception& e) {
    return startsWith(e.what(), "Misplaced UTF-16 surrogate U+") ||
           startsWith(e.what(), "Invalid UTF-32 code point U+") ||
           startsWith(e.what(), "Invalid UTF-8 sequence encountered");
}

/// The sequence at bytes[i] read by its lead byte's leading ones (none for ASCII, 2 to
/// `maxLength` for a lead byte): its length and value, or 0 when it is no whole sequence.
/// Overlong forms and surrogates are not refused here.
inline std::size_t utf8Sequence(std::string_view bytes, std::size_t i, std::uint32_t& value,
                                int maxLength = 4) {
    const auto lead = static_cast<std::uint8_t>(bytes[i]);
    const int ones = __builtin_clz(~(static_cast<std::uint32_t>(lead) << 24));
    const std::size_t length = ones == 0 ? 1 : ones >= 2 && ones <= maxLength ? ones : 0;
    if (length == 0 || i + length > bytes.size()) {
        return 0;
    }
    value = lead & (0x7Fu >> ones);
    for (std::size_t k = 1; k < length; ++k) {
        if ((bytes[i + k] & 0xC0) != 0x80) {
            return 0;
        }
        value = value << 6 | (bytes[i + k] & 0x3F);
    }
    return length;
}

/// Fuzz bytes as UTF-16, read leniently so that plain UTF-8 seeds stay readable: a whole UTF-8
/// sequence gives its code point (a surrogate pair above U+FFFF; a surrogate value gives that
/// lone unit, invalid UTF-16 on purpose); any other byte gives the unit of the same value.
inline std::u16string toUtf16(std::string_view bytes) {
    std::u16string out;
    for (std::size_t i = 0, length = 0; i < bytes.size(); i += length) {
        std::uint32_t value = 0;
        length = utf8Sequence(bytes, i, value);
        if (length == 0 || value > 0x10FFFF) {
            out += static_cast<char16_t>(static_cast<std::uint8_t>(bytes[i]));
            length = 1;
        } else if (value >= 0x10000) {
            out += {static_cast<char16_t>(0xD7C0 + (value >> 10)),
                    static_cast<char16_t>(0xDC00 | (value & 0x3FF))};
        } else {
            out += static_cast<char16_t>(value);
        }
    }
    return out;
}

/// Whether UTF-16 text holds no unpaired surrogate.
inline bool isValidUtf16(const std::u16string& text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool high = (text[i] & 0xFC00) == 0xD800, low = (text[i] & 0xFC00) == 0xDC00;
        if (low || (high && (++i == text.size() || (text[i] & 0xFC00) != 0xDC00))) {
            return false;
        }
    }
    return true;
}

}  // namespace fnfuzz
