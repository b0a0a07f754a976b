#include "foundation/core/except/Exception.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using foundation::core::except::IException;
using foundation::core::except::IInternalException;
using foundation::core::except::detail::AnonymousInternalException;

// Catchable by the standard base, by std::exception and by the family's interfaces, with the
// same text everywhere.
template <class StdBase, class... Args>
void expectCatchableEverywhere(const std::string& text, Args&&... args) {
    const AnonymousInternalException<StdBase> error(std::forward<Args>(args)...);
    EXPECT_THROW(throw error, StdBase);
    EXPECT_THROW(throw error, IInternalException);
    EXPECT_EQ(static_cast<const IException&>(error).message(), text);
    EXPECT_EQ(static_cast<const std::exception&>(error).what(), text);
}

TEST(ExceptionTest, CatchableByStandardBaseAndByInterface) {
    expectCatchableEverywhere<std::logic_error>("IRI parsing failed", "IRI parsing failed");
    expectCatchableEverywhere<std::runtime_error>("No scheme", "No scheme");
    expectCatchableEverywhere<std::out_of_range>("too far", "too far");
    // invalid_argument is a logic_error: a caller catching the wider base still sees it.
    expectCatchableEverywhere<std::logic_error>("bad", std::invalid_argument("bad"));
    const std::error_code code(ENOENT, std::system_category());
    expectCatchableEverywhere<std::system_error>(
        "Call to getifaddrs failed: " + std::system_category().message(ENOENT), code,
        "Call to getifaddrs failed");
    EXPECT_EQ(AnonymousInternalException<std::system_error>(code, "x").code(), code);
    EXPECT_THROW(throw AnonymousInternalException<std::invalid_argument>("x"), std::logic_error);
}

}  // namespace
