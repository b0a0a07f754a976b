/// @file
/// @brief The five escapable components of an IRI (user info, host, path, query, fragment),
/// each stored in the form it was given and read back in any Encoding.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "foundation/network/Encoding.h"
#include "iri/Component.h"

namespace foundation::network::iri::detail {

/// The component form an Encoding reads: 0 -> form 0, 1 and 2 -> form 1, 3 and 4 -> form 3.
/// Throws std::invalid_argument "Unknown Encoding" for any other value.
Form formOf(const Encoding& encoding);

/// Storage of user info, host, path, query and fragment. Getters may run from many threads at
/// once; setters need exclusive access.
class StringParts {
public:
    /// All five components absent; empty.
    StringParts() noexcept;
    StringParts(const StringParts& other);
    StringParts(StringParts&& other) noexcept;
    StringParts& operator=(const StringParts& other);
    StringParts& operator=(StringParts&& other) noexcept;
    ~StringParts() = default;
    void swap(StringParts& other) noexcept;

    /// True until a non-empty value is stored (an empty path alone leaves it empty).
    bool isEmpty() const noexcept { return empty; }

    bool hasUserInfo() const noexcept { return userInfo.has_value(); }
    bool hasHost() const noexcept { return host.has_value(); }
    bool hasPath() const noexcept { return path.has_value(); }
    bool hasQuery() const noexcept { return query.has_value(); }
    bool hasFragment() const noexcept { return fragment.has_value(); }

    /// The component in the form `encoding` selects; a reference valid while this object is
    /// not written. Throws std::runtime_error "Item not set" followed by ": UserInfo",
    /// ": Host", ": Path", ": Query" or ": Fragment" when the component is absent (or a
    /// conversion's runtime error with the same suffix).
    const std::wstring& getUserInfo(const Encoding& encoding) const;
    const std::wstring& getHost(const Encoding& encoding) const;
    const std::wstring& getPath(const Encoding& encoding) const;
    const std::wstring& getQuery(const Encoding& encoding) const;
    const std::wstring& getFragment(const Encoding& encoding) const;

    /// User info and "@" when user info is present, then the host. A failure reading the host
    /// gains the further suffix ": Host (in getAuthority)".
    std::wstring getAuthority(const Encoding& encoding) const;

    void setUserInfo(std::wstring value, const Encoding& encoding);
    void setHost(std::wstring value, const Encoding& encoding);
    /// Stores the path; an empty path leaves an otherwise empty object empty.
    void setPath(std::wstring value, const Encoding& encoding);
    /// Stores the query; `option` true makes its decoded form UTF-8 octets, one per element.
    void setQuery(std::wstring value, const Encoding& encoding, bool option);
    void setFragment(std::wstring value, const Encoding& encoding);
    /// Tells the path whether a scheme precedes it (its escaping depends on it).
    void setSchemePresent(bool present);

    bool operator==(const StringParts& other) const;
    bool operator!=(const StringParts& other) const { return !(*this == other); }

    /// Makes every component absent and the object empty.
    void reset() noexcept;

private:
    using Slot = std::optional<Component>;
    void setComponent(Slot& slot, ComponentKind kind, std::wstring value, const Encoding& encoding);
    void changePathOptions(bool ComponentOptions::*option, bool value);
    void bindSlots() noexcept;

    Slot userInfo;
    Slot host;
    Slot path;
    Slot query;
    Slot fragment;
    bool empty = true;
    // Fragment, query, path, host, user info: always pointing into this object.
    std::array<Slot*, 5> slots{};
};

}  // namespace foundation::network::iri::detail
