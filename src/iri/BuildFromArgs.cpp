// Building an IRI from separately given components, and taking one apart again.
//
// Component values in the record are plain characters (Encoding 0); the IRI derives the
// escaped forms. The checks run in a fixed order, so a record with user info, a port and a
// relative path but no host fails with "User Info requires a host".
#include <stdexcept>
#include <string>

#include "foundation/core/except/Exception.h"
#include "iri/TemplateIRI.h"
#include "iri/Utf16.h"
#include "iri/grammar/IriGrammar.h"
#include "iri/grammar/Unicode.h"
#include "iri/path/PathSegments.h"

namespace foundation::network::iri::detail {
namespace {

using core::except::detail::AnonymousInternalException;

constexpr Encoding kPlainForm(0);

[[noreturn]] void refuse(const char* message) {
    throw AnonymousInternalException<std::logic_error>(message);
}

}  // namespace

template <class String>
TemplateIRI<String>::TemplateIRI(const ArgsBase<String>& args) {
    flags.schemePresent = args.schemeSet;
    flags.queryPresent = args.querySet;
    flags.fragmentPresent = args.fragmentSet;
    flags.portPresent = args.portSet;
    flags.hostPresent = args.hostSet;
    flags.userInfoPresent = args.userInfoSet;
    buildFromArgs(args);
}

template <class String>
void TemplateIRI<String>::buildFromArgs(const ArgsBase<String>& args) {
    if (flags.schemePresent) {
        buildScheme(args);
    }
    if (flags.userInfoPresent) {
        buildUserInfo(args);
    }
    if (flags.hostPresent) {
        buildHost(args);
    }
    if (flags.portPresent) {
        buildPort(args);
    }
    buildPath(args);
    if (flags.queryPresent) {
        buildQuery(args);
    }
    if (flags.fragmentPresent) {
        buildFragment(args);
    }
    empty.store(parts.isEmpty() && !flags.schemePresent && !flags.portPresent,
                std::memory_order_relaxed);
    flags.authorityPresent = flags.hostPresent;
    if (args.pathSet) {
        flags.absolutePath = !args.path.empty() && args.path.front() == FORWARD_SLASH;
    }
    if (flags.schemePresent) {
        flags.absolute = true;
        if (!flags.authorityPresent) {
            flags.opaque = !flags.absolutePath;
        }
    }
}

template <class String>
void TemplateIRI<String>::buildScheme(const ArgsBase<String>& args) {
    if (!args.schemeChecked &&
        !irigrammar::parseScheme<String>(args.scheme.cbegin(), args.scheme.cend())) {
        refuse("Malformed scheme");
    }
    parts.setScheme(narrow(args.scheme));
}

template <class String>
void TemplateIRI<String>::buildUserInfo(const ArgsBase<String>& args) {
    if (!flags.hostPresent) {
        refuse("User Info requires a host");
    }
    parts.setUserInfo(args.userInfo, kPlainForm);
}

template <class String>
void TemplateIRI<String>::buildHost(const ArgsBase<String>& args) {
    parts.setHost(args.host, kPlainForm);
}

template <class String>
void TemplateIRI<String>::buildPort(const ArgsBase<String>& args) {
    if (!flags.hostPresent) {
        refuse("Port requires a host");
    }
    portNumber = args.port;
    const std::string digits = std::to_string(args.port);
    parts.setPort(std::u16string(digits.begin(), digits.end()));
}

template <class String>
void TemplateIRI<String>::buildPath(const ArgsBase<String>& args) {
    if (args.pathSet) {
        if (flags.hostPresent && !args.path.empty() && args.path.front() != FORWARD_SLASH) {
            refuse("Path cannot be relative if authority present");
        }
        flags.pathEmpty = args.path.empty();
        parts.setPath(args.path, kPlainForm);
        if (flags.schemePresent) {
            parts.setSchemePresent(true);
        }
    } else {
        parts.setPath(String(), kPlainForm);
        flags.pathEmpty = true;
    }
    setPathHasDotSegments(args.pathSet && !args.path.empty() && containsDotSegments(args.path));
}

template <class String>
void TemplateIRI<String>::buildQuery(const ArgsBase<String>& args) {
    if (args.queryAsOctets) {
        flags.queryOption = true;
        parts.setQuery(codePointsToUtf8Octets(args.query), kPlainForm, true);
        return;
    }
    if (args.queryOption) {
        flags.queryOption = true;
    }
    parts.setQuery(args.query, kPlainForm, flags.queryOption);
}

template <class String>
void TemplateIRI<String>::buildFragment(const ArgsBase<String>& args) {
    parts.setFragment(args.fragment, kPlainForm);
}

template <class String>
void TemplateIRI<String>::toArgs(ArgsBase<String>& args) const {
    if (flags.schemePresent) {
        args.scheme = widen(parts.scheme());
        args.schemeSet = true;
        args.schemeChecked = true;
    }
    setArgsAuthority(args);
    if (flags.userInfoPresent) {
        args.userInfoFromIri = true;
    }
    if (flags.hostPresent) {
        args.hostFromIri = true;
    }
    args.path = widen(parts.storedPath(formOf(kPlainForm)));
    args.pathSet = true;
    args.pathFromIri = true;
    setArgsQuery(args);
    setArgsFragment(args);
}

template <class String>
void TemplateIRI<String>::setArgsAuthority(ArgsBase<String>& args) const {
    if (!flags.authorityPresent) {
        return;
    }
    if (flags.userInfoPresent) {
        args.userInfo = parts.getUserInfo(kPlainForm);
        args.userInfoSet = true;
        args.userInfoFromIri = false;
    }
    args.host = parts.getHost(kPlainForm);
    args.hostSet = true;
    args.hostFromIri = false;
    if (flags.portPresent) {
        args.port = portNumber;
        args.portSet = true;
    }
}

template <class String>
void TemplateIRI<String>::setArgsQuery(ArgsBase<String>& args) const {
    if (flags.queryPresent) {
        args.query = parts.getQuery(kPlainForm);
        args.querySet = true;
    } else {
        args.querySet = false;
        args.query.clear();
    }
    args.queryFromIri = true;
    args.queryAsOctets = flags.queryOption;
    args.queryOption = false;
}

template <class String>
void TemplateIRI<String>::setArgsFragment(ArgsBase<String>& args) const {
    if (flags.fragmentPresent) {
        args.fragment = parts.getFragment(kPlainForm);
        args.fragmentSet = true;
    } else {
        args.fragmentSet = false;
        args.fragment.clear();
    }
    args.fragmentFromIri = true;
}

using Args = ArgsBase<std::wstring>;
template TemplateIRI<std::wstring>::TemplateIRI(const Args&);
template void TemplateIRI<std::wstring>::buildFromArgs(const Args&);
template void TemplateIRI<std::wstring>::buildScheme(const Args&);
template void TemplateIRI<std::wstring>::buildUserInfo(const Args&);
template void TemplateIRI<std::wstring>::buildHost(const Args&);
template void TemplateIRI<std::wstring>::buildPort(const Args&);
template void TemplateIRI<std::wstring>::buildPath(const Args&);
template void TemplateIRI<std::wstring>::buildQuery(const Args&);
template void TemplateIRI<std::wstring>::buildFragment(const Args&);
template void TemplateIRI<std::wstring>::toArgs(Args&) const;
template void TemplateIRI<std::wstring>::setArgsAuthority(Args&) const;
template void TemplateIRI<std::wstring>::setArgsQuery(Args&) const;
template void TemplateIRI<std::wstring>::setArgsFragment(Args&) const;

}  // namespace foundation::network::iri::detail
