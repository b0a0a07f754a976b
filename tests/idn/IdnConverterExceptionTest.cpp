#include "foundation/network/IdnConverterException.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <type_traits>

#include "foundation/core/except/Exception.h"

namespace {

using foundation::network::IdnConverterException;

static_assert(std::is_base_of_v<std::exception, IdnConverterException>);
static_assert(!std::is_base_of_v<std::runtime_error, IdnConverterException>);
static_assert(!std::is_base_of_v<std::logic_error, IdnConverterException>);
static_assert(!std::is_base_of_v<foundation::core::except::IException, IdnConverterException>);

TEST(IdnConverterExceptionTest, WhatIsTheIcuErrorNameExactly) {
    for (const char* name : {"U_MEMORY_ALLOCATION_ERROR", "U_ILLEGAL_ARGUMENT_ERROR", ""}) {
        try {
            throw IdnConverterException(name);
        } catch (const std::exception& e) {
            EXPECT_STREQ(e.what(), name);
            EXPECT_NE(dynamic_cast<const IdnConverterException*>(&e), nullptr);
        }
    }
}

}  // namespace
