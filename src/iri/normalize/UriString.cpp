// IRI::toUriString: the ASCII form with a registered-name host in the form DNS resolves.
#include <stdexcept>
#include <string>

#include "foundation/core/except/Exception.h"
#include "foundation/network/IRI.h"
#include "foundation/network/IdnConverter.h"
#include "foundation/network/IdnErrors.h"
#include "foundation/network/Utf8.h"
#include "iri/normalize/ComponentText.h"
#include "text/Text.h"

namespace foundation::network {
namespace {

using foundation::core::except::detail::AnonymousInternalException;

bool allowedInHost(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::string("-._~!$&'()*+,;=").find(c) != std::string::npos;
}

std::u16string asciiHost(const IRI& iri, const IdnConverter& idn) {
    const std::u16string host = iri.getHost(iri::Encoding::decoded());
    IdnErrors errors;
    const std::string ascii = idn.toAscii(host, errors);
    if (!errors.empty() || !text::isAscii(ascii) || ascii.empty()) {
        throw AnonymousInternalException<std::invalid_argument>(
            "Host has no ASCII form: " + utf16ToUtf8(host) +
            (errors.empty() ? std::string() : " (" + errors.toString() + ")"));
    }
    // What UTS #46 lets through without STD3 rules (a space, say) is escaped, as in any host.
    std::u16string out;
    for (const char c : ascii) {
        if (allowedInHost(c)) {
            out.push_back(static_cast<char16_t>(c));
        } else {
            text::appendPercentEscape(out, static_cast<unsigned char>(c));
        }
    }
    return out;
}

}  // namespace

std::u16string IRI::toUriString(const IdnConverter& idn) const {
    if (isEmpty()) {
        return {};
    }
    iri::detail::ComponentText t = iri::detail::componentText(*this, iri::Encoding::ascii());
    if (hasHost() && iri::detail::isRegisteredName(getHost(iri::Encoding::iri()))) {
        t.host = asciiHost(*this, idn);
    }
    return iri::detail::assemble(t);
}

}  // namespace foundation::network
