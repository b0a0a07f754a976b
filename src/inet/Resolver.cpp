#include "inet/Resolver.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>

#include "inet/ResolverError.h"

namespace foundation::network::resolver {

namespace {

using boost::asio::ip::tcp;

// The system never reports success with no entries; should it do so anyway, that is treated
// as the name not existing rather than indexing an empty list.
void requireEntries(const tcp::resolver::results_type& results) {
    if (results.empty()) {
        throwResolverError(boost::asio::error::host_not_found);
    }
}

// tcp gives the hints SOCK_STREAM and IPPROTO_TCP with AF_UNSPEC; `flags` are the only ai_flags.
tcp::resolver::results_type query(const std::string& name, tcp::resolver::flags flags) {
    boost::asio::io_context context;
    tcp::resolver resolver(context);
    boost::system::error_code error;
    auto results = resolver.resolve(name, std::string(), flags, error);
    if (error) {
        throwResolverError(error);
    }
    return results;
}

}  // namespace

std::vector<boost::asio::ip::address> forward(const std::string& name) {
    const auto results = query(name, tcp::resolver::address_configured);
    std::vector<boost::asio::ip::address> addresses;
    addresses.reserve(results.size());
    for (const auto& entry : results) {
        // The endpoint's address keeps an IPv6 answer's scope id.
        addresses.push_back(entry.endpoint().address());
    }
    return addresses;
}

std::string reverse(const boost::asio::ip::address& address) {
    boost::asio::io_context context;
    tcp::resolver resolver(context);
    boost::system::error_code error;
    const auto results = resolver.resolve(tcp::endpoint(address, 0), error);
    if (error) {
        throwResolverError(error);
    }
    requireEntries(results);
    return results.begin()->host_name();
}

std::string canonical(const std::string& name) {
    const auto results = query(name, tcp::resolver::canonical_name);
    requireEntries(results);
    return results.begin()->host_name();
}

}  // namespace foundation::network::resolver
