#include "iri/path/DotSegments.h"

#include <string_view>

namespace foundation::network::iri::detail {
namespace {

bool startsWith(std::u16string_view s, std::u16string_view prefix) {
    return s.substr(0, prefix.size()) == prefix;
}

void dropLastSegment(std::u16string& out) {
    const std::size_t slash = out.rfind(u'/');
    out.erase(slash == std::u16string::npos ? 0 : slash);
}

}  // namespace

std::u16string removeDotSegmentsOfText(std::u16string_view path) {
    if (path.find(u'.') == std::u16string_view::npos) {
        return std::u16string(path);
    }
    std::u16string_view in(path);
    std::u16string out;
    out.reserve(path.size());
    while (!in.empty()) {
        if (startsWith(in, u"../")) {
            in.remove_prefix(3);
        } else if (startsWith(in, u"./") || startsWith(in, u"/./")) {
            in.remove_prefix(2);
        } else if (in == u"/.") {
            in = u"/";
        } else if (startsWith(in, u"/../")) {
            in.remove_prefix(3);
            dropLastSegment(out);
        } else if (in == u"/..") {
            in = u"/";
            dropLastSegment(out);
        } else if (in == u"." || in == u"..") {
            in = {};
        } else {
            const std::size_t next = in.find(u'/', 1);
            const std::size_t length = next == std::u16string_view::npos ? in.size() : next;
            out.append(in.substr(0, length));
            in.remove_prefix(length);
        }
    }
    return out;
}

}  // namespace foundation::network::iri::detail
