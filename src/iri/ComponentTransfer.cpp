// Component groups of a result under construction, taken from one of the operands.
//
// Every component moves in its IRI form (Encoding 1), so no escape is decoded or added on the
// way. The flags are set at once; the text is read in the operand when finishFlags writes it with
// the rest of the result.
#include "iri/TemplateIRI.h"

namespace foundation::network::iri::detail {

template <class String>
void TemplateIRI<String>::takeSchemeFrom(const TemplateIRI& from, Assembly& into) {
    into.scheme = &from.parts;
    flags.schemePresent = true;
}

// User info, host and port, each only where `from` has it.
template <class String>
void TemplateIRI<String>::takeAuthorityFrom(const TemplateIRI& from, Assembly& into) {
    into.authority = &from.parts;
    if (from.flags.userInfoPresent) {
        into.userInfo = true;
        flags.userInfoPresent = true;
    }
    if (from.flags.hostPresent) {
        into.host = true;
        flags.hostPresent = true;
    }
    if (from.flags.portPresent) {
        into.port = true;
        portNumber = from.portNumber;
        flags.portPresent = true;
    }
}

// A query moves with its option.
template <class String>
void TemplateIRI<String>::takeQueryFrom(const TemplateIRI& from, Assembly& into) {
    if (from.flags.queryPresent) {
        flags.queryOption = from.flags.queryOption;
        into.query = &from.parts;
        into.queryAsOctets = from.flags.queryOption;
        flags.queryPresent = true;
    }
}

template <class String>
void TemplateIRI<String>::takeFragmentFrom(const TemplateIRI& from, Assembly& into) {
    if (from.flags.fragmentPresent) {
        into.fragment = &from.parts;
        flags.fragmentPresent = true;
    }
}

template void TemplateIRI<std::wstring>::takeSchemeFrom(const TemplateIRI&, Assembly&);
template void TemplateIRI<std::wstring>::takeAuthorityFrom(const TemplateIRI&, Assembly&);
template void TemplateIRI<std::wstring>::takeQueryFrom(const TemplateIRI&, Assembly&);
template void TemplateIRI<std::wstring>::takeFragmentFrom(const TemplateIRI&, Assembly&);

}  // namespace foundation::network::iri::detail
