#include "iri/TemplateIRI.h"

#include <stdexcept>

#include "foundation/core/except/Exception.h"
#include "iri/PercentRepair.h"
#include "iri/grammar/IriGrammar.h"
#include "iri/grammar/PathSegments.h"
#include "iri/grammar/Port.h"
#include "iri/grammar/Unicode.h"

namespace foundation::network::iri::detail {

namespace {

using core::except::detail::AnonymousInternalException;

constexpr Encoding kIriForm(1);

[[noreturn]] void throwParsingFailed() {
    throw AnonymousInternalException<std::logic_error>("IRI parsing failed");
}

bool isStrict(const Encoding& encoding) {
    return encoding.value() == 2 || encoding.value() == 4;
}

// Text without surrogates converts unit for unit; anything else goes through the checked
// conversions, which also give the errors their texts. These short cuts keep the common case
// off the general converters.
std::wstring toCodePoints(const std::u16string& utf16) {
    for (const char16_t unit : utf16) {
        if (unit >= 0xD800 && unit <= 0xDFFF) {
            return utf16ToCodePoints(utf16);
        }
    }
    return std::wstring(utf16.begin(), utf16.end());
}

std::u16string toUtf16(const std::wstring& codePoints) {
    for (const wchar_t c : codePoints) {
        if (c < 0 || (c >= 0xD800 && c <= 0xDFFF) || c > 0xFFFF) {
            return codePointsToUtf16(codePoints);
        }
    }
    std::u16string utf16(codePoints.size(), u'\0');
    for (std::size_t i = 0; i < codePoints.size(); ++i) {
        utf16[i] = static_cast<char16_t>(codePoints[i]);
    }
    return utf16;
}

// Cache entry of each Encoding.
constexpr std::size_t kCacheEntry[5] = {0, 1, 3, 2, 4};

}  // namespace

template <class String>
TemplateIRI<String>::TemplateIRI() noexcept = default;

template <class String>
TemplateIRI<String>::TemplateIRI(const std::u16string& utf16) : text(toCodePoints(utf16)) {
    parse();
}

template <class String>
TemplateIRI<String>::TemplateIRI(const TemplateIRI& other)
    : TemplateIRI(other, std::lock_guard<std::mutex>(other.mutex)) {}

template <class String>
TemplateIRI<String>::TemplateIRI(const TemplateIRI& other, const std::lock_guard<std::mutex>&)
    : empty(other.empty.load()),
      textIsCurrent(other.textIsCurrent.load()),
      text(other.text),
      parts(other.parts),
      portNumber(other.portNumber),
      scheme(other.scheme),
      schemeUtf16(other.schemeUtf16),
      port(other.port),
      portUtf16(other.portUtf16),
      schemePresent(other.schemePresent),
      queryPresent(other.queryPresent),
      fragmentPresent(other.fragmentPresent),
      authorityPresent(other.authorityPresent),
      absolutePath(other.absolutePath),
      absolute(other.absolute),
      opaque(other.opaque),
      portPresent(other.portPresent),
      hostPresent(other.hostPresent),
      userInfoPresent(other.userInfoPresent),
      pathHasDotSegments(other.pathHasDotSegments),
      pathEmpty(other.pathEmpty),
      queryOption(other.queryOption),
      hashKnown(other.hashKnown.load()),
      // Read only once published: another thread may be computing the source's hash now.
      hash(hashKnown.load() ? other.hash : 0),
      cache(other.cache) {}

template <class String>
TemplateIRI<String>::TemplateIRI(TemplateIRI&& other) noexcept
    : TemplateIRI(std::move(other), std::lock_guard<std::mutex>(other.mutex)) {}

template <class String>
TemplateIRI<String>::TemplateIRI(TemplateIRI&& other, const std::lock_guard<std::mutex>&) noexcept
    : empty(other.empty.load()),
      textIsCurrent(other.textIsCurrent.load()),
      text(std::move(other.text)),
      parts(std::move(other.parts)),
      portNumber(other.portNumber),
      scheme(std::move(other.scheme)),
      schemeUtf16(std::move(other.schemeUtf16)),
      port(std::move(other.port)),
      portUtf16(std::move(other.portUtf16)),
      schemePresent(other.schemePresent),
      queryPresent(other.queryPresent),
      fragmentPresent(other.fragmentPresent),
      authorityPresent(other.authorityPresent),
      absolutePath(other.absolutePath),
      absolute(other.absolute),
      opaque(other.opaque),
      portPresent(other.portPresent),
      hostPresent(other.hostPresent),
      userInfoPresent(other.userInfoPresent),
      pathHasDotSegments(other.pathHasDotSegments),
      pathEmpty(other.pathEmpty),
      queryOption(other.queryOption),
      hashKnown(other.hashKnown.load()),
      hash(hashKnown.load() ? other.hash : 0),
      cache(std::move(other.cache)) {
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
            std::lock_guard<std::mutex> lock(mutex);
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
            std::lock_guard<std::mutex> lock(mutex);
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

template <class String>
void TemplateIRI<String>::swap(TemplateIRI& other) noexcept {
    if (this == &other) {
        return;
    }
    other.empty.store(empty.exchange(other.empty.load()));
    other.textIsCurrent.store(textIsCurrent.exchange(other.textIsCurrent.load()));
    other.hashKnown.store(hashKnown.exchange(other.hashKnown.load()));
    text.swap(other.text);
    parts.swap(other.parts);
    std::swap(portNumber, other.portNumber);
    scheme.swap(other.scheme);
    schemeUtf16.swap(other.schemeUtf16);
    port.swap(other.port);
    portUtf16.swap(other.portUtf16);
    std::swap(schemePresent, other.schemePresent);
    std::swap(queryPresent, other.queryPresent);
    std::swap(fragmentPresent, other.fragmentPresent);
    std::swap(authorityPresent, other.authorityPresent);
    std::swap(absolutePath, other.absolutePath);
    std::swap(absolute, other.absolute);
    std::swap(opaque, other.opaque);
    std::swap(portPresent, other.portPresent);
    std::swap(hostPresent, other.hostPresent);
    std::swap(userInfoPresent, other.userInfoPresent);
    std::swap(pathHasDotSegments, other.pathHasDotSegments);
    std::swap(pathEmpty, other.pathEmpty);
    std::swap(queryOption, other.queryOption);
    std::swap(hash, other.hash);
    std::lock_guard<std::mutex> mine(mutex);
    std::lock_guard<std::mutex> theirs(other.mutex);
    cache.swap(other.cache);
}

template <class String>
void TemplateIRI<String>::clear() noexcept {
    clearFields();
}

template <class String>
void TemplateIRI<String>::clearFields() noexcept {
    empty.store(true);
    textIsCurrent.store(false);
    String().swap(text);
    parts.reset();
    String().swap(scheme);
    std::u16string().swap(schemeUtf16);
    String().swap(port);
    std::u16string().swap(portUtf16);
    schemePresent = queryPresent = fragmentPresent = authorityPresent = false;
    absolutePath = absolute = opaque = portPresent = hostPresent = userInfoPresent = false;
    pathHasDotSegments = false;
    pathEmpty = true;
    portNumber = 0;
    for (auto& entry : cache) {
        String().swap(entry);
    }
    hashKnown.store(false);
    hash = 0;
}

// ---------------------------------------------------------------------------------------------
// Parsing

template <class String>
void TemplateIRI<String>::parse() {
    if (text.empty()) {
        parts.setPath(String(), kIriForm);
        pathEmpty = true;
        textIsCurrent.store(true);
        return;
    }
    textIsCurrent.store(true);
    empty.store(false);
    Parts<String> found;
    if (!irigrammar::parseString<String>(text.cbegin(), text.cend(), found)) {
        throwParsingFailed();
    }
    setPartFlags(found);
    if (!found.scheme.present) {
        found.scheme.setEmptyAt(text.cbegin());
    }
    found.update();
    setStringParts(found);
    if (schemePresent) {
        const Range range = schemeRange(found);
        scheme.assign(range.first, range.second);
        schemeUtf16 = toUtf16(scheme);
    }
    if (portPresent) {
        const Range range = portRange(found);
        String portText(range.first, range.second);
        unsigned short number = 0;
        if (!portStringToNumeric(portText, number)) {
            throwParsingFailed();
        }
        portNumber = number;
        portUtf16 = toUtf16(portText);
        port = std::move(portText);
    }
    pathHasDotSegments = containsDotSegments(parts.getPath(kIriForm));
}

template <class String>
void TemplateIRI<String>::setPartFlags(const Parts<String>& found) {
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

template <class String>
void TemplateIRI<String>::setStringParts(const Parts<String>& found) {
    const Range path = pathRange(found);
    parts.setPath(String(path.first, path.second), kIriForm);
    parts.setSchemePresent(schemePresent);
    if (userInfoPresent) {
        const Range range = userInfoRange(found);
        parts.setUserInfo(String(range.first, range.second), kIriForm);
    }
    if (hostPresent) {
        const Range range = hostRange(found);
        parts.setHost(String(range.first, range.second), kIriForm);
    }
    if (queryPresent) {
        const Range range = queryRange(found);
        parts.setQuery(String(range.first, range.second), kIriForm, queryOption);
    }
    if (fragmentPresent) {
        const Range range = fragmentRange(found);
        parts.setFragment(String(range.first, range.second), kIriForm);
    }
}

// ---------------------------------------------------------------------------------------------
// Accessors

template <class String>
std::u16string TemplateIRI<String>::getScheme() const {
    if (!schemePresent) {
        throw AnonymousInternalException<std::runtime_error>("No scheme");
    }
    return schemeUtf16;
}

template <class String>
std::u16string TemplateIRI<String>::getPort() const {
    if (!portPresent) {
        throw AnonymousInternalException<std::runtime_error>("No port");
    }
    return portUtf16;
}

template <class String>
std::uint16_t TemplateIRI<String>::getPortNumber() const {
    if (!portPresent) {
        throw AnonymousInternalException<std::runtime_error>("No port");
    }
    return portNumber;
}

template <class String>
template <class Getter>
std::u16string TemplateIRI<String>::readComponent(Getter getter, const Encoding& encoding,
                                                  bool repair, bool escapeBrackets) const {
    try {
        const String& value = (parts.*getter)(encoding);
        if (repair && isStrict(encoding)) {
            return toUtf16(repairPercents(value, escapeBrackets));
        }
        return toUtf16(value);
    } catch (const std::runtime_error& e) {
        throw AnonymousInternalException<std::runtime_error>(e.what());
    }
}

// User info is deliberately never repaired on its own, only inside the whole-string forms.
template <class String>
std::u16string TemplateIRI<String>::getUserInfo(const Encoding& encoding) const {
    return readComponent(&StringParts::getUserInfo, encoding, false, false);
}

template <class String>
std::u16string TemplateIRI<String>::getHost(const Encoding& encoding) const {
    return readComponent(&StringParts::getHost, encoding, true, false);
}

template <class String>
std::u16string TemplateIRI<String>::getPath(const Encoding& encoding) const {
    return readComponent(&StringParts::getPath, encoding, true, true);
}

template <class String>
std::u16string TemplateIRI<String>::getQuery(const Encoding& encoding) const {
    return readComponent(&StringParts::getQuery, encoding, true, true);
}

template <class String>
std::u16string TemplateIRI<String>::getFragment(const Encoding& encoding) const {
    return readComponent(&StringParts::getFragment, encoding, true, true);
}

template <class String>
String TemplateIRI<String>::getNativeAuthority(const Encoding& encoding) const {
    String authority;
    try {
        authority = parts.getAuthority(encoding);
    } catch (const std::runtime_error& e) {
        throw AnonymousInternalException<std::runtime_error>(e.what());
    }
    if (isStrict(encoding)) {
        authority = repairPercents(authority, false);
    }
    if (portPresent) {
        authority.push_back(COLON);
        authority += port;
    }
    return authority;
}

template <class String>
std::u16string TemplateIRI<String>::getAuthority(const Encoding& encoding) const {
    return toUtf16(getNativeAuthority(encoding));
}

template <class String>
String TemplateIRI<String>::getNativeSsp(const Encoding& encoding) const {
    String ssp;
    if (authorityPresent) {
        ssp.push_back(FORWARD_SLASH);
        ssp.push_back(FORWARD_SLASH);
        ssp += getNativeAuthority(encoding);
    }
    const bool strict = isStrict(encoding);
    try {
        const String& path = parts.getPath(encoding);
        ssp += strict ? repairPercents(path, true) : path;
        if (queryPresent) {
            const String& query = parts.getQuery(encoding);
            ssp.push_back(QUESTION_MARK);
            ssp += strict ? repairPercents(query, true) : query;
        }
    } catch (const std::runtime_error& e) {
        throw AnonymousInternalException<std::runtime_error>(e.what());
    }
    return ssp;
}

template <class String>
std::u16string TemplateIRI<String>::getSchemeSpecificPart(const Encoding& encoding) const {
    return toUtf16(getNativeSsp(encoding));
}

// ---------------------------------------------------------------------------------------------
// Serialisation

template <class String>
const String& TemplateIRI<String>::toNativeStringFromParts(const Encoding& encoding) const {
    static_cast<void>(formOf(encoding));  // refuses an unknown Encoding
    const std::uint32_t value = encoding.value();
    if (value == 1 && textIsCurrent.load()) {
        return text;
    }
    const std::size_t entryIndex = kCacheEntry[value];
    String& entry = cache[entryIndex];
    if (empty.load()) {
        return entry;
    }
    {
        std::lock_guard<std::mutex> lock(mutex);
        if (!entry.empty()) {
            return entry;
        }
    }

    // Built outside the lock: two threads may build the same entry, the first store wins.
    const bool strict = isStrict(encoding);
    const String authority =
        authorityPresent ? getNativeAuthority(Encoding(strict ? value - 1 : value)) : String();
    const String* path = nullptr;
    const String* query = nullptr;
    const String* fragment = nullptr;
    try {
        path = &parts.getPath(encoding);
        query = queryPresent ? &parts.getQuery(encoding) : nullptr;
        fragment = fragmentPresent ? &parts.getFragment(encoding) : nullptr;
    } catch (const std::runtime_error& e) {
        throw AnonymousInternalException<std::runtime_error>(e.what());
    }

    const std::size_t length =
        (schemePresent ? scheme.size() + 1 : 0) + (authorityPresent ? authority.size() + 2 : 0) +
        path->size() + (query ? query->size() + 1 : 0) + (fragment ? fragment->size() + 1 : 0);
    String plain;
    plain.reserve(length);
    String repaired;
    if (strict) {
        repaired.reserve(length + length / 4);
    }
    const auto appendBoth = [&](const String& piece, bool repair, bool escapeBrackets) {
        plain += piece;
        if (strict) {
            repaired += repair ? repairPercents(piece, escapeBrackets) : piece;
        }
    };
    const auto appendChar = [&](Char c) {
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
    appendBoth(*path, true, true);
    if (query) {
        appendChar(QUESTION_MARK);
        appendBoth(*query, true, true);
    }
    if (fragment) {
        appendChar(HASH_SIGN);
        appendBoth(*fragment, true, true);
    }

    std::lock_guard<std::mutex> lock(mutex);
    // Only non-empty results are stored: an empty entry may be read by other threads.
    const std::size_t baseIndex = value == 0 ? 0 : (value <= 2 ? 1 : 2);
    if (cache[baseIndex].empty() && !plain.empty()) {
        cache[baseIndex] = std::move(plain);
    }
    if (strict && entry.empty() && !repaired.empty()) {
        entry = std::move(repaired);
    }
    return entry;
}

template <class String>
std::u16string TemplateIRI<String>::toStringFromParts(const Encoding& encoding) const {
    return toUtf16(toNativeStringFromParts(encoding));
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
