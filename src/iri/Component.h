/// @file
/// @brief One stored IRI component (user info, host, path, query or fragment): the form it
/// was given in, and the other two forms derived on first demand and cached.
#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>

#include "iri/grammar/ComponentCodecs.h"

namespace foundation::network::iri::detail {

/// The three stored forms of a component.
enum class Form : std::uint8_t {
    Decoded = 0,  ///< form 0: escapes resolved (Encoding 0)
    Iri = 1,      ///< form 1: IRI text (Encodings 1 and 2)
    Uri = 2,      ///< form 3: ASCII URI text (Encodings 3 and 4)
};

/// A component's value in up to three forms. The given form is always filled; a missing form
/// is derived from the others under the component's mutex, once, and never changes afterwards
/// until the value or the options are written (writes need exclusive access). So `get` may run
/// from many threads at once and the references it returns stay valid while the component is
/// not written.
class Component {
public:
    explicit Component(ComponentKind kind, ComponentOptions options = {}) noexcept;
    /// Copies the value and every form already derived.
    Component(const Component& other);
    Component(Component&& other) noexcept;
    Component& operator=(const Component& other);
    Component& operator=(Component&& other) noexcept;
    ~Component() = default;

    /// Exchanges everything but the mutexes. Both sides must not be read meanwhile.
    void swap(Component& other) noexcept;
    friend void swap(Component& a, Component& b) noexcept { a.swap(b); }

    ComponentKind kind() const noexcept { return kind_; }

    /// Stores `value` as the given form; the other forms are dropped.
    void set(std::wstring value, Form form);

    /// The value in `form`, derived and cached if needed. Throws std::runtime_error
    /// "Item not set" while no value was stored; a failed conversion's exception passes
    /// through and leaves the held forms as they were.
    const std::wstring& get(Form form) const;

    const ComponentOptions& options() const noexcept { return options_; }

    /// Writes new options and drops the derived forms (they depend on the options).
    void setOptions(const ComponentOptions& options);

    /// Equal when both are unset, or both are set and their IRI forms are equal.
    bool operator==(const Component& other) const;
    bool operator!=(const Component& other) const { return !(*this == other); }

private:
    static constexpr std::uint8_t bit(Form form) {
        return static_cast<std::uint8_t>(1u << static_cast<unsigned>(form));
    }
    std::wstring derive(Form form) const;
    void dropDerived();

    // Which form holds the value as given: 1 = form 0, 2 = form 1, 3 = form 3; 0 while unset.
    std::uint32_t given_ = 0;
    ComponentOptions options_;
    ComponentKind kind_;
    bool unset_ = true;
    // Forms 0, 1 and 3; a slot is valid once its bit is set in filled_ and is written only while
    // its bit is clear (under mutex_).
    mutable std::wstring forms_[3];
    mutable std::atomic<std::uint8_t> filled_{0};
    mutable std::mutex mutex_;
};

}  // namespace foundation::network::iri::detail
