/// @file
/// @brief `InetAddress`: one IPv4 or IPv6 address, optionally with the host name it was found
/// under, and the name lookups that produce it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "foundation/network/Export.h"

namespace foundation::network {

class InetAddressImpl;

/// An immutable IPv4 or IPv6 address value. Copies share one implementation object, so an
/// address is cheap to copy and may be read from any number of threads at once.
///
/// Two addresses are equal when their version, bytes and scope id are; the host name does not
/// count. `<` orders IPv4 before IPv6, then by bytes, then by scope id, and `std::hash` agrees
/// with `==`, so an address can key a `std::map` or a `std::unordered_set`.
///
/// The predicates judge an IPv4-mapped IPv6 address (::ffff:a.b.c.d) by the IPv6 rules, as the
/// system's socket calls see it: `InetAddress("::ffff:127.0.0.1").isLoopback()` is false. To ask
/// about the IPv4 address inside, test `isV4Mapped()` and ask `unmapped()`.
///
/// Lookups (`getByName`, `getAllByName`, `getLocalHost`, `getHostName` without a stored name,
/// `getCanonicalHostName`) run the system resolver synchronously on the calling thread and
/// block for as long as it takes; no time-out is imposed. Resolver failures are thrown as
/// `std::system_error` carrying the resolver's own error value, category and message.
class FOUNDATION_NETWORK_API InetAddress {
public:
    /// The IPv4 address 0.0.0.0 with an empty host name. Does not throw (but for allocation).
    InetAddress();

    /// The IPv4 address of these four bytes (network order). Does not throw.
    explicit InetAddress(std::array<unsigned char, 4> bytes);

    /// The IPv6 address of these sixteen bytes (network order), scope id 0. Does not throw.
    explicit InetAddress(std::array<unsigned char, 16> bytes);

    /// By size: no bytes give 0.0.0.0, four an IPv4 address, sixteen an IPv6 address.
    /// @throws std::invalid_argument for any other size: "Can not create InetAddress from N
    /// elements. Vector must have 0, 4 or 16 elements."
    explicit InetAddress(std::vector<unsigned char> bytes);

    /// Parses a numeric IPv4 or IPv6 literal (an IPv6 scope suffix after '%' is allowed).
    /// Never resolves names and never trims white space.
    /// @throws std::invalid_argument with the parser's message when the text is not a literal.
    explicit InetAddress(const std::string& text);

    /// Adopts an implementation and a host name (the library's lookup and interface code use
    /// it). Does not throw.
    InetAddress(std::shared_ptr<InetAddressImpl> impl, std::string hostName);

    /// The first address the resolver returns for `name`, carrying `name` as its host name.
    /// Blocks. @throws std::system_error when the resolver fails (an empty name gives
    /// "Host not found (authoritative)").
    static InetAddress getByName(const std::string& name);

    /// Every address the resolver returns for `name`, in its order, duplicates kept, each
    /// carrying `name`. Blocks. @throws std::system_error when the resolver fails.
    static std::vector<InetAddress> getAllByName(const std::string& name);

    /// `getByName(getLocalHostName())`. Blocks. @throws std::system_error.
    static InetAddress getLocalHost();

    /// 4 for an IPv4 address, 6 for an IPv6 address. Does not throw.
    int getVersion() const;

    /// IPv4: 127.0.0.0/8; IPv6: only ::1 (an IPv4-mapped address is not loopback).
    /// Does not throw.
    bool isLoopback() const;

    /// IPv4: 224.0.0.0/4; IPv6: first byte 0xff (IPv4-mapped addresses follow the IPv6 rule).
    /// Does not throw.
    bool isMulticast() const;

    /// IPv4: 0.0.0.0; IPv6: ::. Does not throw.
    bool isUnspecified() const;

    /// IPv4: 169.254.0.0/16; IPv6: fe80::/10. Does not throw.
    bool isLinkLocal() const;

    /// IPv4: the private ranges 10.0.0.0/8, 172.16.0.0/12 and 192.168.0.0/16; IPv6: the unique
    /// local addresses fc00::/7. Does not throw.
    bool isPrivate() const;

    /// Whether this is an IPv4-mapped IPv6 address, ::ffff:0:0/96. Does not throw.
    bool isV4Mapped() const;

    /// The IPv4 address inside an IPv4-mapped one (::ffff:192.0.2.1 gives 192.0.2.1), with the
    /// same host name. @throws std::invalid_argument "Not an IPv4-mapped address: TEXT" for any
    /// other address.
    InetAddress unmapped() const;

    /// The IPv6 scope id (an interface index; 0 when none), 0 for IPv4. Does not throw.
    std::uint32_t scopeId() const;

    /// A hash of the bytes and the scope id, the same for equal addresses. Does not throw.
    std::size_t hashValue() const noexcept;

    /// The numeric text of the address (an IPv6 scope id appended after '%'); never the host
    /// name. Does not block.
    std::string toString() const;

    /// The same text as `toString()`.
    std::string getHostAddress() const;

    /// A copy of the address bytes in network order: 4 or 16 of them, no scope id.
    std::vector<unsigned char> bytes() const;

    /// The stored host name, or else the result of a reverse lookup made on every call (an
    /// address with no name record gives its numeric text). May block.
    /// @throws std::system_error when the lookup fails.
    std::string getHostName() const;

    /// The canonical name the resolver reports for the reverse-lookup name of this address
    /// (a stored host name is not used). Blocks. @throws std::system_error.
    std::string getCanonicalHostName() const;

    /// Equal version, bytes and scope id; host names are not compared. Does not throw.
    friend FOUNDATION_NETWORK_API bool operator==(const InetAddress& a,
                                                  const InetAddress& b) noexcept;
    friend bool operator!=(const InetAddress& a, const InetAddress& b) noexcept {
        return !(a == b);
    }
    /// IPv4 before IPv6, then the bytes as unsigned numbers, then the scope id. Does not throw.
    friend FOUNDATION_NETWORK_API bool operator<(const InetAddress& a,
                                                 const InetAddress& b) noexcept;

private:
    friend FOUNDATION_NETWORK_API const InetAddressImpl& getInetAddressImpl(
        const InetAddress& address);

    std::shared_ptr<const InetAddressImpl> impl_;
    std::string hostName_;
};

/// The implementation object of `address`, for the library's own use. Does not throw.
FOUNDATION_NETWORK_API const InetAddressImpl& getInetAddressImpl(const InetAddress& address);

/// The host's own name as `gethostname` reports it. Does not block.
/// @throws std::system_error "Call to gethostname failed: <system message>" on failure.
FOUNDATION_NETWORK_API std::string getLocalHostName();

}  // namespace foundation::network

/// Hashes version, bytes and scope id (`InetAddress::hashValue`).
template <>
struct std::hash<foundation::network::InetAddress> {
    std::size_t operator()(const foundation::network::InetAddress& address) const noexcept {
        return address.hashValue();
    }
};
