/// @file
/// @brief What the IRI grammar finds: the components of one IRI reference as offsets into the
/// parsed text.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <string>

namespace foundation::network::iri::detail {

/// A component's place in the text: a presence flag with a begin and an end offset. The offsets
/// are read only while the flag is set, so a fresh range costs one store.
struct OptionalRange {
    bool present = false;
    std::uint32_t first;
    std::uint32_t last;

    bool empty() const { return first == last; }
    void set(std::uint32_t begin, std::uint32_t end) {
        present = true;
        first = begin;
        last = end;
    }
    void setEmptyAt(std::uint32_t at) { set(at, at); }
};

/// The whole reference: scheme, user info, host, port, path, query, fragment, each as offsets
/// from `origin`, the first character of the text.
template <class String>
struct Parts {
    using Iterator = typename String::const_iterator;
    using Range = OptionalRange;

    const typename String::value_type* origin = nullptr;
    Range scheme;
    Range userInfo;
    Range host;
    Range port;
    Range path;
    Range query;
    Range fragment;

    /// Makes every range absent, for a parse of the text that begins at `begin`.
    void reset(Iterator begin) {
        origin = std::to_address(begin);
        clear();
    }
    /// Makes every range absent.
    void clear() {
        for (Range* range : {&scheme, &userInfo, &host, &port, &path, &query, &fragment}) {
            range->present = false;
        }
    }
    /// Records [begin, end) of the text in `range`.
    void set(Range& range, Iterator begin, Iterator end) const {
        range.set(offset(begin), offset(end));
    }

    /// Gives every absent range an empty range where it would stand and marks it present, so
    /// that later code may use every range without testing. Presence itself is recorded by the
    /// caller before this runs. Absent user info becomes the empty range at the host's begin
    /// when a host is present, else user info and host both become the empty range at the
    /// path's begin; an absent host beside present user info becomes the empty range at the
    /// path's begin; an absent port becomes the empty range at the host's end.
    void update() {
        if (!userInfo.present) {
            if (host.present) {
                userInfo.setEmptyAt(host.first);
            } else {
                userInfo.setEmptyAt(path.first);
                host.setEmptyAt(path.first);
            }
        } else if (!host.present) {
            host.setEmptyAt(path.first);
        }
        if (!port.present) {
            port.setEmptyAt(host.last);
        }
        if (!query.present) {
            query.setEmptyAt(path.last);
        }
        if (!fragment.present) {
            fragment.setEmptyAt(query.last);
        }
    }

private:
    std::uint32_t offset(Iterator at) const {
        return static_cast<std::uint32_t>(std::to_address(at) - origin);
    }
};

extern template struct Parts<std::wstring>;
extern template struct Parts<std::u16string>;

}  // namespace foundation::network::iri::detail
