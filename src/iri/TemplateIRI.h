/// @file
/// @brief The IRI value object: the text it was parsed from, its components, presence and
/// shape flags, and lazily filled caches of its serialisations and of its hash.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "foundation/network/Encoding.h"
#include "foundation/network/IRIArgs.h"
#include "iri/StringParts.h"
#include "iri/grammar/Parts.h"

namespace foundation::network::iri::detail {

struct IRIAccess;

/// An IRI over a string of code points (instantiated for std::wstring). Const members may run
/// from several threads at once: the serialisation caches are guarded by `mutex`, each
/// component's derived forms by the component's own mutex, and the flags read outside locks
/// are atomic. Writing while another thread reads is not supported.
template <class String>
class TemplateIRI {
public:
    using Char = typename String::value_type;
    using Iterator = typename String::const_iterator;
    using Range = std::pair<Iterator, Iterator>;

    static constexpr Char COLON = ':';
    static constexpr Char FORWARD_SLASH = '/';
    static constexpr Char QUESTION_MARK = '?';
    static constexpr Char COMMERCIAL_AT = '@';
    static constexpr Char HASH_SIGN = '#';
    static constexpr Char FULL_STOP = '.';

    /// An empty value.
    TemplateIRI() noexcept;
    /// Converts UTF-16 `utf16` to code points and parses it. Throws std::out_of_range for an
    /// unpaired surrogate, std::logic_error "IRI parsing failed" for text that is not an IRI
    /// reference or has an unusable port.
    explicit TemplateIRI(const std::u16string& utf16);
    /// Copies under the source's mutex; the copy gets its own mutex and once-flag.
    TemplateIRI(const TemplateIRI& other);
    /// Moves under the source's mutex.
    TemplateIRI(TemplateIRI&& other) noexcept;
    TemplateIRI& operator=(const TemplateIRI& other);
    TemplateIRI& operator=(TemplateIRI&& other) noexcept;
    virtual ~TemplateIRI();

    /// Exchanges two values; this object's mutex is locked first, then the other's.
    void swap(TemplateIRI& other) noexcept;
    /// Makes the value empty.
    void clear() noexcept;

    bool isEmpty() const noexcept { return empty.load(); }
    bool hasScheme() const noexcept { return schemePresent; }
    bool hasAuthority() const noexcept { return authorityPresent; }
    bool hasUserInfo() const noexcept { return userInfoPresent; }
    bool hasHost() const noexcept { return hostPresent; }
    bool hasPort() const noexcept { return portPresent; }
    bool hasQuery() const noexcept { return queryPresent; }
    bool hasFragment() const noexcept { return fragmentPresent; }
    bool hasAbsolutePath() const noexcept { return absolutePath; }
    bool isAbsolute() const noexcept { return absolute; }
    bool isOpaque() const noexcept { return opaque; }

    /// Throw "No scheme" / "No port" (runtime errors) when absent.
    std::u16string getScheme() const;
    std::u16string getPort() const;
    std::uint16_t getPortNumber() const;

    /// One component in `encoding` (strict Encodings 2 and 4 repaired, user info never).
    std::u16string getUserInfo(const Encoding& encoding) const;
    std::u16string getHost(const Encoding& encoding) const;
    std::u16string getPath(const Encoding& encoding) const;
    std::u16string getQuery(const Encoding& encoding) const;
    std::u16string getFragment(const Encoding& encoding) const;
    std::u16string getAuthority(const Encoding& encoding) const;
    std::u16string getSchemeSpecificPart(const Encoding& encoding) const;

    std::u16string toString(bool strict) const;
    std::u16string toAsciiString(bool strict) const;
    std::u16string toStringFromParts(const Encoding& encoding) const;

    /// The whole IRI in `encoding`, from the serialisation cache (filled on first use; the
    /// first store into an entry wins, so the reference stays valid while the value is not
    /// written). An unchanged parsed value gives its own text for Encoding 1.
    const String& toNativeStringFromParts(const Encoding& encoding) const;
    /// User info and "@", host (repaired for 2 and 4), and ":" and the port text.
    String getNativeAuthority(const Encoding& encoding) const;
    /// "//" and the authority when present, the path, and "?" and the query when present.
    String getNativeSsp(const Encoding& encoding) const;

    /// The stored components (read-only).
    const StringParts& stringParts() const noexcept { return parts; }

    // Parsing driver.
    void parse();
    void setPartFlags(const Parts<String>& found);
    void setStringParts(const Parts<String>& found);

