/// @file
/// @brief What the IRI grammar finds: the components of one IRI reference as iterator ranges
/// into the parsed text.
#pragma once

#include <string>

namespace foundation::network::iri::detail {

/// A component's place in the text: a presence flag with a begin and an end iterator.
template <class Iterator>
struct OptionalRange {
    bool present = false;
    Iterator first{};
    Iterator last{};

    bool empty() const { return first == last; }
    void set(Iterator begin, Iterator end) {
        present = true;
        first = begin;
        last = end;
    }
    void setEmptyAt(Iterator at) { set(at, at); }
};

/// Absent user info becomes the empty range at the host's begin when a host is present, else user
/// info and host both become the empty range at the path's begin; an absent host beside present
/// user info becomes the empty range at the path's begin; an absent port becomes the empty range
/// at the host's end.
template <class Range>
void fillAbsentAuthority(Range& userInfo, Range& host, Range& port, const Range& path) {
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
}

/// The part after the scheme: user info, host, port and path.
template <class String>
struct HierarchicalPart {
    using Iterator = typename String::const_iterator;
    using Range = OptionalRange<Iterator>;

    Range userInfo;
    Range host;
    Range port;
    Range path;

    /// Gives every absent range an empty range where it would stand.
    void update() { fillAbsentAuthority(userInfo, host, port, path); }
};

/// The whole reference: scheme, user info, host, port, path, query, fragment.
template <class String>
struct Parts {
    using Iterator = typename String::const_iterator;
    using Range = OptionalRange<Iterator>;

    Range scheme;
    Range userInfo;
    Range host;
    Range port;
    Range path;
    Range query;
    Range fragment;

    /// Gives every absent range an empty range where it would stand and marks it present, so
    /// that later code may use every range without testing. Presence itself is recorded by the
    /// caller before this runs.
    void update() {
        fillAbsentAuthority(userInfo, host, port, path);
        if (!query.present) {
            query.setEmptyAt(path.last);
        }
        if (!fragment.present) {
            fragment.setEmptyAt(query.last);
        }
    }
};

extern template struct Parts<std::wstring>;
extern template struct Parts<std::u16string>;
extern template struct HierarchicalPart<std::wstring>;

}  // namespace foundation::network::iri::detail
