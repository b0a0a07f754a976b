// Equality, ordering and hashing of IRI values.
#include <algorithm>
#include <functional>
#include <string>

#include "iri/TemplateIRI.h"

namespace foundation::network::iri::detail {
namespace {

constexpr Encoding kPlainForm(0);
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

template <class String>
bool TemplateIRI<String>::operator==(const TemplateIRI& other) const {
    const bool thisEmpty = empty.load();
    const bool otherEmpty = other.empty.load();
    if (thisEmpty || otherEmpty) {
        return thisEmpty && otherEmpty;
    }
    if (schemePresent != other.schemePresent ||
        (schemePresent && parts.scheme() != other.parts.scheme())) {
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
        (schemePresent && parts.scheme() != other.parts.scheme())) {
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
        return lessByCodePoints(parts.text(), other.parts.text());
    }
    const Encoding& form = thisCurrent || otherCurrent ? kIriForm : kPlainForm;
    return lessByCodePoints(toNativeStringFromParts(form), other.toNativeStringFromParts(form));
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
