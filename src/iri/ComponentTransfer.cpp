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
    parts.setScheme(from.parts.scheme());
    schemePresent = true;
}

// User info, host and port, each only where `from` has it.
template <class String>
void TemplateIRI<String>::takeAuthorityFrom(const TemplateIRI& from) {
    if (from.userInfoPresent) {
        parts.set(ComponentKind::UserInfo, from.parts.view(ComponentKind::UserInfo, kIriForm),
                  Form::Iri);
        userInfoPresent = true;
    }
    if (from.hostPresent) {
        parts.set(ComponentKind::Host, from.parts.view(ComponentKind::Host, kIriForm), Form::Iri);
        hostPresent = true;
    }
    if (from.portPresent) {
        parts.setPort(from.parts.port());
        portNumber = from.portNumber;
        portPresent = true;
    }
}

// A query moves with its option.
template <class String>
void TemplateIRI<String>::takeQueryFrom(const TemplateIRI& from) {
    if (from.queryPresent) {
        queryOption = from.queryOption;
        parts.set(ComponentKind::Query, from.parts.view(ComponentKind::Query, kIriForm), Form::Iri);
        if (from.queryOption) {
            parts.setQueryAsOctets();
        }
        queryPresent = true;
    }
}

template <class String>
void TemplateIRI<String>::takeFragmentFrom(const TemplateIRI& from) {
    if (from.fragmentPresent) {
        parts.set(ComponentKind::Fragment, from.parts.view(ComponentKind::Fragment, kIriForm),
                  Form::Iri);
        fragmentPresent = true;
    }
}

template void TemplateIRI<std::wstring>::takeSchemeFrom(const TemplateIRI&);
template void TemplateIRI<std::wstring>::takeAuthorityFrom(const TemplateIRI&);
template void TemplateIRI<std::wstring>::takeQueryFrom(const TemplateIRI&);
template void TemplateIRI<std::wstring>::takeFragmentFrom(const TemplateIRI&);

}  // namespace foundation::network::iri::detail
