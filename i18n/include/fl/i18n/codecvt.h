/// @file
/// @brief Stateless facets that move text between UTF-16 and narrow strings.
///
/// Policy, chosen so that no text is ever lost silently:
/// - ASCII maps one to one in both directions.
/// - codecvt_ustring_to_ascii writes every non-ASCII character as its UTF-8 bytes; an unpaired
///   surrogate becomes U+FFFD (EF BF BD).
/// - codecvt_ascii_to_ustring reads the narrow text as UTF-8; each invalid sequence becomes U+FFFD.
/// Neither facet throws for any input.
#pragma once

#include <cstddef>
#include <string>

#define FL_I18N_API __attribute__((visibility("default")))

namespace fl::i18n {

/// UTF-16 buffer to narrow string.
class FL_I18N_API codecvt_ustring_to_ascii {
public:
    virtual ~codecvt_ustring_to_ascii();
    std::string operator()(const std::u16string& text) const {
        return do_convert(text.data(), text.size());
    }
    /// Converts `length` UTF-16 code units starting at `data`.
    virtual std::string do_convert(const char16_t* data, std::size_t length) const;
};

/// Narrow buffer to UTF-16 string.
class FL_I18N_API codecvt_ascii_to_ustring {
public:
    virtual ~codecvt_ascii_to_ustring();
    std::u16string operator()(const std::string& text) const {
        return do_convert(text.data(), text.size());
    }
    /// Converts `length` bytes starting at `data`.
    virtual std::u16string do_convert(const char* data, std::size_t length) const;
};

}  // namespace fl::i18n
