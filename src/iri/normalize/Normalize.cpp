// IRI::normalize: each component's text rewritten step by step, the result parsed again so
// that it is an IRI like any other and reads back to itself.
#include <unicode/utf16.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "foundation/network/IRI.h"
#include "foundation/network/IdnConverter.h"
#include "foundation/network/IdnErrors.h"
#include "foundation/network/Normalization.h"
#include "foundation/network/Utf8.h"
#include "iri/IRIAccess.h"
#include "iri/grammar/CharacterRules.h"
#include "iri/normalize/Characters.h"
#include "iri/normalize/ComponentText.h"
#include "iri/normalize/Escapes.h"
#include "iri/path/DotSegments.h"

namespace foundation::network {
namespace {

using iri::detail::ComponentKind;
using iri::detail::ComponentText;
using iri::detail::Form;
using iri::detail::IRIAccess;
using iri::detail::isRegisteredName;
using iri::detail::lowerOutsideEscapes;
using iri::detail::normalizeEscapes;
using iri::detail::StringParts;

std::u16string lower(const std::u16string& text) {
    return lowerOutsideEscapes(text);
}

// Whether `text` is `name` (lower case ASCII) in any letter case.
bool isNamed(std::u16string_view text, std::u16string_view name) {
    if (text.size() != name.size()) {
        return false;
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t c = text[i] >= u'A' && text[i] <= u'Z' ? text[i] + (u'a' - u'A') : text[i];
        if (c != name[i]) {
            return false;
        }
    }
    return true;
}

// The default port of the schemes whose default is well known; 0 for the others.
unsigned defaultPort(std::u16string_view scheme) {
    if (isNamed(scheme, u"http") || isNamed(scheme, u"ws")) {
        return 80;
    }
    if (isNamed(scheme, u"https") || isNamed(scheme, u"wss")) {
        return 443;
    }
    return isNamed(scheme, u"ftp") ? 21 : 0;
}

bool emptyPathIsRoot(std::u16string_view scheme) {
    return isNamed(scheme, u"http") || isNamed(scheme, u"https") || isNamed(scheme, u"ws") ||
           isNamed(scheme, u"wss");
}

// Whether every character of `host` may stand in a registered name (iunreserved or a
// sub-delimiter); escapes are not expected here.
bool holdsRegisteredNameCharacters(std::u16string_view host) {
    namespace chars = iri::detail::irigrammar::chars;
    for (std::size_t i = 0; i < host.size(); ++i) {
        std::uint32_t c = host[i];
        if (U16_IS_LEAD(c) && i + 1 < host.size() && U16_IS_TRAIL(host[i + 1])) {
            c = U16_GET_SUPPLEMENTARY(c, host[++i]);
        }
        if (!chars::isIunreserved(c) && !chars::subDelimTest(c)) {
            return false;
        }
    }
    return true;
}

// The Unicode form of an IDN host, or the host unchanged when it is not a valid one or when
// its Unicode form could not stand as a host (compatibility mappings give delimiters: "\uFE38"
// becomes "}").
std::u16string unicodeHost(const std::u16string& host) {
    if (!isRegisteredName(host) || host.find(u'%') != std::u16string::npos) {
        return host;
    }
    static const IdnConverter converter;
    IdnErrors errors;
    std::u16string unicode = converter.toUnicode(utf16ToUtf8(host), errors);
    return errors.empty() && !unicode.empty() && holdsRegisteredNameCharacters(unicode) ? unicode
                                                                                        : host;
}

bool hasUpper(std::u16string_view text) {
    for (const char16_t c : text) {
        if (c >= u'A' && c <= u'Z') {
            return true;
        }
    }
    return false;
}

bool hasDotSegment(std::u16string_view path) {
    for (std::size_t start = 0; start <= path.size();) {
        std::size_t end = path.find(u'/', start);
        end = end == std::u16string_view::npos ? path.size() : end;
        const std::size_t length = end - start;
        if ((length == 1 || length == 2) && path[start] == u'.' && path[end - 1] == u'.') {
            return true;
        }
        start = end + 1;
    }
    return false;
}

// Whether the default steps would leave `iri` as it is, judged on its stored components
// (views, nothing copied): most IRIs met in practice are already normal, and a copy is cheaper
// than building a new value.
bool alreadyNormal(const IRI& iri, const iri::Normalization& how) {
    if (how.characters || how.host) {
        return false;
    }
    const auto& value = IRIAccess::impl(iri);
    const std::u16string_view whole = value.toNativeStringFromParts(iri::Encoding::iri());
    if ((how.letterCase || how.percentEncoding) && whole.find(u'%') != std::u16string_view::npos) {
        return false;
    }
    const std::u16string_view scheme = value.schemeText();
    const StringParts& parts = value.stringParts();
    const std::u16string_view host =
        parts.hasHost() ? parts.view(ComponentKind::Host, Form::Iri) : std::u16string_view();
    const std::u16string_view path = parts.storedPath(Form::Iri);
    if (how.letterCase &&
        (hasUpper(scheme) || (!host.empty() && host.front() != u'[' && hasUpper(host)))) {
        return false;
    }
    const bool hierarchical =
        iri.hasScheme() || iri.hasAuthority() || (!path.empty() && path.front() == u'/');
    if (how.pathSegments && hierarchical && hasDotSegment(path)) {
        return false;
    }
    if (how.schemeBased && iri.hasScheme()) {
        const unsigned number = defaultPort(scheme);
        if (number != 0 && iri.hasPort() && !value.portText().empty() &&
            iri.getPortNumber() == number) {
            return false;
        }
        if (iri.hasAuthority() && path.empty() && emptyPathIsRoot(scheme)) {
            return false;
        }
    }
    return true;
}

}  // namespace

IRI IRI::normalize(const iri::Normalization& how) const {
    if (isEmpty()) {
        return {};
    }
    if (alreadyNormal(*this, how)) {
        return *this;
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
        t.path = iri::detail::removeDotSegmentsOfText(t.path);
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
