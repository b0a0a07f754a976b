// IRI::normalize: each component's text rewritten step by step, the result parsed again so
// that it is an IRI like any other and reads back to itself.
#include <string>

#include "foundation/network/IRI.h"
#include "foundation/network/IdnConverter.h"
#include "foundation/network/IdnErrors.h"
#include "foundation/network/Normalization.h"
#include "foundation/network/Utf8.h"
#include "iri/normalize/Characters.h"
#include "iri/normalize/ComponentText.h"
#include "iri/normalize/DotSegments.h"
#include "iri/normalize/Escapes.h"

namespace foundation::network {
namespace {

using iri::detail::ComponentText;
using iri::detail::isRegisteredName;
using iri::detail::lowerOutsideEscapes;
using iri::detail::normalizeEscapes;

std::u16string lower(std::u16string text) {
    return lowerOutsideEscapes(text);
}

// The default port of the schemes whose default is well known; 0 for the others.
unsigned defaultPort(const std::u16string& scheme) {
    const std::u16string s = lower(scheme);
    if (s == u"http" || s == u"ws") {
        return 80;
    }
    if (s == u"https" || s == u"wss") {
        return 443;
    }
    return s == u"ftp" ? 21 : 0;
}

bool emptyPathIsRoot(const std::u16string& scheme) {
    const std::u16string s = lower(scheme);
    return s == u"http" || s == u"https" || s == u"ws" || s == u"wss";
}

// The Unicode form of an IDN host, or the host unchanged when it is not a valid one.
std::u16string unicodeHost(const std::u16string& host) {
    if (!isRegisteredName(host) || host.find(u'%') != std::u16string::npos) {
        return host;
    }
    static const IdnConverter converter;
    IdnErrors errors;
    std::u16string unicode = converter.toUnicode(utf16ToUtf8(host), errors);
    return errors.empty() && !unicode.empty() ? unicode : host;
}

}  // namespace

IRI IRI::normalize(const iri::Normalization& how) const {
    if (isEmpty()) {
        return {};
    }
    ComponentText t = iri::detail::componentText(*this, iri::Encoding::iri());

    if (how.letterCase || how.percentEncoding) {
        for (std::u16string* part : {&t.userInfo, &t.host, &t.path, &t.query, &t.fragment}) {
            *part = normalizeEscapes(*part, how.letterCase, how.percentEncoding);
        }
    }
    if (how.characters) {
        for (std::u16string* part : {&t.userInfo, &t.host, &t.path, &t.query, &t.fragment}) {
            *part = iri::detail::toNfc(*part);
        }
    }
    if (how.host) {
        t.host = unicodeHost(t.host);
    }
    if (how.letterCase) {
        t.scheme = lower(t.scheme);
        if (isRegisteredName(t.host)) {
            t.host = lowerOutsideEscapes(t.host);
        }
    }
    const bool hierarchical =
        t.hasScheme || t.hasAuthority || (!t.path.empty() && t.path.front() == u'/');
    if (how.pathSegments && hierarchical) {
        t.path = iri::detail::removeDotSegments(t.path);
        // A path beginning with "//" would read back as an authority.
        if (!t.hasAuthority && t.path.size() >= 2 && t.path[0] == u'/' && t.path[1] == u'/') {
            t.path.insert(0, u"/.");
        }
    }
    if (how.schemeBased && t.hasScheme) {
        const unsigned port = defaultPort(t.scheme);
        if (t.hasPort && port != 0 && !t.port.empty() && getPortNumber() == port) {
            t.hasPort = false;
        }
        if (t.hasAuthority && t.path.empty() && emptyPathIsRoot(t.scheme)) {
            t.path = u"/";
        }
    }
    return IRI(iri::detail::assemble(t));
}

}  // namespace foundation::network
