#include "foundation/network/IRIArgs.h"

#include "iri/grammar/Unicode.h"

namespace foundation::network {
namespace {

// Converts first, so that a failed conversion leaves the record unchanged.
void assign(std::wstring& field, bool& flag, const std::u16string& value) {
    field = iri::detail::utf16ToCodePoints(value);
    flag = true;
}

}  // namespace

IRIArgs& IRIArgs::setScheme(const std::u16string& value) {
    assign(scheme, schemeSet, value);
    return *this;
}

IRIArgs& IRIArgs::setUserInfo(const std::u16string& value) {
    assign(userInfo, userInfoSet, value);
    return *this;
}

IRIArgs& IRIArgs::setHost(const std::u16string& value) {
    assign(host, hostSet, value);
    return *this;
}

IRIArgs& IRIArgs::setPath(const std::u16string& value) {
    assign(path, pathSet, value);
    return *this;
}

IRIArgs& IRIArgs::setQuery(const std::u16string& value) {
    assign(query, querySet, value);
    return *this;
}

IRIArgs& IRIArgs::setFragment(const std::u16string& value) {
    assign(fragment, fragmentSet, value);
    return *this;
}

IRIArgs& IRIArgs::setPort(std::uint16_t value) {
    port = value;
    portSet = true;
    return *this;
}

}  // namespace foundation::network
