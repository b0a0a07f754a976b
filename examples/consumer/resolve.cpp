// Resolve references, make one relative, build an IRI from parts, compare and hash.
#include <foundation/network/IRI.h>
#include <foundation/network/IRIArgs.h>
#include <foundation/network/Utf8.h>

#include <iostream>
#include <stdexcept>
#include <unordered_set>

using namespace foundation::network;

int main() {
    const IRI base(u"http://a/b/c/d;p?q");
    for (const char* reference : {"g", "../g", "?y", "#s", "//h/ü"}) {
        const IRI target = IRI(utf8ToUtf16(reference)).resolveAgainst(base);
        std::cout << reference << " -> " << utf16ToUtf8(target.toString()) << "\n";
    }  // g -> http://a/b/c/g, ../g -> http://a/b/g, ?y -> http://a/b/c/d;p?y ...

    const IRI page(u"http://a/b/x/y");
    const IRI relative = page.makeRelativeTo(IRI(u"http://a/b/c/"));
    std::cout << relative << "\n";                                                  // ../x/y
    std::cout << (relative.resolveAgainst(IRI(u"http://a/b/c/")) == page) << "\n";  // 1
    try {
        page.makeRelativeTo(IRI(u"/no/scheme"));
    } catch (const std::logic_error& e) {
        std::cout << e.what() << "\n";  // Cannot make relative. Base is relative
    }

    // Components go in unescaped; the IRI escapes what needs it.
    const IRI built(IRIArgs()
                        .setScheme(u"http")
                        .setHost(u"example.org")
                        .setPort(8080)
                        .setPath(u"/a b")
                        .setQuery(u"é"));
    std::cout << utf16ToUtf8(built.toString()) << "\n";       // http://example.org:8080/a%20b?é
    const IRIArgs parts(built);                               // and back: parts.path == L"/a b"
    std::cout << parts.hostSet << parts.fragmentSet << "\n";  // 10

    // Values compare by text, order by text and hash once; they are keys as they are.
    const std::unordered_set<IRI> seen{IRI(u"http://h/a"), IRI(u"http://h/a"), IRI(u"http://h/b")};
    std::cout << seen.size() << (IRI(u"http://h/a") < IRI(u"http://h/b")) << "\n";  // 21
    std::cout << std::hex << built.hashValue() << "\n";
}
