/// @file
/// @brief IRIArgs: the components of an IRI given one by one, for building an IRI and for taking
/// one apart.
#pragma once

#include <cstdint>
#include <string>

#include "foundation/network/Export.h"

namespace foundation::network {

class IRI;

namespace iri::detail {

/// The component record behind IRIArgs, over a string type of code points. Component values are
/// plain characters without percent-escapes; the IRI derives its escaped forms itself. A
/// component whose flag ending in `Set` is false is absent, whatever its string holds. A fresh
/// record has every flag false and every string empty.
template <class String>
class FOUNDATION_NETWORK_API ArgsBase {
public:
    ArgsBase() = default;
    ArgsBase(const ArgsBase&) = default;
    ArgsBase(ArgsBase&&) noexcept = default;
    ArgsBase& operator=(const ArgsBase&) = default;
    ArgsBase& operator=(ArgsBase&&) noexcept = default;
    virtual ~ArgsBase() = default;

    String scheme;
    String userInfo;  ///< unescaped
    String host;      ///< unescaped; an IP literal keeps its brackets ("[::1]")
    std::uint16_t port = 0;
    String path;      ///< unescaped
    String query;     ///< unescaped
    String fragment;  ///< unescaped
    bool querySet = false;
    bool fragmentSet = false;
    bool schemeSet = false;
    bool hostSet = false;
    bool userInfoSet = false;
    bool portSet = false;
    bool pathSet = false;
    /// The scheme is known to be valid: building skips its check.
    bool schemeChecked = false;
    /// Set when the record was filled from an IRI; building does not read them.
    bool userInfoFromIri = false;
    bool hostFromIri = false;
    bool pathFromIri = false;
    bool queryFromIri = false;
    bool fragmentFromIri = false;
    /// Building stores the query as its UTF-8 octets and sets the IRI's query option.
    bool queryAsOctets = false;
    /// Building sets the IRI's query option without re-expressing the query.
    bool queryOption = false;
};

}  // namespace iri::detail

/// The components of an IRI, one by one.
///
/// The fields hold code points, one per `wchar_t` (`args.host = L"bücher.example";
/// args.hostSet = true;`). The setters below take UTF-16, like the rest of the IRI interface,
/// and set the matching `...Set` flag too; they can be chained:
///
///     IRI iri(IRIArgs().setScheme(u"http").setHost(u"example.org").setPath(u"/a b"));
///
/// `IRI(const IRIArgs&)` validates the combination; `IRI::toArgs` and `IRIArgs(const IRI&)` take
/// an IRI apart into unescaped components.
class FOUNDATION_NETWORK_API IRIArgs : public iri::detail::ArgsBase<std::wstring> {
public:
    /// A record with every component absent and every flag false. Does not throw.
    IRIArgs() = default;

    /// The components of `iri`, unescaped (filled by `iri.toArgs(*this)`). Throws only what
    /// reading a component of `iri` in its plain form throws. Does not block.
    explicit IRIArgs(const IRI& iri);

    /// Each setter stores the UTF-16 value as code points and marks the component present.
    /// They throw std::out_of_range ("Misplaced UTF-16 surrogate U+...") on an unpaired
    /// surrogate, leaving the record unchanged. They do not block.
    IRIArgs& setScheme(const std::u16string& value);
    IRIArgs& setUserInfo(const std::u16string& value);
    IRIArgs& setHost(const std::u16string& value);
    IRIArgs& setPath(const std::u16string& value);
    IRIArgs& setQuery(const std::u16string& value);
    IRIArgs& setFragment(const std::u16string& value);
    /// Stores the port and marks it present. Does not throw.
    IRIArgs& setPort(std::uint16_t value);
};

}  // namespace foundation::network
