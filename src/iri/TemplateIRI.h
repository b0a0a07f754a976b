/// @file
/// @brief The IRI value object: the text it was parsed from, its components, presence and
/// shape flags, and lazily filled caches of its serialisations and of its hash.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "foundation/network/Encoding.h"
#include "foundation/network/IRIArgs.h"
#include "iri/StringParts.h"
#include "iri/Utf16.h"
#include "iri/grammar/Parts.h"
#include "iri/path/PathSegments.h"
#include "iri/path/RelativePath.h"

namespace foundation::network::iri::detail {

struct IRIAccess;

/// An IRI whose text is held as UTF-16 (`parts`); `String`, the code-point string of the
/// building interface, is std::wstring. Const members may run from several
/// threads at once: derived forms and serialisations are published once through atomic
/// pointers and the hash under a once-flag. Writing while another thread reads is not
/// supported.
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
    /// Parses UTF-16 `utf16`. Throws std::out_of_range for an
    /// unpaired surrogate, std::logic_error "IRI parsing failed" for text that is not an IRI
    /// reference or has an unusable port.
    explicit TemplateIRI(const std::u16string& utf16);
    /// Copies the text, flags and every published form; the copy gets its own once-flag.
    TemplateIRI(const TemplateIRI& other);
    TemplateIRI(TemplateIRI&& other) noexcept;
    TemplateIRI& operator=(const TemplateIRI& other);
    TemplateIRI& operator=(TemplateIRI&& other) noexcept;
    ~TemplateIRI();

    /// Exchanges two values.
    void swap(TemplateIRI& other) noexcept;
    /// Makes the value empty.
    void clear() noexcept;

    bool isEmpty() const noexcept { return empty.load(); }
    bool hasScheme() const noexcept { return flags.schemePresent; }
    bool hasAuthority() const noexcept { return flags.authorityPresent; }
    bool hasUserInfo() const noexcept { return flags.userInfoPresent; }
    bool hasHost() const noexcept { return flags.hostPresent; }
    bool hasPort() const noexcept { return flags.portPresent; }
    bool hasQuery() const noexcept { return flags.queryPresent; }
    bool hasFragment() const noexcept { return flags.fragmentPresent; }
    bool hasAbsolutePath() const noexcept { return flags.absolutePath; }
    bool isAbsolute() const noexcept { return flags.absolute; }
    bool isOpaque() const noexcept { return flags.opaque; }

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
    std::u16string_view toNativeStringFromParts(const Encoding& encoding) const;
    /// User info and "@", host (repaired for 2 and 4), and ":" and the port text.
    std::u16string getNativeAuthority(const Encoding& encoding) const;
    /// "//" and the authority when present, the path, and "?" and the query when present.
    std::u16string getNativeSsp(const Encoding& encoding) const;

    /// The scheme and the port text as written ("" when absent).
    std::u16string_view schemeText() const noexcept { return parts.scheme(); }
    std::u16string_view portText() const noexcept { return parts.port(); }

    /// The stored components (read-only).
    const StringParts& stringParts() const noexcept { return parts; }

    // Parsing (Parsing.cpp).
    void parse(const std::u16string& utf16);
    template <class Found>
    void setPartFlags(const Found& found, std::u16string_view text);
    template <class Found>
    void setStringParts(const Found& found);

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
    // Each writes its result into `t`, a value default-constructed for it.
    void resolveInto(const TemplateIRI& base, TemplateIRI& t) const;
    TemplateIRI doResolve(const TemplateIRI& base) const {
        TemplateIRI t;
        resolveInto(base, t);
        return t;
    }
    std::u16string resolvePathComponents(SegmentList& segments, bool absolute) const;
    void relativiseInto(const TemplateIRI& base, TemplateIRI& t) const;
    /// Makes this value a copy of `other` as the copy constructor makes it (assignment treats
    /// an empty source differently).
    void becomeCopyOf(const TemplateIRI& other) {
        TemplateIRI copy(other);
        swap(copy);
    }
    RelativePathPieces getRelativePath(const TemplateIRI& base) const;
    RelativePathPieces getMinimalRelativePath() const;

