// The value's lifecycle: construction, copy, move, swap and clear.
#include "iri/TemplateIRI.h"

namespace foundation::network::iri::detail {

namespace {

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

// The flags and the path's facts; the other atomics, the parts and the hash are handled
// by each caller.
template <class String>
void TemplateIRI<String>::copyFlags(const TemplateIRI& other) noexcept {
    flags = other.flags;
    pathFacts.store(other.pathFacts.load(std::memory_order_relaxed), std::memory_order_relaxed);
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
    swapRelaxed(pathFacts, other.pathFacts);
    std::swap(flags, other.flags);
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
    flags = Flags();
    pathFacts.store(kEmptyPathFacts, std::memory_order_relaxed);
    hashKnown.store(false, std::memory_order_relaxed);
    hash.store(0, std::memory_order_relaxed);
}

// The members defined here; the others are instantiated where they are defined.
template class TemplateIRI<std::wstring>;

}  // namespace foundation::network::iri::detail
