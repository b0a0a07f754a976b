/// @file
/// @brief `HardwareAddress`: a link-layer (MAC) address.
#pragma once

#include <string>
#include <vector>

#include "foundation/network/Export.h"

namespace foundation::network {

/// The link-layer address bytes of an interface, in wire order; any length, empty when the
/// interface has none. A plain value: copies own their bytes.
class FOUNDATION_NETWORK_API HardwareAddress {
public:
    /// An empty address. Does not throw.
    HardwareAddress() = default;

    /// An address of these bytes. Does not throw (but for allocation).
    explicit HardwareAddress(std::vector<unsigned char> bytes);

    /// A copy of the bytes.
    std::vector<unsigned char> bytes() const;

    /// Each byte as two lower-case hexadecimal digits, joined by ':' (00:1a:2b:3c:4d:5e);
    /// empty for an empty address. Does not block.
    std::string toString() const;

private:
    std::vector<unsigned char> bytes_;
};

}  // namespace foundation::network
