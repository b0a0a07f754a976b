#include "iri/grammar/Parts.h"

namespace foundation::network::iri::detail {

template struct Parts<std::wstring>;
template struct Parts<std::u16string>;

}  // namespace foundation::network::iri::detail
