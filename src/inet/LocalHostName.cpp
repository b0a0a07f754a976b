#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "foundation/core/except/Exception.h"
#include "foundation/network/InetAddress.h"

namespace foundation::network {

std::string getLocalHostName() {
    char buffer[256] = {};
    if (::gethostname(buffer, sizeof buffer) != 0) {
        throw foundation::core::except::detail::AnonymousInternalException<std::system_error>(
            std::error_code(errno, std::system_category()), "Call to gethostname failed");
    }
    // gethostname need not terminate a truncated name; the last byte stays NUL.
    buffer[sizeof buffer - 1] = '\0';
    return buffer;
}

}  // namespace foundation::network
