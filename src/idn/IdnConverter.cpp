#include "foundation/network/IdnConverter.h"

#include "idn/IdnConverterImpl.h"

namespace foundation::network {

IdnConverter::IdnConverter() : impl_(std::make_shared<IdnConverterImpl>()) {}

std::string IdnConverter::toAscii(const std::u16string& name) const {
    const std::u16string ascii = impl_->convert(&icu::IDNA::nameToASCII, name);
    if (ascii.empty()) {
        return {};
    }
    // Characters ICU left in Unicode (labels with errors) come out as UTF-8.
    return impl_->toNarrow().do_convert(ascii.data(), ascii.size());
}

std::u16string IdnConverter::toUnicode(const std::string& name) const {
    const std::u16string wide =
        name.empty() ? std::u16string() : impl_->toWide().do_convert(name.data(), name.size());
    return impl_->convert(&icu::IDNA::nameToUnicode, wide);
}

std::string idn_to_ascii(const std::u16string& name) {
    return IdnConverter().toAscii(name);
}

std::u16string ascii_to_idn(const std::string& name) {
    return IdnConverter().toUnicode(name);
}

}  // namespace foundation::network
