/// @file
/// @brief Shared pieces of the fuzz targets: the property check that stops the run, and the
/// decoding of fuzz bytes into UTF-16 text (invalid UTF-16 included).
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <exception>
#include <string>
#include <string_view>

namespace fnfuzz {

/// Prints what disagreed and stops the run so that libFuzzer keeps the input.
[[noreturn]] inline void fail(const char* what, const char* file, int line) {
    std::fprintf(stderr, "\n*** property failed at %s:%d: %s\n", file, line, what);
    std::fflush(stderr);
    __builtin_trap();
}

#define FNFUZZ_CHECK(condition)                             \
    do {                                                    \
        if (!(condition)) {                                 \
            ::fnfuzz::fail(#condition, __FILE__, __LINE__); \
        }                                                   \
    } while (false)

/// An exception that no documented path lets escape.
[[noreturn]] inline void unexpected(const std::exception& e, const char* where) {
    std::fprintf(stderr, "\n*** unexpected exception in %s: %s\n", where, e.what());
    std::fflush(stderr);
    __builtin_trap();
}

inline bool startsWith(const char* text, std::string_view prefix) {
    return std::string_view(text).substr(0, prefix.size()) == prefix;
}

/// The texts of the UTF conversion errors (std::out_of_range).
inline bool isConversionError(const std::exception& e) {
    return startsWith(e.what(), "Misplaced UTF-16 surrogate U+") ||
           startsWith(e.what(), "Invalid UTF-32 code point U+") ||
           startsWith(e.what(), "Invalid UTF-8 sequence encountered");
}

/// Fuzz bytes as UTF-16, read leniently so that plain UTF-8 seeds stay readable: a well-formed
/// UTF-8 sequence of one to four bytes gives its code point (one unit, or a surrogate pair above
/// U+FFFF); a sequence that encodes a surrogate value gives that lone unit (invalid UTF-16 on
/// purpose); any other byte gives the unit of the same value.
inline std::u16string toUtf16(const std::uint8_t* data, std::size_t size) {
    std::u16string out;
    out.reserve(size);
    std::size_t i = 0;
    while (i < size) {
        const std::uint8_t lead = data[i];
        std::size_t length = 0;
        std::uint32_t value = 0;
        if (lead < 0x80) {
            length = 1;
            value = lead;
        } else if ((lead & 0xE0) == 0xC0) {
            length = 2;
            value = lead & 0x1F;
        } else if ((lead & 0xF0) == 0xE0) {
            length = 3;
            value = lead & 0x0F;
        } else if ((lead & 0xF8) == 0xF0) {
            length = 4;
            value = lead & 0x07;
        }
        bool wellFormed = length != 0 && i + length <= size;
        for (std::size_t k = 1; wellFormed && k < length; ++k) {
            wellFormed = (data[i + k] & 0xC0) == 0x80;
            value = (value << 6) | (data[i + k] & 0x3F);
        }
        if (!wellFormed || value > 0x10FFFF) {
            out.push_back(static_cast<char16_t>(lead));
            i += 1;
            continue;
        }
        if (value >= 0x10000) {
            value -= 0x10000;
            out.push_back(static_cast<char16_t>(0xD800 + (value >> 10)));
            out.push_back(static_cast<char16_t>(0xDC00 + (value & 0x3FF)));
        } else {
            out.push_back(static_cast<char16_t>(value));
        }
        i += length;
    }
    return out;
}

inline std::u16string toUtf16(std::string_view bytes) {
    return toUtf16(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

/// Whether UTF-16 text holds no unpaired surrogate.
inline bool isValidUtf16(const std::u16string& text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        if (unit >= 0xD800 && unit <= 0xDBFF) {
            if (i + 1 == text.size() || text[i + 1] < 0xDC00 || text[i + 1] > 0xDFFF) {
                return false;
            }
            ++i;
        } else if (unit >= 0xDC00 && unit <= 0xDFFF) {
            return false;
        }
    }
    return true;
}

}  // namespace fnfuzz
