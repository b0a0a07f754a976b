#include "inet/ResolverError.h"

#include <system_error>

#include "foundation/core/except/Exception.h"

namespace foundation::network {

void throwResolverError(const boost::system::error_code& code) {
    // Boost's own bridge to <system_error> does exactly the mapping wanted: system and generic
    // go to their standard twins, any other category is wrapped by a forwarding category.
    const std::error_category& category = code.category();
    // std::system_error(code) alone keeps what() to the message, without Boost's "resolve: ".
    throw foundation::core::except::detail::AnonymousInternalException<std::system_error>(
        std::error_code(code.value(), category));
}

}  // namespace foundation::network
