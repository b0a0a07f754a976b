// Parsing: the grammar's ranges over the text become the value's flags and component ranges.
#include <stdexcept>

#include "foundation/core/except/Exception.h"
#include "iri/TemplateIRI.h"
#include "iri/Utf16.h"
#include "iri/grammar/IriGrammar.h"
#include "iri/grammar/Port.h"
#include "iri/path/PathSegments.h"

namespace foundation::network::iri::detail {

namespace {

[[noreturn]] void throwParsingFailed() {
    throw core::except::detail::AnonymousInternalException<std::logic_error>("IRI parsing failed");
}

}  // namespace

template <class String>
void TemplateIRI<String>::parse(const std::u16string& utf16) {
    if (utf16.empty()) {
        parts.setPath(String(), Encoding(1));
        flags.pathEmpty = true;
        textIsCurrent.store(true);
        return;
    }
    textIsCurrent.store(true, std::memory_order_relaxed);  // the value is not shared yet
    empty.store(false, std::memory_order_relaxed);
    // The grammar reads the UTF-16 text itself, a surrogate pair as one code point; an unpaired
    // surrogate matches no rule, and its own error is the one reported.
    Parts<std::u16string> found;
    if (!irigrammar::parseString<std::u16string>(utf16.cbegin(), utf16.cend(), found)) {
        (void)widen(utf16);
        throwParsingFailed();
    }
    setPartFlags(found, utf16);
    if (flags.portPresent) {
        unsigned short number = 0;
        const std::u16string_view digits(utf16.data() + found.port.first,
                                         found.port.last - found.port.first);
        if (!portStringToNumeric(digits, number)) {
            throwParsingFailed();
        }
        portNumber = number;
    }
    if (!found.scheme.present) {
        found.scheme.setEmptyAt(0);
    }
    found.update();
    parts.adoptText(utf16);
    setStringParts(found);
}

template <class String>
template <class Found>
void TemplateIRI<String>::setPartFlags(const Found& found, std::u16string_view text) {
    flags.schemePresent = found.scheme.present;
    flags.queryPresent = found.query.present;
    flags.fragmentPresent = found.fragment.present;
    flags.hostPresent = found.host.present;
    flags.userInfoPresent = found.userInfo.present;
    flags.authorityPresent = flags.hostPresent;
    flags.portPresent = found.port.present;
    flags.pathEmpty = !found.path.present || found.path.empty();
    flags.absolutePath =
        found.path.present && !found.path.empty() && text[found.path.first] == FORWARD_SLASH;
    if (flags.schemePresent) {
        flags.absolute = true;
        if (!flags.authorityPresent) {
            flags.opaque = !flags.absolutePath;
        }
    }
}

// The ranges found, offsets into the text.
template <class String>
template <class Found>
void TemplateIRI<String>::setStringParts(const Found& found) {
    const auto place = [&](ComponentKind kind, const auto& range) {
        parts.setRange(kind, range.first, range.last);
    };
    place(ComponentKind::Path, found.path);
    parts.setSchemePresent(flags.schemePresent);
    if (flags.userInfoPresent) {
        place(ComponentKind::UserInfo, found.userInfo);
    }
    if (flags.hostPresent) {
        place(ComponentKind::Host, found.host);
    }
    if (flags.queryPresent) {
        place(ComponentKind::Query, found.query);
    }
    if (flags.fragmentPresent) {
        place(ComponentKind::Fragment, found.fragment);
    }
    if (flags.schemePresent) {
        parts.setSchemeRange(found.scheme.first, found.scheme.last);
    }
    if (flags.portPresent) {
        parts.setPortRange(found.port.first, found.port.last);
    }
    // Looked for on first use: most parsed values are never resolved or made relative.
    pathFacts.store(flags.pathEmpty ? kEmptyPathFacts : 0, std::memory_order_relaxed);
}

template void TemplateIRI<std::wstring>::parse(const std::u16string&);

}  // namespace foundation::network::iri::detail
