#include "foundation/network/IdnConverter.h"

#include <utility>

#include "idn/IdnConverterImpl.h"

namespace foundation::network {

namespace {

// ICU's option bits for a choice of processing.
uint32_t icuOptions(const IdnOptions& options) {
    const std::pair<bool, uint32_t> choices[] = {
        {options.nontransitional,
         UIDNA_NONTRANSITIONAL_TO_ASCII | UIDNA_NONTRANSITIONAL_TO_UNICODE},
        {options.useStd3Rules, UIDNA_USE_STD3_RULES},
        {options.checkBidi, UIDNA_CHECK_BIDI},
        {options.checkContextJ, UIDNA_CHECK_CONTEXTJ},
        {options.checkContextO, UIDNA_CHECK_CONTEXTO},
    };
    uint32_t bits = UIDNA_DEFAULT;
    for (const auto& [chosen, bit] : choices) {
        bits |= chosen ? bit : 0;
    }
    return bits;
}

std::string toAsciiWith(const IdnConverterImpl& impl, const std::u16string& name,
                        uint32_t* errors) {
    const std::u16string ascii = impl.convert(&icu::IDNA::nameToASCII, name, errors);
    if (ascii.empty()) {
        return {};
    }
    // Characters ICU left in Unicode (labels with errors) come out as UTF-8.
    return impl.toNarrow().do_convert(ascii.data(), ascii.size());
}

std::u16string toUnicodeWith(const IdnConverterImpl& impl, const std::string& name,
                             uint32_t* errors) {
    const std::u16string wide =
        name.empty() ? std::u16string() : impl.toWide().do_convert(name.data(), name.size());
    return impl.convert(&icu::IDNA::nameToUnicode, wide, errors);
}

}  // namespace

IdnConverter::IdnConverter() : impl_(std::make_shared<IdnConverterImpl>()) {}

IdnConverter::IdnConverter(const IdnOptions& options)
    : impl_(std::make_shared<IdnConverterImpl>(icuOptions(options))) {}

std::string IdnConverter::toAscii(const std::u16string& name) const {
    return toAsciiWith(*impl_, name, nullptr);
}

std::string IdnConverter::toAscii(const std::u16string& name, IdnErrors& errors) const {
    uint32_t bits = 0;
    std::string ascii = toAsciiWith(*impl_, name, &bits);
    errors = IdnErrors(bits);
    return ascii;
}

std::u16string IdnConverter::toUnicode(const std::string& name) const {
    return toUnicodeWith(*impl_, name, nullptr);
}

std::u16string IdnConverter::toUnicode(const std::string& name, IdnErrors& errors) const {
    uint32_t bits = 0;
    std::u16string unicode = toUnicodeWith(*impl_, name, &bits);
    errors = IdnErrors(bits);
    return unicode;
}

std::string idn_to_ascii(const std::u16string& name) {
    return IdnConverter().toAscii(name);
}

std::u16string ascii_to_idn(const std::string& name) {
    return IdnConverter().toUnicode(name);
}

}  // namespace foundation::network
