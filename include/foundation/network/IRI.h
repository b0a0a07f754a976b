/// @file
/// @brief `IRI`: an Internationalized Resource Identifier (RFC 3987) as a value.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>

#include "foundation/network/Encoding.h"
#include "foundation/network/Export.h"
#include "foundation/network/Normalization.h"

namespace foundation::network {

namespace iri::detail {
struct IRIAccess;
}  // namespace iri::detail

class IRIArgs;
class IdnConverter;

/// An IRI reference parsed from UTF-16 text: its scheme, authority (user info, host, port),
/// path, query and fragment, each readable in any `iri::Encoding`, and the whole written back as
/// Unicode text (`toString`) or as ASCII URI text (`toAsciiString`).
///
/// A plain value: copy, move, swap and `clear()`. Every const member may run on one object from
/// several threads at once (lazily derived forms are published once, without locks); changing
/// an object while another thread reads it is not supported. No member blocks, except that a
/// first `hashValue()` may wait for another thread computing the same hash.
///
/// Failures are exceptions of the `foundation::core::except` family, catchable by their
/// standard base: `std::logic_error` ("IRI parsing failed") for text that is not an IRI
/// reference, `std::runtime_error` ("No scheme", "No port", "Item not set: Host"...) for asking
/// for an absent component, `std::out_of_range` (the UTF conversion's own text) for text that
/// UTF-16 cannot carry, `std::invalid_argument` for an Encoding outside 0 to 4.
class FOUNDATION_NETWORK_API IRI {
public:
    /// An empty IRI (`isEmpty()` true, no component at all). Never throws.
    IRI() noexcept;

    /// Parses `text` as an IRI reference (absolute or relative; "" gives an empty IRI).
    /// Throws `std::out_of_range` ("Misplaced UTF-16 surrogate U+...") for an unpaired
    /// surrogate and `std::logic_error` "IRI parsing failed" for text the IRI grammar refuses or
    /// a port that is not a number from 0 to 65535.
    explicit IRI(const std::u16string& text);

    /// Copies `other` (its cached forms included). Safe while other threads read `other`;
    /// throws only std::bad_alloc.
    IRI(const IRI& other);
    /// Moves `other` into a new IRI; `other` is left empty.
    IRI(IRI&& other) noexcept;
    /// Replaces this value by a copy of `other`; self-assignment does nothing. Throws only
    /// std::bad_alloc (this value is then unchanged).
    IRI& operator=(const IRI& other);
    /// Replaces this value by `other`'s, leaving `other` empty; self-assignment does nothing.
    IRI& operator=(IRI&& other) noexcept;
    /// Destroys the value. Never throws.
    ~IRI();

    /// Exchanges the values of this and `other`. Never throws.
    void swap(IRI& other) noexcept;
    /// Makes this IRI empty. Never throws.
    void clear() noexcept;

    /// Whether the IRI has no component at all (default-constructed, cleared, parsed from "").
    bool isEmpty() const noexcept;
    /// Whether a scheme is present.
    bool hasScheme() const noexcept;
    /// Whether an authority ("//" and a host, possibly empty) is present.
    bool hasAuthority() const noexcept;
    /// Whether user info (the part before "@" in the authority) is present.
    bool hasUserInfo() const noexcept;
    /// Whether a host is present.
    bool hasHost() const noexcept;
    /// Whether a port (possibly empty text) is present.
    bool hasPort() const noexcept;
    /// Whether a query ("?" and what follows) is present.
    bool hasQuery() const noexcept;
    /// Whether a fragment ("#" and what follows) is present.
    bool hasFragment() const noexcept;
    /// Whether the path is non-empty and begins with "/".
    bool hasAbsolutePath() const noexcept;
    /// Whether a scheme is present (the IRI is not a relative reference).
    bool isAbsolute() const noexcept;
    /// Whether a scheme is present, no authority is, and the path does not begin with "/".
    bool isOpaque() const noexcept;

    /// The scheme as written. Throws `std::runtime_error` "No scheme" when absent.
    std::u16string getScheme() const;
    /// The port text as written. Throws `std::runtime_error` "No port" when absent.
    std::u16string getPort() const;
    /// The port as a number. Throws `std::runtime_error` "No port" when absent.
    std::uint16_t getPortNumber() const;

    /// The user info in `encoding` (no percent repair in any Encoding). Throws
    /// `std::runtime_error` "Item not set: UserInfo" when absent.
    std::u16string getUserInfo(const iri::Encoding& encoding) const;
    /// The host in `encoding` (an IP literal keeps its brackets). Throws `std::runtime_error`
    /// "Item not set: Host" when absent.
    std::u16string getHost(const iri::Encoding& encoding) const;
    /// The path in `encoding`. Throws `std::runtime_error` "Item not set: Path" when absent
    /// (only an IRI that was never given text has no path).
    std::u16string getPath(const iri::Encoding& encoding) const;
    /// The query (without "?") in `encoding`. Throws `std::runtime_error` "Item not set: Query"
    /// when absent.
    std::u16string getQuery(const iri::Encoding& encoding) const;
    /// The fragment (without "#") in `encoding`. Throws `std::runtime_error`
    /// "Item not set: Fragment" when absent.
    std::u16string getFragment(const iri::Encoding& encoding) const;
    /// User info and "@" (when present), host, and ":" and the port (when present). Throws
    /// `std::runtime_error` ending in ": Host (in getAuthority)" when there is no host.
    std::u16string getAuthority(const iri::Encoding& encoding) const;
    /// Everything after the scheme's ":" up to, not including, "#" and the fragment.
    std::u16string getSchemeSpecificPart(const iri::Encoding& encoding) const;

