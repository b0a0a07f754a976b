// Reading a value: its components in each Encoding, and its whole text in each, cached.
#include <stdexcept>

#include "foundation/core/except/Exception.h"
#include "iri/TemplateIRI.h"
#include "iri/Utf16.h"
#include "iri/codecs/PercentRepair.h"

namespace foundation::network::iri::detail {

namespace {

using core::except::detail::AnonymousInternalException;

bool isStrict(const Encoding& encoding) {
    return encoding.value() == 2 || encoding.value() == 4;
}

// Cache entry of each Encoding.
constexpr std::size_t kCacheEntry[5] = {0, 1, 3, 2, 4};

}  // namespace

template <class String>
std::u16string TemplateIRI<String>::getScheme() const {
    if (!flags.schemePresent) {
        throw AnonymousInternalException<std::runtime_error>("No scheme");
    }
    return std::u16string(parts.scheme());
}

template <class String>
std::u16string TemplateIRI<String>::getPort() const {
    if (!flags.portPresent) {
        throw AnonymousInternalException<std::runtime_error>("No port");
    }
    return std::u16string(parts.port());
}

template <class String>
std::uint16_t TemplateIRI<String>::getPortNumber() const {
    if (!flags.portPresent) {
        throw AnonymousInternalException<std::runtime_error>("No port");
    }
    return portNumber;
}

template <class String>
std::u16string TemplateIRI<String>::readComponent(ComponentKind kind, const Encoding& encoding,
                                                  bool repair, bool escapeBrackets) const {
    try {
        const std::u16string_view value = parts.view(kind, encoding);
        if (repair && isStrict(encoding)) {
            return repairPercents(value, escapeBrackets);
        }
        return std::u16string(value);
    } catch (const std::runtime_error& e) {
        throw AnonymousInternalException<std::runtime_error>(e.what());
    }
}

// User info is deliberately never repaired on its own, only inside the whole-string forms.
template <class String>
std::u16string TemplateIRI<String>::getUserInfo(const Encoding& encoding) const {
    return readComponent(ComponentKind::UserInfo, encoding, false, false);
}

template <class String>
std::u16string TemplateIRI<String>::getHost(const Encoding& encoding) const {
    return readComponent(ComponentKind::Host, encoding, true, false);
}

template <class String>
std::u16string TemplateIRI<String>::getPath(const Encoding& encoding) const {
    return readComponent(ComponentKind::Path, encoding, true, true);
}

template <class String>
std::u16string TemplateIRI<String>::getQuery(const Encoding& encoding) const {
    return readComponent(ComponentKind::Query, encoding, true, true);
}

template <class String>
std::u16string TemplateIRI<String>::getFragment(const Encoding& encoding) const {
    return readComponent(ComponentKind::Fragment, encoding, true, true);
}

template <class String>
std::u16string TemplateIRI<String>::getNativeAuthority(const Encoding& encoding) const {
    std::u16string authority;
    try {
        authority = parts.authority(encoding);
    } catch (const std::runtime_error& e) {
        throw AnonymousInternalException<std::runtime_error>(e.what());
    }
    if (isStrict(encoding)) {
        authority = repairPercents(authority, false);
    }
    if (flags.portPresent) {
        authority.push_back(COLON);
        authority += parts.port();
    }
    return authority;
}

template <class String>
std::u16string TemplateIRI<String>::getAuthority(const Encoding& encoding) const {
    return getNativeAuthority(encoding);
}

template <class String>
std::u16string TemplateIRI<String>::getNativeSsp(const Encoding& encoding) const {
    std::u16string ssp;
    if (flags.authorityPresent) {
        ssp.push_back(FORWARD_SLASH);
        ssp.push_back(FORWARD_SLASH);
        ssp += getNativeAuthority(encoding);
    }
    const bool strict = isStrict(encoding);
    try {
        const std::u16string_view path = parts.view(ComponentKind::Path, encoding);
        ssp += strict ? std::u16string_view(repairPercents(path, true)) : path;
        if (flags.queryPresent) {
            const std::u16string_view query = parts.view(ComponentKind::Query, encoding);
            ssp.push_back(QUESTION_MARK);
            if (strict) {
                ssp += repairPercents(query, true);
            } else {
                ssp += query;
            }
        }
    } catch (const std::runtime_error& e) {
        throw AnonymousInternalException<std::runtime_error>(e.what());
    }
    return ssp;
}

template <class String>
std::u16string TemplateIRI<String>::getSchemeSpecificPart(const Encoding& encoding) const {
    return getNativeSsp(encoding);
}

// ---------------------------------------------------------------------------------------------
// Serialisation

template <class String>
std::u16string_view TemplateIRI<String>::toNativeStringFromParts(const Encoding& encoding) const {
    static_cast<void>(formOf(encoding));  // refuses an unknown Encoding
    const std::uint32_t value = encoding.value();
    if (value == 1 && (textIsCurrent.load() || parts.isText())) {
        return parts.text();
    }
    if (empty.load()) {
        return {};
    }
    const std::size_t entryIndex = kCacheEntry[value];
    std::u16string_view cached;
    if (parts.serialisation(entryIndex, cached)) {
        return cached;
    }

    // Two threads may build the same entry: the first to publish wins.
    const bool strict = isStrict(encoding);
    const std::u16string authority = flags.authorityPresent
                                         ? getNativeAuthority(Encoding(strict ? value - 1 : value))
                                         : std::u16string();
    std::u16string_view path, query, fragment;
    try {
        path = parts.view(ComponentKind::Path, encoding);
        query = flags.queryPresent ? parts.view(ComponentKind::Query, encoding) : query;
        fragment = flags.fragmentPresent ? parts.view(ComponentKind::Fragment, encoding) : fragment;
    } catch (const std::runtime_error& e) {
        throw AnonymousInternalException<std::runtime_error>(e.what());
    }
    const std::u16string_view scheme = parts.scheme();

    const std::size_t length = (flags.schemePresent ? scheme.size() + 1 : 0) +
                               (flags.authorityPresent ? authority.size() + 2 : 0) + path.size() +
                               (flags.queryPresent ? query.size() + 1 : 0) +
                               (flags.fragmentPresent ? fragment.size() + 1 : 0);
    std::u16string plain;
    plain.reserve(length);
    std::u16string repaired;
    if (strict) {
        repaired.reserve(length + length / 4);
    }
    const auto appendBoth = [&](std::u16string_view piece, bool repair, bool escapeBrackets) {
        plain += piece;
        if (strict) {
            if (repair) {
                repaired += repairPercents(piece, escapeBrackets);
            } else {
                repaired += piece;
            }
        }
    };
    const auto appendChar = [&](char16_t c) {
        plain.push_back(c);
        if (strict) {
            repaired.push_back(c);
        }
    };
    if (flags.schemePresent) {
        appendBoth(scheme, false, false);
        appendChar(COLON);
    }
    if (flags.authorityPresent) {
        appendChar(FORWARD_SLASH);
        appendChar(FORWARD_SLASH);
        appendBoth(authority, true, false);
    }
    appendBoth(path, true, true);
    if (flags.queryPresent) {
        appendChar(QUESTION_MARK);
        appendBoth(query, true, true);
    }
    if (flags.fragmentPresent) {
        appendChar(HASH_SIGN);
        appendBoth(fragment, true, true);
    }

    const std::size_t baseIndex = value == 0 ? 0 : (value <= 2 ? 1 : 2);
    const std::u16string_view base = parts.publishSerialisation(baseIndex, plain);
    if (!strict) {
        return base;
    }
    return parts.publishSerialisation(entryIndex, repaired);
}

template <class String>
std::u16string TemplateIRI<String>::toStringFromParts(const Encoding& encoding) const {
    return std::u16string(toNativeStringFromParts(encoding));
}

template <class String>
std::u16string TemplateIRI<String>::toString(bool strict) const {
    return toStringFromParts(Encoding(strict ? 2 : 1));
}

template <class String>
std::u16string TemplateIRI<String>::toAsciiString(bool strict) const {
    return toStringFromParts(Encoding(strict ? 4 : 3));
}

template std::u16string TemplateIRI<std::wstring>::getScheme() const;
template std::u16string TemplateIRI<std::wstring>::getPort() const;
template std::uint16_t TemplateIRI<std::wstring>::getPortNumber() const;
template std::u16string TemplateIRI<std::wstring>::getUserInfo(const Encoding&) const;
template std::u16string TemplateIRI<std::wstring>::getHost(const Encoding&) const;
template std::u16string TemplateIRI<std::wstring>::getPath(const Encoding&) const;
template std::u16string TemplateIRI<std::wstring>::getQuery(const Encoding&) const;
template std::u16string TemplateIRI<std::wstring>::getFragment(const Encoding&) const;
template std::u16string TemplateIRI<std::wstring>::getAuthority(const Encoding&) const;
template std::u16string TemplateIRI<std::wstring>::getNativeAuthority(const Encoding&) const;
template std::u16string TemplateIRI<std::wstring>::getNativeSsp(const Encoding&) const;
template std::u16string TemplateIRI<std::wstring>::getSchemeSpecificPart(const Encoding&) const;
template std::u16string_view TemplateIRI<std::wstring>::toNativeStringFromParts(
    const Encoding&) const;
template std::u16string TemplateIRI<std::wstring>::toStringFromParts(const Encoding&) const;
template std::u16string TemplateIRI<std::wstring>::toString(bool) const;
template std::u16string TemplateIRI<std::wstring>::toAsciiString(bool) const;
template std::u16string TemplateIRI<std::wstring>::readComponent(ComponentKind, const Encoding&,
                                                                 bool, bool) const;

}  // namespace foundation::network::iri::detail
