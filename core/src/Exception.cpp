#include "foundation/core/except/Exception.h"

namespace foundation::core::except {

// Out-of-line destructors anchor the interfaces' type information in this library, so that
// a catch by interface works across shared-library boundaries.
IException::~IException() = default;
IInternalException::~IInternalException() = default;

}  // namespace foundation::core::except
