#include "AddressInput.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>
#include <string>

namespace fnet {

using foundation::network::InetAddress;
using foundation::network::InterfaceAddress;

InetAddress readAddress(std::string_view text) {
    try {
        return InetAddress(std::string(text));
    } catch (const std::invalid_argument&) {
        // The parser's own words name no address form ("Invalid argument").
        throw std::invalid_argument("not an IPv4 or IPv6 address");
    }
}

AddressInput readAddressInput(std::string_view text) {
    const std::size_t slash = text.rfind('/');
    AddressInput input{readAddress(text.substr(0, slash)), std::nullopt};
    if (slash == std::string_view::npos) {
        return input;
    }
    const std::string_view digits = text.substr(slash + 1);
    const unsigned most = input.address.getVersion() == 4 ? 32 : 128;
    unsigned length = 0;
    const auto [end, code] = std::from_chars(digits.data(), digits.data() + digits.size(), length);
    if (digits.empty() || end != digits.data() + digits.size() ||
        !std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; })) {
        throw std::invalid_argument("prefix length is not a number");
    }
    if (code != std::errc() || length > most) {
        throw std::invalid_argument("prefix length above " + std::to_string(most));
    }
    input.network.emplace(input.address, static_cast<unsigned short>(length));
    return input;
}

}  // namespace fnet
