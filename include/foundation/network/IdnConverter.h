/// @file
/// @brief Internationalized domain names between Unicode and ASCII (Punycode) form, after
/// Unicode TS #46: by default with ICU's default options (transitional processing, no STD3
/// rules, no Bidi or context checks), or with the processing an `IdnOptions` chooses.
///
/// The one-shot functions idn_to_ascii and ascii_to_idn are declared here too, beside the class
/// they are built on, so that a reader choosing between them sees both and their costs at once.
#pragma once

#include <memory>
#include <string>

#include "foundation/network/Export.h"
#include "foundation/network/IdnConverterException.h"
#include "foundation/network/IdnErrors.h"
#include "foundation/network/IdnOptions.h"

namespace foundation::network {

class IdnConverterImpl;

/// A handle over one ICU UTS #46 engine. Copies are cheap and share the engine; the engine is
/// released with the last copy. Every member is const and may be called from several threads at
/// once, on one handle or on its copies.
///
/// Label errors (disallowed code points, empty or over-long labels, bad Punycode...) do not
/// throw: the caller gets ICU's text for the name, in which ICU marks the bad labels its own way
/// (for instance U+FFFD), and, through the overloads taking an `IdnErrors`, the errors found, so
/// that it can refuse such a name. Non-ASCII characters left in a toAscii result reach the caller
/// as UTF-8.
class FOUNDATION_NETWORK_API IdnConverter {
public:
    /// Creates the engine. Throws IdnConverterException when ICU cannot create it. Does not block.
    IdnConverter();

    /// Creates an engine with the processing `options` choose (`IdnOptions{}` is the same as
    /// the default constructor). Throws IdnConverterException when ICU cannot create it.
    explicit IdnConverter(const IdnOptions& options);

    // Kept deliberately without move operations: a "moved" converter is copied, so that a
    // moved-from handle still converts instead of holding no engine.
    IdnConverter(const IdnConverter&) = default;
    IdnConverter& operator=(const IdnConverter&) = default;
    ~IdnConverter() = default;

    /// Unicode host name (UTF-16) to its ASCII form, as ICU's IDNA::nameToASCII gives it; an
    /// empty name gives an empty string. Throws IdnConverterException on an ICU error code (such
    /// as an allocation failure), never for label errors. Does not block.
    std::string toAscii(const std::u16string& name) const;

    /// toAscii(name), and the label errors ICU found in `errors` (empty when none).
    std::string toAscii(const std::u16string& name, IdnErrors& errors) const;

    /// Host name in ASCII form (read as UTF-8, so Unicode names are accepted too) to its Unicode
    /// form, as ICU's IDNA::nameToUnicode gives it; an empty name gives an empty string. Throws
    /// IdnConverterException on an ICU error code, never for label errors. Does not block.
    std::u16string toUnicode(const std::string& name) const;

    /// toUnicode(name), and the label errors ICU found in `errors` (empty when none).
    std::u16string toUnicode(const std::string& name, IdnErrors& errors) const;

private:
    std::shared_ptr<const IdnConverterImpl> impl_;
};

/// IdnConverter().toAscii(name) with a converter created and destroyed within the call: every
/// call pays for a new ICU engine, so keep an IdnConverter to convert many names. Throws
/// IdnConverterException as the constructor and toAscii do. Does not block.
FOUNDATION_NETWORK_API std::string idn_to_ascii(const std::u16string& name);

/// IdnConverter().toUnicode(name) with a converter created and destroyed within the call: every
/// call pays for a new ICU engine, so keep an IdnConverter to convert many names. Throws
/// IdnConverterException as the constructor and toUnicode do. Does not block.
FOUNDATION_NETWORK_API std::u16string ascii_to_idn(const std::string& name);

}  // namespace foundation::network
