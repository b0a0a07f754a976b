// IRI::toUriString: the ASCII form with a registered-name host in the form DNS resolves.
#include <algorithm>
#include <stdexcept>
#include <string>

#include "foundation/core/except/Exception.h"
#include "foundation/network/IRI.h"
#include "foundation/network/IdnConverter.h"
#include "foundation/network/IdnErrors.h"
#include "foundation/network/Utf8.h"
#include "iri/normalize/ComponentText.h"

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
    const bool isAscii = std::all_of(ascii.begin(), ascii.end(),
                                     [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    if (!errors.empty() || !isAscii || ascii.empty()) {
        throw AnonymousInternalException<std::invalid_argument>(
            "Host has no ASCII form: " + utf16ToUtf8(host) +
            (errors.empty() ? std::string() : " (" + errors.toString() + ")"));
    }
    // What UTS #46 lets through without STD3 rules (a space, say) is escaped, as in any host.
    static constexpr char kHex[] = "0123456789ABCDEF";
    std::u16string out;
    for (const char c : ascii) {
        if (allowedInHost(c)) {
            out.push_back(static_cast<char16_t>(c));
        } else {
            const auto byte = static_cast<unsigned char>(c);
            out += {u'%', static_cast<char16_t>(kHex[byte >> 4]),
                    static_cast<char16_t>(kHex[byte & 0xF])};
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
