/// @file
/// @brief `IdnOptions`: the Unicode TS #46 processing choices of an `IdnConverter`.
#pragma once

namespace foundation::network {

/// Which UTS #46 processing an `IdnConverter` applies. Every member defaults to off, which is
/// ICU's default engine and what `IdnConverter()` uses: transitional processing, no STD3 rules,
/// no Bidi or context checks. A default-constructed value therefore changes nothing.
struct IdnOptions {
    /// Non-transitional processing in both directions: deviation characters (ß, ς, ZWJ, ZWNJ)
    /// are kept and encoded instead of mapped (faß.de -> xn--fa-hia.de, not fass.de). What
    /// browsers do, and what Unicode recommends since transitional processing was deprecated.
    bool nontransitional = false;

    /// STD3 ASCII rules: only letters, digits and hyphens in ASCII (no '_', ' ', '*' ...).
    bool useStd3Rules = false;

    /// The Bidi rule of RFC 5893 for names with right-to-left labels.
    bool checkBidi = false;

    /// The CONTEXTJ rules of RFC 5892 for ZERO WIDTH JOINER and NON-JOINER.
    bool checkContextJ = false;

    /// The CONTEXTO rules of RFC 5892 (middle dot, Greek keraia, Hebrew punctuation, Arabic
    /// and extended Arabic digits, katakana middle dot).
    bool checkContextO = false;
};

}  // namespace foundation::network
