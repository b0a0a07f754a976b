#include "inet/ResolverError.h"

#include <gtest/gtest.h>

#include <boost/asio/error.hpp>

#include "foundation/core/except/Exception.h"

namespace {

std::system_error thrown(const boost::system::error_code& code) {
    try {
        foundation::network::throwResolverError(code);
    } catch (const foundation::core::except::IInternalException& e) {
        const auto* error = dynamic_cast<const std::system_error*>(&e);
        if (error != nullptr) {
            return *error;
        }
    }
    ADD_FAILURE() << "not an internal std::system_error";
    return std::system_error(std::error_code());
}

TEST(ResolverErrorTest, BoostCategoriesMapToStandardOnesWithTheMessageAlone) {
    namespace error = boost::asio::error;
    struct Case {
        boost::system::error_code code;
        std::string categoryName;
        std::string message;
    };
    const std::vector<Case> cases = {
        {error::host_not_found, "asio.netdb", "Host not found (authoritative)"},
        {error::host_not_found_try_again, "asio.netdb",
         "Host not found (non-authoritative), try again later"},
        {error::no_data, "asio.netdb", "The query is valid, but it does not have associated data"},
        {error::no_recovery, "asio.netdb",
         "A non-recoverable error occurred during database lookup"},
        {error::service_not_found, "asio.addrinfo", "Service not found"},
        {error::socket_type_not_supported, "asio.addrinfo", "Socket type not supported"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.message);
        const std::system_error e = thrown(c.code);
        EXPECT_EQ(e.code().value(), c.code.value());
        EXPECT_STREQ(e.code().category().name(), c.categoryName.c_str());
        EXPECT_EQ(e.code().message(), c.message);
        EXPECT_EQ(std::string(e.what()), c.message);  // no "resolve: " in front
    }
}

TEST(ResolverErrorTest, SystemAndGenericCodesKeepTheStandardCategories) {
    const std::system_error system =
        thrown(boost::system::error_code(ECONNREFUSED, boost::system::system_category()));
    EXPECT_EQ(system.code(), std::error_code(ECONNREFUSED, std::system_category()));
    EXPECT_EQ(std::string(system.what()), std::system_category().message(ECONNREFUSED));

    const std::system_error generic =
        thrown(boost::system::error_code(EINVAL, boost::system::generic_category()));
    EXPECT_EQ(generic.code(), std::error_code(EINVAL, std::generic_category()));
}

}  // namespace
