#include "iri/normalize/ComponentText.h"

#include "foundation/network/IRI.h"

namespace foundation::network::iri::detail {

ComponentText componentText(const IRI& iri, const Encoding& encoding) {
    ComponentText t;
    t.hasScheme = iri.hasScheme();
    t.hasAuthority = iri.hasAuthority();
    t.hasUserInfo = iri.hasUserInfo();
    t.hasPort = iri.hasPort();
    t.hasQuery = iri.hasQuery();
    t.hasFragment = iri.hasFragment();
    if (t.hasScheme) {
        t.scheme = iri.getScheme();
    }
    if (t.hasUserInfo) {
        t.userInfo = iri.getUserInfo(encoding);
    }
    if (iri.hasHost()) {
        t.host = iri.getHost(encoding);
    }
    if (t.hasPort) {
        t.port = iri.getPort();
    }
    t.path = iri.getPath(encoding);
    if (t.hasQuery) {
        t.query = iri.getQuery(encoding);
    }
    if (t.hasFragment) {
        t.fragment = iri.getFragment(encoding);
    }
    return t;
}

std::u16string assemble(const ComponentText& t) {
    std::u16string out;
    if (t.hasScheme) {
        out.append(t.scheme).push_back(u':');
    }
    if (t.hasAuthority) {
        out.append(u"//");
        if (t.hasUserInfo) {
            out.append(t.userInfo).push_back(u'@');
        }
        out.append(t.host);
        if (t.hasPort) {
            out.append(u":").append(t.port);
        }
    }
    out.append(t.path);
    if (t.hasQuery) {
        out.append(u"?").append(t.query);
    }
    if (t.hasFragment) {
        out.append(u"#").append(t.fragment);
    }
    return out;
}

bool isRegisteredName(const std::u16string& host) {
    return !host.empty() && host.front() != u'[';
}

}  // namespace foundation::network::iri::detail
