/// @file
/// @brief The six conversions of each IRI component between its decoded form, its IRI form and
/// its URI form.
///
/// Decoded form: the characters themselves, every escape resolved. IRI form: text as an IRI
/// writes it (non-ASCII characters raw). URI form: ASCII only, everything else as UTF-8 escapes.
/// Escapes of a component's do-not-decode characters survive the URI-to-IRI conversion; the
/// conversions to the decoded form resolve every escape; bytes that are not UTF-8 stay escaped.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace foundation::network::iri::detail {

enum class ComponentKind : std::uint8_t { UserInfo, Host, Path, Query, Fragment };

/// What a component's escaping depends on besides its text.
struct ComponentOptions {
    bool schemePresent = false;    ///< path: a scheme precedes it
    bool userInfoPresent = false;  ///< path: user info precedes it
    bool hostPresent = false;      ///< path: a host precedes it
    bool asOctets = false;         ///< query: the decoded form holds UTF-8 octets, one per element

    friend bool operator==(const ComponentOptions&, const ComponentOptions&) = default;
};

/// IRI form to URI form (the To-URI encoder alone).
std::wstring iriToUri(const std::wstring& iri);

/// Decoded form to IRI form. Escapes "%", the component's do-not-decode characters, every other
/// character the component cannot hold raw (so the result parses as the same component and
/// decodes back to `decoded`), and unsafe and private-use characters. An IP-literal host
/// ("[...]") is written as it is.
std::wstring decodedToIri(ComponentKind kind, const ComponentOptions& options,
                          const std::wstring& decoded);

/// Decoded form to URI form.
std::wstring decodedToUri(ComponentKind kind, const ComponentOptions& options,
                          const std::wstring& decoded);

/// IRI form to decoded form: every escape resolved.
std::wstring iriToDecoded(ComponentKind kind, const ComponentOptions& options,
                          const std::wstring& iri);

/// The decoding pipeline: To-URI encoder, percent decoder with `doNotDecode`, UTF-8 check with
/// repair, back to code points. Bytes that do not form UTF-8 of a Unicode scalar value stay
/// escaped ("%FF"). With `asOctets` the resolved bytes are returned one per element instead.
std::wstring decodePercentEscapes(const std::wstring& text, std::wstring_view doNotDecode,
                                  bool asOctets = false);

}  // namespace foundation::network::iri::detail
