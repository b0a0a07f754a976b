#include "foundation/network/IdnConverterException.h"

#include <utility>

namespace foundation::network {

IdnConverterException::IdnConverterException(std::string message) : message_(std::move(message)) {}

// Defined here so that the class's type information lives in the library alone, and a catch in
// a client matches the object thrown from inside the library.
IdnConverterException::~IdnConverterException() = default;

const char* IdnConverterException::what() const noexcept {
    return message_.c_str();
}

}  // namespace foundation::network
