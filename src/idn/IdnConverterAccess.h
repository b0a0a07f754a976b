/// @file
/// @brief Internal view of an IdnConverter's shared state, for tests and tools.
#pragma once

#include <memory>

#include "foundation/network/IdnConverter.h"
#include "idn/IdnConverterImpl.h"

namespace foundation::network::detail {

struct IdnConverterAccess {
    /// The implementation shared by `converter` and its copies.
    static std::weak_ptr<const IdnConverterImpl> impl(const IdnConverter& converter) {
        return converter.impl_;
    }
    /// How many handles share `converter`'s implementation.
    static long useCount(const IdnConverter& converter) { return converter.impl_.use_count(); }
};

}  // namespace foundation::network::detail
