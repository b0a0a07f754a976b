#include "foundation/network/HardwareAddress.h"

namespace foundation::network {

HardwareAddress::HardwareAddress(std::vector<unsigned char> bytes) : bytes_(std::move(bytes)) {}

std::vector<unsigned char> HardwareAddress::bytes() const {
    return bytes_;
}

std::string HardwareAddress::toString() const {
    static constexpr char kHex[] = "0123456789abcdef";
    std::string text;
    text.reserve(bytes_.size() * 3);
    for (const unsigned char byte : bytes_) {
        if (!text.empty()) {
            text += ':';
        }
        text += kHex[byte >> 4];
        text += kHex[byte & 0x0F];
    }
    return text;
}

}  // namespace foundation::network
