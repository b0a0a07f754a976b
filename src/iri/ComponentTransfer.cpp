// Copying component groups from one IRI value into a result under construction.
//
// Every component moves in its IRI form (Encoding 1), so no escape is decoded or added on the way.
#include "iri/TemplateIRI.h"

namespace foundation::network::iri::detail {
namespace {

constexpr Encoding kIriForm(1);

}  // namespace

template <class String>
void TemplateIRI<String>::takeSchemeFrom(const TemplateIRI& from) {
    scheme = from.scheme;
    schemeUtf16 = from.schemeUtf16;
    schemePresent = true;
}

// User info, host and port, each only where `from` has it.
template <class String>
void TemplateIRI<String>::takeAuthorityFrom(const TemplateIRI& from) {
    if (from.userInfoPresent) {
        parts.setUserInfo(from.parts.getUserInfo(kIriForm), kIriForm);
        userInfoPresent = true;
    }
    if (from.hostPresent) {
        parts.setHost(from.parts.getHost(kIriForm), kIriForm);
        hostPresent = true;
    }
    if (from.portPresent) {
        port = from.port;
        portUtf16 = from.portUtf16;
        portNumber = from.portNumber;
        portPresent = true;
    }
}

// A query moves with its option.
template <class String>
void TemplateIRI<String>::takeQueryFrom(const TemplateIRI& from) {
    if (from.queryPresent) {
        queryOption = from.queryOption;
        parts.setQuery(from.parts.getQuery(kIriForm), kIriForm, from.queryOption);
        queryPresent = true;
    }
}

template <class String>
void TemplateIRI<String>::takeFragmentFrom(const TemplateIRI& from) {
    if (from.fragmentPresent) {
        parts.setFragment(from.parts.getFragment(kIriForm), kIriForm);
        fragmentPresent = true;
    }
}

template void TemplateIRI<std::wstring>::takeSchemeFrom(const TemplateIRI&);
template void TemplateIRI<std::wstring>::takeAuthorityFrom(const TemplateIRI&);
template void TemplateIRI<std::wstring>::takeQueryFrom(const TemplateIRI&);
template void TemplateIRI<std::wstring>::takeFragmentFrom(const TemplateIRI&);

}  // namespace foundation::network::iri::detail
