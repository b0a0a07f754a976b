#include "iri/Component.h"

#include <stdexcept>
#include <utility>

namespace foundation::network::iri::detail {

Component::Component(ComponentKind kind, ComponentOptions options) noexcept
    : options_(options), kind_(kind) {}

Component::Component(const Component& other)
    : given_(other.given_), options_(other.options_), kind_(other.kind_), unset_(other.unset_) {
    // Filled slots never change while readers run, so they can be copied without the lock.
    const std::uint8_t filled = other.filled_.load(std::memory_order_acquire);
    for (unsigned i = 0; i < 3; ++i) {
        if ((filled & (1u << i)) != 0) {
            forms_[i] = other.forms_[i];
        }
    }
    filled_.store(filled, std::memory_order_relaxed);
}

Component::Component(Component&& other) noexcept
    : given_(other.given_), options_(other.options_), kind_(other.kind_), unset_(other.unset_) {
    const std::uint8_t filled = other.filled_.load(std::memory_order_acquire);
    for (unsigned i = 0; i < 3; ++i) {
        if ((filled & (1u << i)) != 0) {
            forms_[i] = std::move(other.forms_[i]);
        }
    }
    filled_.store(filled, std::memory_order_relaxed);
}

Component& Component::operator=(const Component& other) {
    if (this != &other) {
        Component copy(other);
        swap(copy);
    }
    return *this;
}

Component& Component::operator=(Component&& other) noexcept {
    if (this != &other) {
        Component moved(std::move(other));
        swap(moved);
    }
    return *this;
}

void Component::swap(Component& other) noexcept {
    std::swap(given_, other.given_);
    std::swap(options_, other.options_);
    std::swap(kind_, other.kind_);
    std::swap(unset_, other.unset_);
    for (unsigned i = 0; i < 3; ++i) {
        forms_[i].swap(other.forms_[i]);
    }
    other.filled_.store(filled_.exchange(other.filled_.load()));
}

void Component::set(std::wstring value, Form form) {
    for (auto& slot : forms_) {
        std::wstring().swap(slot);
    }
    forms_[static_cast<unsigned>(form)] = std::move(value);
    filled_.store(bit(form));
    given_ = static_cast<std::uint32_t>(form) + 1;
    unset_ = false;
}

const std::wstring& Component::get(Form form) const {
    if (unset_) {
        throw std::runtime_error("Item not set");
    }
    const auto index = static_cast<unsigned>(form);
    if ((filled_.load(std::memory_order_acquire) & bit(form)) != 0) {
        return forms_[index];
    }
    std::lock_guard<std::mutex> lock(mutex_);
    if ((filled_.load(std::memory_order_acquire) & bit(form)) == 0) {
        forms_[index] = derive(form);
        filled_.fetch_or(bit(form), std::memory_order_release);
    }
    return forms_[index];
}

// Form 0 and form 3 come from form 1 when it is there, else from each other; form 1 comes
// from form 3 when it is there, else from form 0. Called under mutex_.
std::wstring Component::derive(Form form) const {
    const std::uint8_t filled = filled_.load(std::memory_order_acquire);
    const bool hasDecoded = (filled & bit(Form::Decoded)) != 0;
    const bool hasIri = (filled & bit(Form::Iri)) != 0;
    const bool hasUri = (filled & bit(Form::Uri)) != 0;
    const std::wstring& decoded = forms_[0];
    const std::wstring& iri = forms_[1];
    const std::wstring& uri = forms_[2];
    switch (form) {
        case Form::Decoded:
            return hasIri ? iriToDecoded(kind_, options_, iri) : uriToDecoded(kind_, options_, uri);
        case Form::Iri:
            return hasUri ? uriToIri(kind_, options_, uri) : decodedToIri(kind_, options_, decoded);
        case Form::Uri:
            return hasIri || !hasDecoded ? iriToUri(iri) : decodedToUri(kind_, options_, decoded);
    }
    return {};
}

void Component::setOptions(const ComponentOptions& options) {
    options_ = options;
    if (!unset_) {
        dropDerived();
    }
}

void Component::dropDerived() {
    std::uint8_t keep = 0;
    if (given_ >= 1 && given_ <= 3) {
        keep = static_cast<std::uint8_t>(1u << (given_ - 1));
    }
    if (filled_.load(std::memory_order_acquire) == keep) {
        return;  // nothing derived yet
    }
    std::lock_guard<std::mutex> lock(mutex_);
    for (unsigned i = 0; i < 3; ++i) {
        if ((keep & (1u << i)) == 0) {
            forms_[i].clear();
        }
    }
    filled_.store(keep, std::memory_order_release);
}

bool Component::operator==(const Component& other) const {
    if (unset_ || other.unset_) {
        return unset_ == other.unset_;
    }
    const std::wstring& mine = get(Form::Iri);
    const std::wstring& theirs = other.get(Form::Iri);
    return mine.size() == theirs.size() && mine == theirs;
}

}  // namespace foundation::network::iri::detail
