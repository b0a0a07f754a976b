#include "iri/TemplateIRI.h"

#include <stdexcept>

#include "foundation/core/except/Exception.h"
#include "iri/PercentRepair.h"
#include "iri/Utf16.h"
#include "iri/grammar/IriGrammar.h"
#include "iri/grammar/Port.h"
#include "iri/path/PathSegments.h"

namespace foundation::network::iri::detail {

namespace {

using core::except::detail::AnonymousInternalException;

[[noreturn]] void throwParsingFailed() {
    throw AnonymousInternalException<std::logic_error>("IRI parsing failed");
}

bool isStrict(const Encoding& encoding) {
    return encoding.value() == 2 || encoding.value() == 4;
}

// Cache entry of each Encoding.
constexpr std::size_t kCacheEntry[5] = {0, 1, 3, 2, 4};

// Lifecycle members run with exclusive access to their operands (a value being copied, moved,
// swapped or cleared is not read meanwhile), so they need no ordering, nor locked instructions.
template <class T>
void swapRelaxed(std::atomic<T>& a, std::atomic<T>& b) noexcept {
    const T value = a.load(std::memory_order_relaxed);
    a.store(b.load(std::memory_order_relaxed), std::memory_order_relaxed);
    b.store(value, std::memory_order_relaxed);
}

}  // namespace

template <class String>
TemplateIRI<String>::TemplateIRI() noexcept = default;

template <class String>
TemplateIRI<String>::TemplateIRI(const std::u16string& utf16) {
    parse(utf16);
}

template <class String>
TemplateIRI<String>::TemplateIRI(const TemplateIRI& other)
    : parts(other.parts),
      empty(other.empty.load()),
      textIsCurrent(other.textIsCurrent.load()),
      portNumber(other.portNumber) {
    copyFlags(other);
    // Read only once published: another thread may be computing the source's hash now.
    if (other.hashKnown.load()) {
        hash.store(other.hash.load(), std::memory_order_relaxed);
        hashKnown.store(true, std::memory_order_relaxed);
    }
}

template <class String>
TemplateIRI<String>::TemplateIRI(TemplateIRI&& other) noexcept
    : parts(std::move(other.parts)),
      empty(other.empty.load()),
      textIsCurrent(other.textIsCurrent.load()),
      portNumber(other.portNumber) {
    copyFlags(other);
    if (other.hashKnown.load(std::memory_order_relaxed)) {
        hash.store(other.hash.load(std::memory_order_relaxed), std::memory_order_relaxed);
        hashKnown.store(true, std::memory_order_relaxed);
    }
    // The source stays a consistent (empty) value rather than one with flags but no text.
    other.clearFields();
}

template <class String>
TemplateIRI<String>& TemplateIRI<String>::operator=(const TemplateIRI& other) {
    if (this == &other) {
        return *this;
    }
    if (other.empty.load()) {
        if (!empty.load()) {
            clearFields();
        }
        return *this;
    }
    // The once-flag of a value that was hashed never fires again: keep a hash for the new value.
    const bool keepHash = hashKnown.load() && !other.hashKnown.load();
    TemplateIRI copy(other);
    swap(copy);
    if (keepHash) {
        generateHash();
    }
    return *this;
}

template <class String>
TemplateIRI<String>& TemplateIRI<String>::operator=(TemplateIRI&& other) noexcept {
    if (this == &other) {
        return *this;
    }
    if (other.empty.load()) {
        if (!empty.load()) {
            clearFields();
        }
        return *this;
    }
    const bool keepHash = hashKnown.load() && !other.hashKnown.load();
    TemplateIRI moved(std::move(other));
    swap(moved);
    if (keepHash) {
        generateHash();
    }
    return *this;
}

template <class String>
TemplateIRI<String>::~TemplateIRI() = default;

// The one list of the plain fields (the flags); the atomics, the parts and the hash are
// handled by each caller.
template <class String>
void TemplateIRI<String>::copyFlags(const TemplateIRI& other) noexcept {
    schemePresent = other.schemePresent;
    queryPresent = other.queryPresent;
    fragmentPresent = other.fragmentPresent;
    authorityPresent = other.authorityPresent;
    absolutePath = other.absolutePath;
    absolute = other.absolute;
    opaque = other.opaque;
    portPresent = other.portPresent;
    hostPresent = other.hostPresent;
    userInfoPresent = other.userInfoPresent;
    pathHasDotSegments = other.pathHasDotSegments;
    pathEmpty = other.pathEmpty;
    queryOption = other.queryOption;
}

template <class String>
void TemplateIRI<String>::swap(TemplateIRI& other) noexcept {
    if (this == &other) {
        return;
    }
    swapRelaxed(empty, other.empty);
    swapRelaxed(textIsCurrent, other.textIsCurrent);
    swapRelaxed(hashKnown, other.hashKnown);
    swapRelaxed(hash, other.hash);
    parts.swap(other.parts);
    std::swap(portNumber, other.portNumber);
    TemplateIRI flags;
    flags.copyFlags(*this);
    copyFlags(other);
    other.copyFlags(flags);
}

template <class String>
void TemplateIRI<String>::clear() noexcept {
    clearFields();
}

template <class String>
void TemplateIRI<String>::clearFields() noexcept {
    empty.store(true, std::memory_order_relaxed);
    textIsCurrent.store(false, std::memory_order_relaxed);
    parts.reset();
    portNumber = 0;
    static const TemplateIRI blank;
    copyFlags(blank);
    hashKnown.store(false, std::memory_order_relaxed);
    hash.store(0, std::memory_order_relaxed);
}

// ---------------------------------------------------------------------------------------------
// Parsing

template <class String>
void TemplateIRI<String>::parse(const std::u16string& utf16) {
    if (utf16.empty()) {
        parts.setPath(String(), Encoding(1));
        pathEmpty = true;
        textIsCurrent.store(true);
        return;
    }
    textIsCurrent.store(true, std::memory_order_relaxed);  // the value is not shared yet
    empty.store(false, std::memory_order_relaxed);
    // The grammar reads the UTF-16 text itself, a surrogate pair as one code point; an unpaired
    // surrogate matches no rule, and its own error is the one reported.
    Parts<std::u16string> found;
    if (!irigrammar::parseString<std::u16string>(utf16.cbegin(), utf16.cend(), found)) {
        (void)widen(utf16);
        throwParsingFailed();
    }
    setPartFlags(found);
    if (portPresent) {
        unsigned short number = 0;
        const std::u16string_view digits(
            utf16.data() + (found.port.first - utf16.cbegin()),
            static_cast<std::size_t>(found.port.last - found.port.first));
        if (!portStringToNumeric(digits, number)) {
            throwParsingFailed();
        }
        portNumber = number;
    }
    if (!found.scheme.present) {
        found.scheme.setEmptyAt(utf16.cbegin());
    }
    found.update();
    parts.adoptText(utf16);
    setStringParts(found, utf16.cbegin());
}

template <class String>
template <class Found>
void TemplateIRI<String>::setPartFlags(const Found& found) {
    schemePresent = found.scheme.present;
    queryPresent = found.query.present;
    fragmentPresent = found.fragment.present;
    hostPresent = found.host.present;
    userInfoPresent = found.userInfo.present;
    authorityPresent = hostPresent;
    portPresent = found.port.present;
    pathEmpty = !found.path.present || found.path.empty();
    absolutePath = found.path.present && !found.path.empty() && *found.path.first == FORWARD_SLASH;
    if (schemePresent) {
        absolute = true;
        if (!authorityPresent) {
            opaque = !absolutePath;
        }
    }
}

// The ranges found, as offsets into the text.
template <class String>
template <class Found>
void TemplateIRI<String>::setStringParts(const Found& found, typename Found::Iterator begin) {
    const auto offset = [&](typename Found::Iterator at) {
        return static_cast<std::uint32_t>(at - begin);
    };
    const auto place = [&](ComponentKind kind, const auto& range) {
        parts.setRange(kind, offset(range.first), offset(range.last));
    };
    place(ComponentKind::Path, found.path);
    parts.setSchemePresent(schemePresent);
    if (userInfoPresent) {
        place(ComponentKind::UserInfo, found.userInfo);
    }
    if (hostPresent) {
        place(ComponentKind::Host, found.host);
    }
    if (queryPresent) {
        place(ComponentKind::Query, found.query);
    }
    if (fragmentPresent) {
        place(ComponentKind::Fragment, found.fragment);
    }
    if (schemePresent) {
        parts.setSchemeRange(offset(found.scheme.first), offset(found.scheme.last));
    }
    if (portPresent) {
        parts.setPortRange(offset(found.port.first), offset(found.port.last));
    }
    pathHasDotSegments = containsDotSegments(parts.view(ComponentKind::Path, Form::Iri));
}

// ---------------------------------------------------------------------------------------------
// Accessors

template <class String>
std::u16string TemplateIRI<String>::getScheme() const {
    if (!schemePresent) {
        throw AnonymousInternalException<std::runtime_error>("No scheme");
    }
    return std::u16string(parts.scheme());
}

template <class String>
std::u16string TemplateIRI<String>::getPort() const {
    if (!portPresent) {
        throw AnonymousInternalException<std::runtime_error>("No port");
    }
    return std::u16string(parts.port());
}

template <class String>
std::uint16_t TemplateIRI<String>::getPortNumber() const {
    if (!portPresent) {
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
    if (portPresent) {
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
    if (authorityPresent) {
        ssp.push_back(FORWARD_SLASH);
        ssp.push_back(FORWARD_SLASH);
        ssp += getNativeAuthority(encoding);
    }
    const bool strict = isStrict(encoding);
    try {
        const std::u16string_view path = parts.view(ComponentKind::Path, encoding);
        ssp += strict ? std::u16string_view(repairPercents(path, true)) : path;
        if (queryPresent) {
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
    const std::u16string authority = authorityPresent
                                         ? getNativeAuthority(Encoding(strict ? value - 1 : value))
                                         : std::u16string();
    std::u16string_view path, query, fragment;
    try {
        path = parts.view(ComponentKind::Path, encoding);
        query = queryPresent ? parts.view(ComponentKind::Query, encoding) : query;
        fragment = fragmentPresent ? parts.view(ComponentKind::Fragment, encoding) : fragment;
    } catch (const std::runtime_error& e) {
        throw AnonymousInternalException<std::runtime_error>(e.what());
    }
    const std::u16string_view scheme = parts.scheme();

    const std::size_t length = (schemePresent ? scheme.size() + 1 : 0) +
                               (authorityPresent ? authority.size() + 2 : 0) + path.size() +
                               (queryPresent ? query.size() + 1 : 0) +
                               (fragmentPresent ? fragment.size() + 1 : 0);
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
    if (schemePresent) {
        appendBoth(scheme, false, false);
        appendChar(COLON);
    }
    if (authorityPresent) {
        appendChar(FORWARD_SLASH);
        appendChar(FORWARD_SLASH);
        appendBoth(authority, true, false);
    }
    appendBoth(path, true, true);
    if (queryPresent) {
        appendChar(QUESTION_MARK);
        appendBoth(query, true, true);
    }
    if (fragmentPresent) {
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

template class TemplateIRI<std::wstring>;

}  // namespace foundation::network::iri::detail
