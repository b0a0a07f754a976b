// Equality, ordering and hashing of IRI values.
#include <functional>
#include <string>

#include "iri/TemplateIRI.h"

namespace foundation::network::iri::detail {
namespace {

constexpr Encoding kPlainForm(0);
constexpr Encoding kIriForm(1);

}  // namespace

template <class String>
bool TemplateIRI<String>::operator==(const TemplateIRI& other) const {
    const bool thisEmpty = empty.load();
    const bool otherEmpty = other.empty.load();
    if (thisEmpty || otherEmpty) {
        return thisEmpty && otherEmpty;
    }
    if (schemePresent != other.schemePresent ||
        (schemePresent && schemeUtf16 != other.schemeUtf16)) {
        return false;
    }
    // The number, not the text: "080" equals "80".
    if (portPresent != other.portPresent || (portPresent && portNumber != other.portNumber)) {
        return false;
    }
    if (!textIsCurrent.load() && !other.textIsCurrent.load()) {
        return parts == other.parts;
    }
    if (hashValue() != other.hashValue()) {
        return false;
    }
    return toNativeStringFromParts(kIriForm) == other.toNativeStringFromParts(kIriForm);
}

template <class String>
bool TemplateIRI<String>::operator!=(const TemplateIRI& other) const {
    const bool thisEmpty = empty.load();
    const bool otherEmpty = other.empty.load();
    if (thisEmpty || otherEmpty) {
        return !(thisEmpty && otherEmpty);
    }
    if (schemePresent != other.schemePresent ||
        (schemePresent && schemeUtf16 != other.schemeUtf16)) {
        return true;
    }
    if (portPresent != other.portPresent || (portPresent && portNumber != other.portNumber)) {
        return true;
    }
    if (!textIsCurrent.load() && !other.textIsCurrent.load()) {
        return parts != other.parts;
    }
    if (hashValue() != other.hashValue()) {
        return true;
    }
    return toNativeStringFromParts(kIriForm) != other.toNativeStringFromParts(kIriForm);
}

template <class String>
bool TemplateIRI<String>::operator<(const TemplateIRI& other) const {
    const bool thisCurrent = textIsCurrent.load();
    const bool otherCurrent = other.textIsCurrent.load();
    if (thisCurrent && otherCurrent) {
        return text < other.text;
    }
    const Encoding& form = thisCurrent || otherCurrent ? kIriForm : kPlainForm;
    return toNativeStringFromParts(form) < other.toNativeStringFromParts(form);
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
