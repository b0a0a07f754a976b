#include "foundation/core/except/Exception.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using foundation::core::except::IException;
using foundation::core::except::IInternalException;
using foundation::core::except::detail::AnonymousInternalException;

template <class StdBase>
void expectCatchableEverywhere(const char* text) {
    const auto throwIt = [&] { throw AnonymousInternalException<StdBase>(text); };
    EXPECT_THROW(throwIt(), StdBase);
    EXPECT_THROW(throwIt(), std::exception);
    EXPECT_THROW(throwIt(), IInternalException);
    try {
        throwIt();
    } catch (const IException& e) {
        EXPECT_STREQ(e.message(), text);
        EXPECT_STREQ(dynamic_cast<const std::exception&>(e).what(), text);
    }
}

TEST(ExceptionTest, CatchableByStandardBaseAndByInterface) {
    expectCatchableEverywhere<std::logic_error>("IRI parsing failed");
    expectCatchableEverywhere<std::runtime_error>("No scheme");
    expectCatchableEverywhere<std::invalid_argument>("bad address");
    expectCatchableEverywhere<std::out_of_range>("too far");
    // invalid_argument is a logic_error: a caller catching the wider base still sees it.
    EXPECT_THROW(throw AnonymousInternalException<std::invalid_argument>("x"), std::logic_error);
}

TEST(ExceptionTest, SystemErrorReadsTextColonMessage) {
    const std::error_code code(ENOENT, std::system_category());
    const AnonymousInternalException<std::system_error> error(code, "Call to getifaddrs failed");
    EXPECT_EQ(error.code(), code);
    EXPECT_EQ(std::string(error.what()),
              "Call to getifaddrs failed: " + std::system_category().message(ENOENT));
    EXPECT_THROW(throw error, std::system_error);
}

TEST(ExceptionTest, BuiltFromStandardObjectKeepsItsText) {
    const AnonymousInternalException<std::logic_error> error(std::logic_error("Malformed scheme"));
    EXPECT_STREQ(error.what(), "Malformed scheme");
}

}  // namespace
