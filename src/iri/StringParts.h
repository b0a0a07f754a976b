/// @file
/// @brief The stored text of an IRI: one UTF-16 buffer with the range of each component in it
/// (scheme, user info, host, port, path, query, fragment), the form each escapable component
/// was given in, and one lazily allocated block with the forms and serialisations derived
/// from them.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "foundation/network/Encoding.h"
#include "iri/codecs/ComponentCodecs.h"
#include "iri/path/PathPieces.h"

namespace foundation::network::iri::detail {

/// The three stored forms of a component.
enum class Form : std::uint8_t {
    Decoded = 0,  ///< form 0: escapes resolved (Encoding 0)
    Iri = 1,      ///< form 1: IRI text (Encodings 1 and 2)
    Uri = 2,      ///< form 3: ASCII URI text (Encodings 3 and 4)
};

/// The component form an Encoding reads: 0 -> form 0, 1 and 2 -> form 1, 3 and 4 -> form 3.
/// Throws std::invalid_argument "Unknown Encoding" for any other value.
Form formOf(const Encoding& encoding);

/// Derived forms and serialisations, each published once through an atomic pointer to one
/// block holding its length and its text; a form equal to the text it was derived from is
/// published as a mark rather than a copy. The table itself is allocated on first use and
/// published once.
class DerivedCache {
public:
    static constexpr std::size_t kComponentSlots = 15;          // five components, three forms
    static constexpr std::size_t kSlots = kComponentSlots + 5;  // and five serialisations

    DerivedCache() noexcept = default;
    /// Copies every entry already published in `other`.
    DerivedCache(const DerivedCache& other);
    DerivedCache& operator=(const DerivedCache&) = delete;
    ~DerivedCache() { reset(); }

    /// Exchanges the tables. Needs exclusive access to both.
    void swap(DerivedCache& other) noexcept {
        Block* const mine = block_.load(std::memory_order_relaxed);
        block_.store(other.block_.load(std::memory_order_relaxed), std::memory_order_relaxed);
        other.block_.store(mine, std::memory_order_relaxed);
    }
    /// Drops every entry. Needs exclusive access.
    void reset() noexcept {
        if (block_.load(std::memory_order_relaxed) != nullptr) {  // most values never derive
            release();
        }
    }

    /// The entry's text in `out` (`source` for the mark); false while none was published.
    bool find(std::size_t slot, std::u16string_view source,
              std::u16string_view& out) const noexcept;
    /// Publishes `value` (as the mark when it equals `source`) unless the entry was published
    /// meanwhile; returns the entry's text.
    std::u16string_view publish(std::size_t slot, std::u16string_view value,
                                std::u16string_view source) const;

private:
    using Entry = const char16_t*;  // the length (two units), then the text
    struct Block {
        std::array<std::atomic<Entry>, kSlots> entries{};
    };
    void release() noexcept;
    static Entry mark() noexcept;
    static Entry pack(std::u16string_view text);
    static std::u16string_view unpack(Entry entry) noexcept;
    Block& block() const;

    mutable std::atomic<Block*> block_{nullptr};
};

/// Storage of the seven components. Getters may run from many threads at once; setters need
/// exclusive access.
class StringParts {
public:
    /// All components absent; empty.
    StringParts() noexcept = default;
    StringParts(const StringParts& other) = default;
    StringParts(StringParts&& other) noexcept;
    // The value assigns by copy (or move) and swap, so the parts never assign.
    StringParts& operator=(const StringParts& other) = delete;
    StringParts& operator=(StringParts&& other) = delete;
    ~StringParts() = default;
    void swap(StringParts& other) noexcept;

    /// True until a non-empty value is stored (an empty path alone leaves it empty).
    bool isEmpty() const noexcept { return (bits_ & kEmptyBit) != 0; }

    bool has(ComponentKind kind) const noexcept { return (bits_ & presentBit(kind)) != 0; }
    bool hasUserInfo() const noexcept { return has(ComponentKind::UserInfo); }
    bool hasHost() const noexcept { return has(ComponentKind::Host); }
    bool hasPath() const noexcept { return has(ComponentKind::Path); }
    bool hasQuery() const noexcept { return has(ComponentKind::Query); }
    bool hasFragment() const noexcept { return has(ComponentKind::Fragment); }

    /// The component in the form `encoding` selects, valid while this object is not written.
    /// Throws std::runtime_error "Item not set" followed by ": UserInfo", ": Host", ": Path",
    /// ": Query" or ": Fragment" when the component is absent (or a conversion's runtime error
    /// with the same suffix).
    std::u16string_view view(ComponentKind kind, const Encoding& encoding) const;
    /// The same in a form; no suffix is added to errors.
    std::u16string_view view(ComponentKind kind, Form form) const {
        if (has(kind) && form == given(kind)) {  // the stored form itself: a range of the text
            return range(static_cast<std::size_t>(kind));
        }
        return derivedView(kind, form);
    }
    /// The path in `form`, or "" for a value that never had a path stored.
    std::u16string_view storedPath(Form form) const {
        return hasPath() ? view(ComponentKind::Path, form) : std::u16string_view();
    }

    /// The same as code points.
    std::wstring getUserInfo(const Encoding& encoding) const;
    std::wstring getHost(const Encoding& encoding) const;
    std::wstring getQuery(const Encoding& encoding) const;
    std::wstring getFragment(const Encoding& encoding) const;

