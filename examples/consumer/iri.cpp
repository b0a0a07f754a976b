// Parse an IRI from UTF-8 text and read its parts.
#include <foundation/network/IRI.h>
#include <foundation/network/Utf8.h>

#include <iostream>
#include <stdexcept>

using namespace foundation::network;

int main() {
    const IRI iri(utf8ToUtf16("http://jörg@bücher.example:8080/a%20b/ä?q=1#top"));
    const iri::Encoding plain = iri::Encoding::decoded();  // 0: no escapes at all
    const iri::Encoding uri = iri::Encoding::ascii();      // 3: ASCII, UTF-8 escaped

    std::cout << utf16ToUtf8(iri.getScheme()) << "\n"          // http
              << utf16ToUtf8(iri.getUserInfo(plain)) << "\n"   // jörg
              << utf16ToUtf8(iri.getHost(plain)) << "\n"       // bücher.example
              << iri.getPortNumber() << "\n"                   // 8080
              << utf16ToUtf8(iri.getPath(plain)) << "\n"       // /a b/ä
              << utf16ToUtf8(iri.getPath(uri)) << "\n"         // /a%20b/%C3%A4
              << utf16ToUtf8(iri.getQuery(plain)) << "\n"      // q=1
              << utf16ToUtf8(iri.getAuthority(plain)) << "\n"  // jörg@bücher.example:8080
              << utf16ToUtf8(iri.toString()) << "\n";          // the text as given
    // operator<< writes the ASCII (URI) form, as toAsciiString() gives it:
    std::cout << iri << "\n";  // http://j%C3%B6rg@b%C3%BCcher.example:8080/a%20b/%C3%A4?q=1#top

    // Presence is asked, never guessed: an absent part throws std::runtime_error.
    const IRI relative(u"../up?x");
    std::cout << relative.isAbsolute() << relative.hasHost() << relative.hasQuery() << "\n";  // 001
    try {
        relative.getHost(plain);
    } catch (const std::runtime_error& e) {
        std::cout << e.what() << "\n";  // Item not set: Host
    }
    // Text that is no IRI reference throws std::logic_error.
    try {
        IRI(u"http://[::1");
    } catch (const std::logic_error& e) {
        std::cout << e.what() << "\n";  // IRI parsing failed
    }
}
