/// @file
/// @brief The one exception of IDN conversion.
#pragma once

#include <exception>
#include <string>

#include "foundation/network/Export.h"

namespace foundation::network {

/// Thrown when ICU reports an error code (not a label error) while creating its UTS #46 engine
/// or converting a name. Kept deliberately outside the foundation::core::except family: it
/// derives from std::exception alone.
class FOUNDATION_NETWORK_API IdnConverterException : public std::exception {
public:
    /// Keeps `message`, ICU's name of the error code (such as "U_MEMORY_ALLOCATION_ERROR").
    /// Throws std::bad_alloc only if the string cannot be moved in (it never is: a move).
    explicit IdnConverterException(std::string message);
    ~IdnConverterException() override;

    /// The ICU error name, exactly as ICU spells it, with no prefix. Never throws.
    const char* what() const noexcept override;

private:
    std::string message_;
};

}  // namespace foundation::network
