#include "iri/StringParts.h"

#include <stdexcept>
#include <string_view>
#include <utility>

#include "foundation/core/except/Exception.h"

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

namespace {

// Reads one component, turning its runtime errors into the suffixed text.
const std::wstring& read(const std::optional<Component>& slot, const Encoding& encoding,
                         std::string_view suffix) {
    const Form form = formOf(encoding);
    try {
        if (!slot) {
            throw std::runtime_error("Item not set");
        }
        return slot->get(form);
    } catch (const std::runtime_error& e) {
        throw std::runtime_error(std::string(e.what()).append(suffix));
    }
}

}  // namespace

StringParts::StringParts() noexcept {
    bindSlots();
}

StringParts::StringParts(const StringParts& other)
    : userInfo(other.userInfo),
      host(other.host),
      path(other.path),
      query(other.query),
      fragment(other.fragment),
      empty(other.empty) {
    bindSlots();
}

StringParts::StringParts(StringParts&& other) noexcept
    : userInfo(std::move(other.userInfo)),
      host(std::move(other.host)),
      path(std::move(other.path)),
      query(std::move(other.query)),
      fragment(std::move(other.fragment)),
      empty(other.empty) {
    bindSlots();
}

StringParts& StringParts::operator=(const StringParts& other) {
    if (this != &other) {
        StringParts copy(other);
        swap(copy);
    }
    return *this;
}

StringParts& StringParts::operator=(StringParts&& other) noexcept {
    if (this != &other) {
        StringParts moved(std::move(other));
        swap(moved);
    }
    return *this;
}

void StringParts::swap(StringParts& other) noexcept {
    userInfo.swap(other.userInfo);
    host.swap(other.host);
    path.swap(other.path);
    query.swap(other.query);
    fragment.swap(other.fragment);
    std::swap(empty, other.empty);
}

void StringParts::bindSlots() noexcept {
    slots = {&fragment, &query, &path, &host, &userInfo};
}

const std::wstring& StringParts::getUserInfo(const Encoding& encoding) const {
    return read(userInfo, encoding, ": UserInfo");
}
const std::wstring& StringParts::getHost(const Encoding& encoding) const {
    return read(host, encoding, ": Host");
}
const std::wstring& StringParts::getPath(const Encoding& encoding) const {
    return read(path, encoding, ": Path");
}
const std::wstring& StringParts::getQuery(const Encoding& encoding) const {
    return read(query, encoding, ": Query");
}
const std::wstring& StringParts::getFragment(const Encoding& encoding) const {
    return read(fragment, encoding, ": Fragment");
}

std::wstring StringParts::getAuthority(const Encoding& encoding) const {
    std::wstring authority;
    if (userInfo) {
        authority = getUserInfo(encoding);
        authority.push_back(L'@');
    }
    try {
        authority += getHost(encoding);
    } catch (const std::runtime_error& e) {
        throw std::runtime_error(std::string(e.what()) + ": Host (in getAuthority)");
    }
    return authority;
}

void StringParts::setComponent(Slot& slot, ComponentKind kind, std::wstring value,
                               const Encoding& encoding) {
    const Form form = formOf(encoding);
    Component component(kind, slot ? slot->options() : ComponentOptions{});
    component.set(std::move(value), form);
    slot.reset();
    slot.emplace(std::move(component));
}

void StringParts::changePathOptions(bool ComponentOptions::*option, bool value) {
    if (path) {
        ComponentOptions options = path->options();
        options.*option = value;
        path->setOptions(options);
    }
}

void StringParts::setUserInfo(std::wstring value, const Encoding& encoding) {
    setComponent(userInfo, ComponentKind::UserInfo, std::move(value), encoding);
    empty = false;
    changePathOptions(&ComponentOptions::userInfoPresent, true);
}

void StringParts::setHost(std::wstring value, const Encoding& encoding) {
    setComponent(host, ComponentKind::Host, std::move(value), encoding);
    empty = false;
    changePathOptions(&ComponentOptions::hostPresent, true);
}

void StringParts::setPath(std::wstring value, const Encoding& encoding) {
    const bool nonEmpty = !value.empty();
    setComponent(path, ComponentKind::Path, std::move(value), encoding);
    // Options are only ever raised here, from what precedes the path.
    if (userInfo) {
        changePathOptions(&ComponentOptions::userInfoPresent, true);
    }
    if (host) {
        changePathOptions(&ComponentOptions::hostPresent, true);
    }
    if (nonEmpty) {
        empty = false;
    }
}

void StringParts::setQuery(std::wstring value, const Encoding& encoding, bool option) {
    setComponent(query, ComponentKind::Query, std::move(value), encoding);
    empty = false;
    if (option) {
        ComponentOptions options = query->options();
        options.asOctets = true;
        query->setOptions(options);
    }
}

void StringParts::setFragment(std::wstring value, const Encoding& encoding) {
    setComponent(fragment, ComponentKind::Fragment, std::move(value), encoding);
    empty = false;
}

void StringParts::setSchemePresent(bool present) {
    changePathOptions(&ComponentOptions::schemePresent, present);
}

bool StringParts::operator==(const StringParts& other) const {
    if (empty && other.empty) {
        return true;
    }
    const Slot* const mine[] = {&userInfo, &host, &path, &query, &fragment};
    const Slot* const theirs[] = {&other.userInfo, &other.host, &other.path, &other.query,
                                  &other.fragment};
    for (std::size_t i = 0; i < 5; ++i) {
        if (mine[i]->has_value() != theirs[i]->has_value()) {
            return false;
        }
        if (mine[i]->has_value() && **mine[i] != **theirs[i]) {
            return false;
        }
    }
    return true;
}

void StringParts::reset() noexcept {
    for (auto it = slots.rbegin(); it != slots.rend(); ++it) {
        (*it)->reset();
    }
    empty = true;
}

}  // namespace foundation::network::iri::detail
