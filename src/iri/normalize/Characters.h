// Unicode Normalization Form C of IRI text.
#pragma once

#include <string>

namespace foundation::network::iri::detail {

/// `text` in Normalization Form C (ICU's normaliser). ASCII text is returned as it is.
std::u16string toNfc(const std::u16string& text);

}  // namespace foundation::network::iri::detail