    static Range schemeRange(const Parts<String>& found) {
        return {found.scheme.first, found.scheme.last};
    }
    static Range userInfoRange(const Parts<String>& found) {
        return {found.userInfo.first, found.userInfo.last};
    }
    static Range hostRange(const Parts<String>& found) {
        return {found.host.first, found.host.last};
    }
    static Range portRange(const Parts<String>& found) {
        return {found.port.first, found.port.last};
    }
    static Range pathRange(const Parts<String>& found) {
        return {found.path.first, found.path.last};
    }
    static Range queryRange(const Parts<String>& found) {
        return {found.query.first, found.query.last};
    }
    static Range fragmentRange(const Parts<String>& found) {
        return {found.fragment.first, found.fragment.last};
    }

    // Building from arguments (BuildFromArgs.cpp).
    explicit TemplateIRI(const ArgsBase<String>& args);
    void toArgs(ArgsBase<String>& args) const;

    // Equality, ordering and hashing (Comparison.cpp).
    bool operator==(const TemplateIRI& other) const;
    bool operator!=(const TemplateIRI& other) const;
    bool operator<(const TemplateIRI& other) const;
    std::uint64_t hashValue() const noexcept;
    void generateHash() const noexcept;

    // Resolution (Resolution.cpp) and relativisation (Relativisation.cpp).
    TemplateIRI doResolve(const TemplateIRI& base) const;
    String resolvePathComponents(std::vector<String>& segments, bool absolute) const;
    String removeRelativePathSegments(const String& path, bool absolute) const;
    TemplateIRI doRelativise(const TemplateIRI& base) const;
    String getRelativePath(const TemplateIRI& base) const;
    String getMinimalRelativePath() const;

private:
    friend struct IRIAccess;

    void buildFromArgs(const ArgsBase<String>& args);
    void buildScheme(const ArgsBase<String>& args);
    void buildUserInfo(const ArgsBase<String>& args);
    void buildHost(const ArgsBase<String>& args);
    void buildPort(const ArgsBase<String>& args);
    void buildPath(const ArgsBase<String>& args);
    void buildQuery(const ArgsBase<String>& args);
    void buildFragment(const ArgsBase<String>& args);
    void setArgsAuthority(ArgsBase<String>& args) const;
    void setArgsQuery(ArgsBase<String>& args) const;
    void setArgsFragment(ArgsBase<String>& args) const;
    std::uint64_t computeHash() const;
    void finishFlags();
    // Resolution and relativisation assemble their results from the operands' components, each
    // copied in its IRI form with its presence flag (ComponentTransfer.cpp).
    void takeSchemeFrom(const TemplateIRI& from);
    void takeAuthorityFrom(const TemplateIRI& from);
    void takeQueryFrom(const TemplateIRI& from);
    void takeFragmentFrom(const TemplateIRI& from);

    TemplateIRI(const TemplateIRI& other, const std::lock_guard<std::mutex>& sourceLock);
    TemplateIRI(TemplateIRI&& other, const std::lock_guard<std::mutex>& sourceLock) noexcept;
    template <class Getter>
    std::u16string readComponent(Getter getter, const Encoding& encoding, bool repair,
                                 bool escapeBrackets) const;
    void clearFields() noexcept;

    std::atomic<bool> empty{true};
    std::atomic<bool> textIsCurrent{false};
    String text;
    StringParts parts;
    std::uint16_t portNumber = 0;
    String scheme;
    std::u16string schemeUtf16;
    String port;
    std::u16string portUtf16;
    bool schemePresent = false;
    bool queryPresent = false;
    bool fragmentPresent = false;
    bool authorityPresent = false;
    bool absolutePath = false;
    bool absolute = false;
    bool opaque = false;
    bool portPresent = false;
    bool hostPresent = false;
    bool userInfoPresent = false;
    bool pathHasDotSegments = false;
    bool pathEmpty = true;
    bool queryOption = false;
    mutable std::once_flag hashOnce;
    mutable std::atomic<bool> hashKnown{false};
    mutable std::uint64_t hash = 0;
    mutable std::mutex mutex;
    // Entry 0: Encoding 0; 1: Encoding 1; 2: Encoding 3; 3: Encoding 2; 4: Encoding 4.
    mutable std::array<String, 5> cache;
};

extern template class TemplateIRI<std::wstring>;

}  // namespace foundation::network::iri::detail