    /// Whether the path holds a dot segment (as containsDotSegments sees them) for resolution and
    /// relativisation; a resolution's result never does.
    bool pathHasDotSegments() const {
        const std::uint8_t known = pathFacts.load(std::memory_order_relaxed);
        if ((known & kDotsSet) != 0) {
            return (known & kDotsSetFound) != 0;
        }
        return pathScanFindsDotSegments();
    }
    /// What containsDotSegments answers for the stored path itself, looked for once.
    bool pathScanFindsDotSegments() const {
        return pathFact(kDotsScanned, kDotsFound,
                        [](std::u16string_view path) { return containsDotSegments(path); });
    }
    /// Whether the stored path holds an empty segment (a "//"), looked for once.
    bool pathHasEmptySegment() const {
        return pathFact(kEmptyScanned, kEmptyFound, [](std::u16string_view path) {
            return findUnitPair(path, u'/') != std::u16string_view::npos;
        });
    }
    /// Leaves every answer about the path to its first use (a new path).
    void forgetPathFacts() noexcept { pathFacts.store(0, std::memory_order_relaxed); }
    /// Sets the answer pathHasDotSegments() gives, whatever a scan would find.
    void setPathHasDotSegments(bool value) noexcept {
        pathFacts.store(kDotsSet | (value ? kDotsSetFound : 0), std::memory_order_relaxed);
    }

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
    // Resolution and relativisation assemble their results from the operands' components, each
    // taken in its IRI form with its presence flag (ComponentTransfer.cpp), then written at once
    // by finishFlags.
    using Assembly = StringParts::Assembly;
    void takeSchemeFrom(const TemplateIRI& from, Assembly& into);
    void takeAuthorityFrom(const TemplateIRI& from, Assembly& into);
    void takeQueryFrom(const TemplateIRI& from, Assembly& into);
    void takeFragmentFrom(const TemplateIRI& from, Assembly& into);
    void finishFlags(const Assembly& assembly);

    std::u16string readComponent(ComponentKind kind, const Encoding& encoding, bool repair,
                                 bool escapeBrackets) const;

    void clearFields() noexcept;
    void copyFlags(const TemplateIRI& other) noexcept;

    // Fields: the lifecycle members (TemplateIRI.cpp) copy, move, swap and clear each of them.
    // The text and every component, scheme and port included, with the derived forms and the
    // serialisations.
    StringParts parts;
    std::atomic<bool> empty{true};
    std::atomic<bool> textIsCurrent{false};
    std::uint16_t portNumber = 0;
    // The shape of the value: copied, swapped and cleared as one.
    struct Flags {
        bool schemePresent : 1 = false;
        bool queryPresent : 1 = false;
        bool fragmentPresent : 1 = false;
        bool authorityPresent : 1 = false;
        bool absolutePath : 1 = false;
        bool absolute : 1 = false;
        bool opaque : 1 = false;
        bool portPresent : 1 = false;
        bool hostPresent : 1 = false;
        bool userInfoPresent : 1 = false;
        bool pathEmpty : 1 = true;
        bool queryOption : 1 = false;
    };
    Flags flags;
    // What is known of the path: the answers of the two scans, each found on first use (any
    // thread may find it; all find the same), and the dot-segment answer where it was set
    // rather than scanned (a resolution's result, a built value).
    static constexpr std::uint8_t kDotsScanned = 1u << 0;
    static constexpr std::uint8_t kDotsFound = 1u << 1;
    static constexpr std::uint8_t kDotsSet = 1u << 2;
    static constexpr std::uint8_t kDotsSetFound = 1u << 3;
    static constexpr std::uint8_t kEmptyScanned = 1u << 4;
    static constexpr std::uint8_t kEmptyFound = 1u << 5;
    // The facts of an empty path.
    static constexpr std::uint8_t kEmptyPathFacts = kDotsScanned | kEmptyScanned;
    template <class Scan>
    bool pathFact(std::uint8_t scanned, std::uint8_t found, Scan scan) const {
        const std::uint8_t known = pathFacts.load(std::memory_order_relaxed);
        if ((known & scanned) != 0) {
            return (known & found) != 0;
        }
        const bool answer = scan(parts.storedPath(Form::Iri));
        pathFacts.fetch_or(static_cast<std::uint8_t>(scanned | (answer ? found : 0)),
                           std::memory_order_relaxed);
        return answer;
    }
    mutable std::atomic<std::uint8_t> pathFacts{kEmptyPathFacts};
    mutable std::atomic<bool> hashKnown{false};
    mutable std::once_flag hashOnce;
    mutable std::atomic<std::uint64_t> hash{0};
};

extern template class TemplateIRI<std::wstring>;

}  // namespace foundation::network::iri::detail
