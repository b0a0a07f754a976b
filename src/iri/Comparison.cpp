// Equality, ordering and hashing of IRI values.
#include <functional>
#include <string>

#include "iri/TemplateIRI.h"

namespace foundation::network::iri::detail {
namespace {

constexpr Encoding kIriForm(1);

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
    if (schemePresent != other.schemePresent ||
        (schemePresent && schemeUtf16 != other.schemeUtf16)) {
        return false;
    }
    if (portPresent != other.portPresent || (portPresent && port != other.port)) {
        return false;
    }
    // Hashes already at hand reject cheaply; computing them only for this would cost more
    // than comparing the texts.
    if (hashKnown.load() && other.hashKnown.load() && hash != other.hash) {
        return false;
    }
    return (textIsCurrent.load() ? text : toNativeStringFromParts(kIriForm)) ==
           (other.textIsCurrent.load() ? other.text : other.toNativeStringFromParts(kIriForm));
}

template <class String>
bool TemplateIRI<String>::operator!=(const TemplateIRI& other) const {
    return !(*this == other);
}

template <class String>
bool TemplateIRI<String>::operator<(const TemplateIRI& other) const {
    const bool thisCurrent = textIsCurrent.load();
    const bool otherCurrent = other.textIsCurrent.load();
    // Two parsed values, the common case of a sort: their own texts, without a cache look-up.
    if (thisCurrent && otherCurrent) {
        return text < other.text;
    }
    return (thisCurrent ? text : toNativeStringFromParts(kIriForm)) <
           (otherCurrent ? other.text : other.toNativeStringFromParts(kIriForm));
}

template <class String>
std::uint64_t TemplateIRI<String>::computeHash() const {
    if (empty.load()) {
        return 0;
    }
    const std::hash<String> byteHash;
    return textIsCurrent.load() ? byteHash(text) : byteHash(toNativeStringFromParts(kIriForm));
}

template <class String>
void TemplateIRI<String>::generateHash() const noexcept {
    hash = computeHash();
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
        // clear() or a swap): compute outside the lock (serialising takes it), publish under it.
        if (!hashKnown.load()) {
            const std::uint64_t value = computeHash();
            const std::lock_guard<std::mutex> lock(mutex);
            if (!hashKnown.load()) {
                hash = value;
                hashKnown.store(true);
            }
        }
    }
    return hash;
}

template bool TemplateIRI<std::wstring>::operator==(const TemplateIRI&) const;
template bool TemplateIRI<std::wstring>::operator!=(const TemplateIRI&) const;
template bool TemplateIRI<std::wstring>::operator<(const TemplateIRI&) const;
template std::uint64_t TemplateIRI<std::wstring>::computeHash() const;
template void TemplateIRI<std::wstring>::generateHash() const noexcept;
template std::uint64_t TemplateIRI<std::wstring>::hashValue() const noexcept;

}  // namespace foundation::network::iri::detail
