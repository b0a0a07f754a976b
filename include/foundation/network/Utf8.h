/// @file
/// @brief The UTF-8 door: conversions between UTF-8 text, which most C++ code holds, and the
/// UTF-16 text (`std::u16string`) that the IRI, IDN and interface-name calls speak.
///
///     IRI iri(utf8ToUtf16("http://bücher.example/ä"));
///     std::string text = utf16ToUtf8(iri.toString());
///
/// Strict both ways: ill-formed input is refused with `std::invalid_argument` (of the
/// `foundation::core::except` family, so `IInternalException` catches it too), never repaired
/// silently. `utf8ToUtf16Replacing` is the lenient door for text that must be shown whatever it
/// holds. None of these functions blocks; all may be called from any number of threads.
#pragma once

#include <string>
#include <string_view>

#include "foundation/network/Export.h"

namespace foundation::network {

/// UTF-8 to UTF-16. Accepts exactly well-formed UTF-8 (RFC 3629, Unicode section 3.9), U+0000
/// and noncharacters (U+FFFE, U+FDD0...) included.
/// @throws std::invalid_argument "invalid UTF-8 at byte N", N being the zero-based offset of
/// the first ill-formed sequence: a stray continuation byte, a byte that never occurs in UTF-8
/// (C0, C1, F5 to FF), an overlong form, an encoded surrogate (ED A0 80 ...), a value above
/// U+10FFFF, or a sequence cut short by the end of the text or by another lead byte.
FOUNDATION_NETWORK_API std::u16string utf8ToUtf16(std::string_view utf8);

/// UTF-8 to UTF-16 that never refuses: each maximal ill-formed part becomes one U+FFFD, the
/// practice Unicode section 3.9 recommends (so "\xE2\x82" gives one U+FFFD, "\xC0\xAF" two).
/// Well-formed text gives what `utf8ToUtf16` gives. Throws only std::bad_alloc.
FOUNDATION_NETWORK_API std::u16string utf8ToUtf16Replacing(std::string_view utf8);

/// UTF-16 to UTF-8. A surrogate pair becomes one four-byte sequence.
/// @throws std::invalid_argument "unpaired UTF-16 surrogate at index N", N being the
/// zero-based index of the first high surrogate not followed by a low one, or of a low
/// surrogate not preceded by a high one.
FOUNDATION_NETWORK_API std::string utf16ToUtf8(std::u16string_view utf16);

}  // namespace foundation::network
