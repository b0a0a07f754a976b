// Equality, ordering and hashing of IRI values.
#include <algorithm>
#include <functional>
#include <string>

#include "iri/TemplateIRI.h"

namespace foundation::network::iri::detail {
namespace {

constexpr Encoding kIriForm(1);

// Code point order over UTF-16 text: a unit of a surrogate pair sorts above every other unit.
bool lessByCodePoints(std::u16string_view a, std::u16string_view b) {
    const std::size_t n = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < n; ++i) {
        if (a[i] != b[i]) {
            const auto key = [](char16_t u) {
                return u >= 0xD800 && u <= 0xDFFF ? u + 0x10000u : static_cast<unsigned>(u);
            };
            return key(a[i]) < key(b[i]);
        }
    }
    return a.size() < b.size();
}

}  // namespace

// Two values are equal exactly when both are empty, or neither is and their IRI-form texts
// are equal; the order is the order of those texts. Both read the same text as the hash, so
// equal values hash alike and the order agrees with equality: the values serve as keys of
// ordered and hashed containers whatever mix of parsed, resolved and built values they hold.
// The scheme and port checks below only reject early: where they differ the texts differ too.
template <class String>
bool TemplateIRI<String>::operator==(const TemplateIRI& other) const {
    if (this == &other) {
        return true;
    }
    const bool thisEmpty = empty.load();
    const bool otherEmpty = other.empty.load();
    if (thisEmpty || otherEmpty) {
        return thisEmpty && otherEmpty;
    }
    if (flags.schemePresent != other.flags.schemePresent ||
        (flags.schemePresent && parts.scheme() != other.parts.scheme())) {
        return false;
    }
    if (flags.portPresent != other.flags.portPresent ||
        (flags.portPresent && parts.port() != other.parts.port())) {
        return false;
    }
    // Hashes already at hand reject cheaply; computing them only for this would cost more
    // than comparing the texts.
    if (hashKnown.load() && other.hashKnown.load() && hash.load() != other.hash.load()) {
        return false;
    }
    // A parsed value's own text comes back without a cache look-up.
    return toNativeStringFromParts(kIriForm) == other.toNativeStringFromParts(kIriForm);
}

template <class String>
bool TemplateIRI<String>::operator!=(const TemplateIRI& other) const {
    return !(*this == other);
}

template <class String>
bool TemplateIRI<String>::operator<(const TemplateIRI& other) const {
    if (this == &other) {
        return false;
    }
    // Two parsed values, the common case of a sort, compare their own texts (which
    // toNativeStringFromParts gives back without a cache look-up).
    return lessByCodePoints(toNativeStringFromParts(kIriForm),
                            other.toNativeStringFromParts(kIriForm));
}

template <class String>
std::uint64_t TemplateIRI<String>::computeHash() const {
    if (empty.load()) {
        return 0;
    }
    const std::hash<std::u16string_view> unitHash;
    return textIsCurrent.load() ? unitHash(parts.text())
                                : unitHash(toNativeStringFromParts(kIriForm));
}

template <class String>
void TemplateIRI<String>::generateHash() const noexcept {
    hash.store(computeHash());
    hashKnown.store(true);
}

template <class String>
std::uint64_t TemplateIRI<String>::hashValue() const noexcept {
    if (!hashKnown.load()) {
        std::call_once(hashOnce, [this] {
            if (!hashKnown.load()) {
                generateHash();
            }
        });
        // The once-flag has already fired for an earlier value of this object (before a
        // clear() or a swap): every thread that gets here stores the same value.
        if (!hashKnown.load()) {
            generateHash();
        }
    }
    return hash.load();
}

template bool TemplateIRI<std::wstring>::operator==(const TemplateIRI&) const;
template bool TemplateIRI<std::wstring>::operator!=(const TemplateIRI&) const;
template bool TemplateIRI<std::wstring>::operator<(const TemplateIRI&) const;
template std::uint64_t TemplateIRI<std::wstring>::computeHash() const;
template void TemplateIRI<std::wstring>::generateHash() const noexcept;
template std::uint64_t TemplateIRI<std::wstring>::hashValue() const noexcept;

}  // namespace foundation::network::iri::detail