    /// The whole IRI as Unicode text: Encoding 2 when `strict`, else Encoding 1 (for an IRI
    /// parsed from text, exactly that text).
    std::u16string toString(bool strict = false) const;
    /// The whole IRI as ASCII (URI) text: Encoding 4 when `strict`, else Encoding 3.
    std::u16string toAsciiString(bool strict = false) const;
    /// The whole IRI in `encoding`.
    std::u16string toStringFromParts(const iri::Encoding& encoding) const;
    /// The whole IRI as ASCII text for a client that must look the host up: as
    /// `toAsciiString(false)`, except that a registered-name host is in its ASCII (Punycode)
    /// form by `idn`, not percent-encoded. An empty IRI gives "". Throws
    /// `std::invalid_argument` "Host has no ASCII form: HOST" when `idn` reports errors for
    /// the host or gives no ASCII name.
    std::u16string toUriString(const IdnConverter& idn) const;

    /// An equivalent IRI in normal form (this one unchanged): the steps `how` selects (see
    /// `iri::Normalization`; case, percent-encoding, dot segments and scheme defaults by
    /// default). The result reads back to itself, and normalising it again with the same
    /// steps changes nothing. An empty IRI gives an empty IRI. Throws `std::logic_error`
    /// "IRI parsing failed" only when the Unicode steps produce text an IRI cannot hold.
    IRI normalize(const iri::Normalization& how = {}) const;

    /// Builds an IRI from separately given, unescaped components. Throws `std::logic_error`
    /// "Malformed scheme", "User Info requires a host", "Port requires a host" or "Path cannot
    /// be relative if authority present" (checked in that order), and `std::out_of_range` for
    /// a scheme that UTF-16 cannot carry. Does not block.
    explicit IRI(const IRIArgs& args);
    /// Fills `args` with this IRI's components, unescaped (Encoding 0). Does not block.
    void toArgs(IRIArgs& args) const;

    /// The target of this reference resolved against `base`, after RFC 3986 section 5.2 (this
    /// IRI and `base` are unchanged). Every component's text passes through as written. Throws
    /// nothing of its own. Does not block.
    IRI resolveAgainst(const IRI& base) const;
    /// A reference that resolves against `base` to this IRI (with one kept exception: a base
    /// not ending in "/" two or more directories below the shared prefix gets one ".." too
    /// few). Throws `std::logic_error` "Cannot make relative to base. Already relative",
    /// "Cannot make relative. Base is relative", or "Cannot make relative to base as base has
    /// scheme|authority|path|query but this does not". Does not block.
    IRI makeRelativeTo(const IRI& base) const;

    /// True when both are empty, or neither is and their Encoding 1 texts are equal, however
    /// each value was made (parsed, resolved, relativised, built). Does not block; throws
    /// nothing but allocation failures.
    bool operator==(const IRI& other) const;
    /// The negation of `operator==`. Does not block.
    bool operator!=(const IRI& other) const;
    /// The order of the Encoding 1 texts, code point by code point: a strict weak order whose
    /// equivalent values are exactly the equal ones, so IRIs serve as keys of ordered
    /// containers and sort safely. Does not block.
    bool operator<(const IRI& other) const;
    /// A 64-bit hash of the Encoding 1 text (0 for an empty IRI), computed once and cached;
    /// safe from several threads at once. Never throws.
    std::uint64_t hashValue() const noexcept;

private:
    friend struct iri::detail::IRIAccess;

    // The implementation object lives in place here; its real size and alignment are checked
    // where it is defined.
    static constexpr std::size_t kStorageSize = 128;
    static constexpr std::size_t kStorageAlign = 8;
    alignas(kStorageAlign) unsigned char storage_[kStorageSize];
};

/// Exchanges the values of `a` and `b`. Never throws.
inline void swap(IRI& a, IRI& b) noexcept {
    a.swap(b);
}

/// Writes `iri.toAsciiString(false)` to `out` as ASCII text; an empty IRI writes nothing.
FOUNDATION_NETWORK_API std::ostream& operator<<(std::ostream& out, const IRI& iri);

}  // namespace foundation::network

/// IRIs as keys of unordered containers: `IRI::hashValue`.
template <>
struct std::hash<foundation::network::IRI> {
    std::size_t operator()(const foundation::network::IRI& iri) const noexcept {
        return static_cast<std::size_t>(iri.hashValue());
    }
};
