#include "iri/StringParts.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "foundation/core/except/Exception.h"
#include "iri/Utf16.h"

namespace foundation::network::iri::detail {

Form formOf(const Encoding& encoding) {
    switch (encoding.value()) {
        case 0:
            return Form::Decoded;
        case 1:
        case 2:
            return Form::Iri;
        case 3:
        case 4:
            return Form::Uri;
        default:
            throw core::except::detail::AnonymousInternalException<std::invalid_argument>(
                "Unknown Encoding");
    }
}

// ---------------------------------------------------------------------------------------------
// DerivedCache

namespace {

constexpr char16_t kMarkText[2] = {0, 0};

}  // namespace

DerivedCache::Entry DerivedCache::mark() noexcept {
    return kMarkText;
}

DerivedCache::Entry DerivedCache::pack(std::u16string_view text) {
    auto* entry = new char16_t[text.size() + 2];
    const auto size = static_cast<std::uint32_t>(text.size());
    entry[0] = static_cast<char16_t>(size >> 16);
    entry[1] = static_cast<char16_t>(size & 0xFFFF);
    std::copy(text.begin(), text.end(), entry + 2);
    return entry;
}

std::u16string_view DerivedCache::unpack(Entry entry) noexcept {
    const std::uint32_t size = (static_cast<std::uint32_t>(entry[0]) << 16) | entry[1];
    return {entry + 2, size};
}

DerivedCache::DerivedCache(const DerivedCache& other) {
    const Block* source = other.block_.load(std::memory_order_acquire);
    if (source == nullptr) {
        return;
    }
    Block* copy = nullptr;
    try {
        for (std::size_t i = 0; i < kSlots; ++i) {
            const Entry entry = source->entries[i].load(std::memory_order_acquire);
            if (entry == nullptr) {
                continue;
            }
            if (copy == nullptr) {
                copy = new Block;
                block_.store(copy, std::memory_order_relaxed);
            }
            copy->entries[i].store(entry == mark() ? mark() : pack(unpack(entry)),
                                   std::memory_order_relaxed);
        }
    } catch (...) {
        reset();
        throw;
    }
}

void DerivedCache::release() noexcept {
    // Exclusive access: whoever published the entries happened before this.
    Block* block = block_.load(std::memory_order_relaxed);
    block_.store(nullptr, std::memory_order_relaxed);
    for (auto& entry : block->entries) {
        const Entry value = entry.load(std::memory_order_relaxed);
        if (value != mark()) {
            delete[] value;
        }
    }
    delete block;
}

bool DerivedCache::find(std::size_t slot, std::u16string_view source,
                        std::u16string_view& out) const noexcept {
    const Block* block = block_.load(std::memory_order_acquire);
    const Entry entry =
        block == nullptr ? nullptr : block->entries[slot].load(std::memory_order_acquire);
    if (entry == nullptr) {
        return false;
    }
    out = entry == mark() ? source : unpack(entry);
    return true;
}

DerivedCache::Block& DerivedCache::block() const {
    Block* block = block_.load(std::memory_order_acquire);
    if (block != nullptr) {
        return *block;
    }
    auto* fresh = new Block;
    if (block_.compare_exchange_strong(block, fresh, std::memory_order_acq_rel,
                                       std::memory_order_acquire)) {
        return *fresh;
    }
    delete fresh;  // another thread published first
    return *block;
}

std::u16string_view DerivedCache::publish(std::size_t slot, std::u16string_view value,
                                          std::u16string_view source) const {
    auto& entry = block().entries[slot];
    const Entry fresh = sameUnits(value, source) ? mark() : pack(value);
    Entry expected = nullptr;
    if (!entry.compare_exchange_strong(expected, fresh, std::memory_order_acq_rel,
                                       std::memory_order_acquire)) {
        if (fresh != mark()) {
            delete[] fresh;
        }
        return expected == mark() ? source : unpack(expected);
    }
    return fresh == mark() ? source : unpack(fresh);
}

// ---------------------------------------------------------------------------------------------
// StringParts: lifecycle

StringParts::StringParts(StringParts&& other) noexcept
    : buffer_(std::move(other.buffer_)), ranges_(other.ranges_), bits_(other.bits_) {
    derived_.swap(other.derived_);
    other.reset();
}

void StringParts::swap(StringParts& other) noexcept {
    buffer_.swap(other.buffer_);
    std::swap(ranges_, other.ranges_);
    std::swap(bits_, other.bits_);
    derived_.swap(other.derived_);
}

void StringParts::reset() noexcept {
    std::u16string().swap(buffer_);
    ranges_ = {};
    bits_ = kEmptyBit;
    derived_.reset();
}

// ---------------------------------------------------------------------------------------------
// Reading

namespace {

constexpr const char* kSuffix[] = {": UserInfo", ": Host", ": Path", ": Query", ": Fragment"};

}  // namespace

ComponentOptions StringParts::options(ComponentKind kind) const noexcept {
    ComponentOptions options;
    if (kind == ComponentKind::Path) {
        options.schemePresent = (bits_ & kPathSchemeBit) != 0;
        options.userInfoPresent = (bits_ & kPathUserInfoBit) != 0;
        options.hostPresent = (bits_ & kPathHostBit) != 0;
    } else if (kind == ComponentKind::Query) {
        options.asOctets = (bits_ & kQueryOctetsBit) != 0;
    }
    return options;
}

// Every form comes from the given one: a component is given decoded (a built value) or in its
// IRI form (parsed, resolved or relativised), never in the URI form.
std::u16string StringParts::derive(ComponentKind kind, Form form) const {
    const std::wstring source = widen(range(static_cast<std::size_t>(kind)));
    const ComponentOptions opts = options(kind);
    if (given(kind) == Form::Decoded) {
        return narrow(form == Form::Iri ? decodedToIri(kind, opts, source)
                                        : decodedToUri(kind, opts, source));
    }
    return narrow(form == Form::Decoded ? iriToDecoded(kind, opts, source) : iriToUri(source));
}

namespace {

// Whether deriving `form` from an IRI-form `text` gives `text` back, decided without deriving:
// the URI form only escapes what is not printable ASCII, the decoded form only resolves
// escapes (and a space, and in the octet form what is not ASCII).
bool derivesToItself(std::u16string_view text, Form form, bool asOctets) {
    if (form == Form::Uri) {
        return std::all_of(text.begin(), text.end(),
                           [](char16_t c) { return c > 0x20 && c < 0x7F; });
    }
    return std::none_of(text.begin(), text.end(), [&](char16_t c) {
        return c == u'%' || c == u' ' || (asOctets && c >= 0x80);
    });
}

}  // namespace

std::u16string_view StringParts::derivedView(ComponentKind kind, Form form) const {
    if (!has(kind)) {
        throw std::runtime_error("Item not set");
    }
    const std::u16string_view source = range(static_cast<std::size_t>(kind));
    const std::size_t slot = static_cast<std::size_t>(kind) * 3 + static_cast<std::size_t>(form);
    std::u16string_view cached;
    if (derived_.find(slot, source, cached)) {
        return cached;
    }
    if (given(kind) == Form::Iri && derivesToItself(source, form, options(kind).asOctets)) {
        return derived_.publish(slot, source, source);
    }
    return derived_.publish(slot, derive(kind, form), source);
}

std::u16string_view StringParts::view(ComponentKind kind, const Encoding& encoding) const {
    const Form form = formOf(encoding);
    try {
        return view(kind, form);
    } catch (const std::runtime_error& e) {
        throw std::runtime_error(std::string(e.what()).append(kSuffix[static_cast<int>(kind)]));
    }
}

std::wstring StringParts::getUserInfo(const Encoding& encoding) const {
    return widen(view(ComponentKind::UserInfo, encoding));
}
std::wstring StringParts::getHost(const Encoding& encoding) const {
    return widen(view(ComponentKind::Host, encoding));
}
std::wstring StringParts::getQuery(const Encoding& encoding) const {
    return widen(view(ComponentKind::Query, encoding));
}
std::wstring StringParts::getFragment(const Encoding& encoding) const {
    return widen(view(ComponentKind::Fragment, encoding));
}

std::u16string StringParts::authority(const Encoding& encoding) const {
    std::u16string authority;
    if (hasUserInfo()) {
        authority = view(ComponentKind::UserInfo, encoding);
        authority.push_back(u'@');
    }
    try {
        authority += view(ComponentKind::Host, encoding);
    } catch (const std::runtime_error& e) {
        throw std::runtime_error(std::string(e.what()) + ": Host (in getAuthority)");
    }
    return authority;
}

// ---------------------------------------------------------------------------------------------
// Writing

void StringParts::append(std::size_t index, std::u16string_view value) {
    const std::u16string_view whole(buffer_);
    if (!value.empty() && value.data() >= whole.data() &&
        value.data() < whole.data() + whole.size()) {
        append(index, std::u16string_view(std::u16string(value)));  // a range of this buffer
        return;
    }
    const auto begin = static_cast<std::uint32_t>(buffer_.size());
    buffer_ += value;
    ranges_[index] = {begin, static_cast<std::uint32_t>(buffer_.size())};
}

void StringParts::append(std::size_t index, std::wstring_view value) {
    const auto begin = static_cast<std::uint32_t>(buffer_.size());
    try {
        appendUtf16(value, buffer_);
    } catch (...) {
        buffer_.resize(begin);
        throw;
    }
    ranges_[index] = {begin, static_cast<std::uint32_t>(buffer_.size())};
}

void StringParts::markSet(ComponentKind kind, Form form, bool nonEmpty) {
    derived_.reset();
    bits_ &= ~kTextBit;
    bits_ &= ~(3u << formShift(kind));
    bits_ |= presentBit(kind) | (static_cast<std::uint32_t>(form) << formShift(kind));
    // Options are only ever raised, from what precedes the path.
    if (kind == ComponentKind::UserInfo || (kind == ComponentKind::Path && hasUserInfo())) {
        bits_ |= kPathUserInfoBit;
    }
    if (kind == ComponentKind::Host || (kind == ComponentKind::Path && hasHost())) {
        bits_ |= kPathHostBit;
    }
    if (kind != ComponentKind::Path || nonEmpty) {
        bits_ &= ~kEmptyBit;
    }
}

void StringParts::set(ComponentKind kind, std::u16string_view value, Form form) {
    append(static_cast<std::size_t>(kind), value);
    markSet(kind, form, !value.empty());
}

void StringParts::set(ComponentKind kind, std::wstring_view value, Form form) {
    append(static_cast<std::size_t>(kind), value);
    markSet(kind, form, !value.empty());
}

void StringParts::setUserInfo(std::wstring_view value, const Encoding& encoding) {
    set(ComponentKind::UserInfo, value, formOf(encoding));
}
void StringParts::setHost(std::wstring_view value, const Encoding& encoding) {
    set(ComponentKind::Host, value, formOf(encoding));
}
void StringParts::setPath(std::wstring_view value, const Encoding& encoding) {
    set(ComponentKind::Path, value, formOf(encoding));
}
void StringParts::setQuery(std::wstring_view value, const Encoding& encoding, bool option) {
    set(ComponentKind::Query, value, formOf(encoding));
    if (option) {
        bits_ |= kQueryOctetsBit;
    }
}
void StringParts::setFragment(std::wstring_view value, const Encoding& encoding) {
    set(ComponentKind::Fragment, value, formOf(encoding));
}

void StringParts::setSchemePresent(bool present) {
    if (present != ((bits_ & kPathSchemeBit) != 0)) {
        derived_.reset();
        bits_ ^= kPathSchemeBit;
    }
}

void StringParts::setScheme(std::u16string_view value) {
    derived_.reset();
    bits_ &= ~kTextBit;
    append(kSchemeRange, value);
}

void StringParts::setPort(std::u16string_view value) {
    derived_.reset();
    bits_ &= ~kTextBit;
    append(kPortRange, value);
}

void StringParts::adoptText(const std::u16string& text) {
    derived_.reset();
    bits_ &= ~kTextBit;
    buffer_ = text;
}

void StringParts::assign(const Assembly& assembly) {
    const auto iriForm = [](const StringParts* from, ComponentKind kind) {
        return from->view(kind, Form::Iri);
    };
    const std::u16string_view scheme = assembly.scheme ? assembly.scheme->scheme() : u"";
    const std::u16string_view userInfo =
        assembly.userInfo ? iriForm(assembly.authority, ComponentKind::UserInfo) : u"";
    const std::u16string_view host =
        assembly.host ? iriForm(assembly.authority, ComponentKind::Host) : u"";
    const std::u16string_view port = assembly.port ? assembly.authority->port() : u"";
    const std::u16string_view query =
        assembly.query ? iriForm(assembly.query, ComponentKind::Query) : u"";
    const std::u16string_view fragment =
        assembly.fragment ? iriForm(assembly.fragment, ComponentKind::Fragment) : u"";

    std::u16string text;
    // Each component with its delimiter, and "//".
    text.reserve(scheme.size() + userInfo.size() + host.size() + port.size() + query.size() +
                 fragment.size() + assembly.path.size() + 7);
    std::array<Range, 7> ranges{};
    const auto put = [&](std::size_t index, std::u16string_view part) {
        const auto begin = static_cast<std::uint32_t>(text.size());
        text += part;
        ranges[index] = {begin, static_cast<std::uint32_t>(text.size())};
    };
    const auto index = [](ComponentKind kind) { return static_cast<std::size_t>(kind); };
    std::uint32_t bits = kTextBit | kEmptyBit;
    const auto mark = [&](ComponentKind kind, bool nonEmpty) {
        bits |= presentBit(kind) | (static_cast<std::uint32_t>(Form::Iri) << formShift(kind));
        if (kind != ComponentKind::Path || nonEmpty) {
            bits &= ~kEmptyBit;
        }
    };
    if (assembly.scheme) {
        put(kSchemeRange, scheme);
        text += u':';
        bits |= kPathSchemeBit;
    }
    if (assembly.host) {
        text += u"//";
        if (assembly.userInfo) {
            put(index(ComponentKind::UserInfo), userInfo);
            text += u'@';
            mark(ComponentKind::UserInfo, true);
            bits |= kPathUserInfoBit;
        }
        put(index(ComponentKind::Host), host);
        mark(ComponentKind::Host, true);
        bits |= kPathHostBit;
        if (assembly.port) {
            text += u':';
            put(kPortRange, port);
        }
    }
    const auto pathBegin = static_cast<std::uint32_t>(text.size());
    assembly.path.appendTo(text);
    ranges[index(ComponentKind::Path)] = {pathBegin, static_cast<std::uint32_t>(text.size())};
    mark(ComponentKind::Path, !assembly.path.empty());
    if (assembly.query) {
        text += u'?';
        put(index(ComponentKind::Query), query);
        mark(ComponentKind::Query, true);
        if (assembly.queryAsOctets) {
            bits |= kQueryOctetsBit;
        }
    }
    if (assembly.fragment) {
        text += u'#';
        put(index(ComponentKind::Fragment), fragment);
        mark(ComponentKind::Fragment, true);
    }
    derived_.reset();
    buffer_ = std::move(text);
    ranges_ = ranges;
    bits_ = bits;
}

void StringParts::setRange(ComponentKind kind, std::uint32_t begin, std::uint32_t end) {
    ranges_[static_cast<std::size_t>(kind)] = {begin, end};
    markSet(kind, Form::Iri, begin != end);
}

void StringParts::setSchemeRange(std::uint32_t begin, std::uint32_t end) {
    ranges_[kSchemeRange] = {begin, end};
}

void StringParts::setPortRange(std::uint32_t begin, std::uint32_t end) {
    ranges_[kPortRange] = {begin, end};
}

}  // namespace foundation::network::iri::detail