    /// User info and "@" when user info is present, then the host. A failure reading the host
    /// gains the further suffix ": Host (in getAuthority)".
    std::u16string authority(const Encoding& encoding) const;

    /// Stores a component (copied into the buffer) in the given form.
    void set(ComponentKind kind, std::u16string_view value, Form form);
    void set(ComponentKind kind, std::wstring_view value, Form form);
    void setUserInfo(std::wstring_view value, const Encoding& encoding);
    void setHost(std::wstring_view value, const Encoding& encoding);
    /// Stores the path; an empty path leaves an otherwise empty object empty.
    void setPath(std::wstring_view value, const Encoding& encoding);
    void setPath(std::u16string_view value, const Encoding& encoding) {
        set(ComponentKind::Path, value, formOf(encoding));
    }
    /// Stores the query; `option` true makes its decoded form UTF-8 octets, one per element
    /// (the option, once set, stays).
    void setQuery(std::wstring_view value, const Encoding& encoding, bool option);
    void setFragment(std::wstring_view value, const Encoding& encoding);
    /// Tells the path whether a scheme precedes it (its escaping depends on it).
    void setSchemePresent(bool present);

    /// The scheme and the port text, "" when absent (presence is kept by the owner).
    std::u16string_view scheme() const noexcept { return range(kSchemeRange); }
    std::u16string_view port() const noexcept { return range(kPortRange); }
    void setScheme(std::u16string_view value);
    void setPort(std::u16string_view value);

    /// Takes `text` as the buffer: the text an IRI was parsed from. The ranges below index it.
    void adoptText(const std::u16string& text);
    /// The whole buffer: the parsed text while only adoptText and the range setters ran, or
    /// what assign() wrote.
    std::u16string_view text() const noexcept { return buffer_; }
    /// The components of a value made by resolution or relativisation: each group is taken
    /// whole, in its IRI form, from the parts of one operand (null where the result has none),
    /// and read there when assign() writes them. Small enough to be set up with a few stores.
    struct Assembly {
        const StringParts* scheme = nullptr;
        const StringParts* authority = nullptr;  ///< with the members below present
        const StringParts* query = nullptr;
        const StringParts* fragment = nullptr;
        bool userInfo = false;
        bool host = false;
        bool port = false;
        bool queryAsOctets = false;
        PathPieces path;
    };
    /// Replaces every component with those of `assembly`, written at once as the value's
    /// IRI-form text (one allocation) with the ranges into it.
    void assign(const Assembly& assembly);

    /// Whether the buffer is the IRI-form text of the whole value (assign() wrote it and no
    /// setter ran since).
    bool isText() const noexcept { return (bits_ & kTextBit) != 0; }
    /// Marks [begin, end) of the adopted text as a component in its IRI form.
    void setRange(ComponentKind kind, std::uint32_t begin, std::uint32_t end);
    void setSchemeRange(std::uint32_t begin, std::uint32_t end);
    void setPortRange(std::uint32_t begin, std::uint32_t end);

    /// The serialisation cache: entry `index` (0 to 4), false while not filled.
    bool serialisation(std::size_t index, std::u16string_view& out) const noexcept {
        return derived_.find(DerivedCache::kComponentSlots + index, buffer_, out);
    }
    std::u16string_view publishSerialisation(std::size_t index, std::u16string_view value) const {
        return derived_.publish(DerivedCache::kComponentSlots + index, value, buffer_);
    }

    /// Makes every component absent and the object empty; frees the buffer.
    void reset() noexcept;

private:
    struct Range {
        std::uint32_t begin = 0;
        std::uint32_t end = 0;
    };
    // Ranges 0 to 4 are the components in ComponentKind order.
    static constexpr std::size_t kSchemeRange = 5;
    static constexpr std::size_t kPortRange = 6;
    static constexpr std::uint32_t kEmptyBit = 1u << 0;
    static constexpr std::uint32_t kPathSchemeBit = 1u << 1;
    static constexpr std::uint32_t kPathUserInfoBit = 1u << 2;
    static constexpr std::uint32_t kPathHostBit = 1u << 3;
    static constexpr std::uint32_t kQueryOctetsBit = 1u << 4;
    static constexpr std::uint32_t kTextBit = 1u << 5;
    static constexpr std::uint32_t presentBit(ComponentKind kind) {
        return 1u << (8 + static_cast<unsigned>(kind));
    }
    static constexpr unsigned formShift(ComponentKind kind) {
        return 16 + 2 * static_cast<unsigned>(kind);
    }

    std::u16string_view range(std::size_t index) const noexcept {
        return std::u16string_view(buffer_).substr(ranges_[index].begin,
                                                   ranges_[index].end - ranges_[index].begin);
    }
    Form given(ComponentKind kind) const noexcept {
        return static_cast<Form>((bits_ >> formShift(kind)) & 3u);
    }
    ComponentOptions options(ComponentKind kind) const noexcept;
    void append(std::size_t index, std::u16string_view value);
    void append(std::size_t index, std::wstring_view value);
    void markSet(ComponentKind kind, Form form, bool nonEmpty);
    std::u16string derive(ComponentKind kind, Form form) const;
    std::u16string_view derivedView(ComponentKind kind, Form form) const;

    std::u16string buffer_;
    std::array<Range, 7> ranges_{};
    std::uint32_t bits_ = kEmptyBit;
    DerivedCache derived_;
};

}  // namespace foundation::network::iri::detail
