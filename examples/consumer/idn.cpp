// Host names between Unicode and ASCII (Punycode) form, after Unicode TS #46.
#include <foundation/network/IdnConverter.h>
#include <foundation/network/Utf8.h>

#include <iostream>

using namespace foundation::network;

int main() {
    const IdnConverter converter;  // one ICU engine: keep it (or copies) for many names
    for (const char* name : {"Bücher.example", "faß.de", "例え.jp"}) {
        std::cout << converter.toAscii(utf8ToUtf16(name)) << "\n";
    }  // xn--bcher-kva.example, fass.de, xn--r8jz45g.jp
    std::cout << utf16ToUtf8(converter.toUnicode("xn--bcher-kva.example"))
              << "\n";  // bücher.example

    // One-off conversions create and destroy an engine on every call.
    std::cout << idn_to_ascii(u"münchen.de") << " "                       // xn--mnchen-3ya.de
              << utf16ToUtf8(ascii_to_idn("xn--mnchen-3ya.de")) << "\n";  // münchen.de

    // Label errors do not throw: ICU marks the bad label in its result. Only an ICU error
    // code (say, out of memory) throws IdnConverterException, whose what() is ICU's name.
    try {
        std::cout << converter.toAscii(u"a..b") << "\n";  // a..b: an empty label, no exception
    } catch (const IdnConverterException& e) {
        std::cout << e.what() << "\n";
    }

    // Non-transitional processing, as browsers do, with STD3 rules and every check. The overloads
    // taking an IdnErrors say what ICU found, so that a caller can refuse the name instead.
    IdnOptions modern;
    modern.nontransitional = modern.useStd3Rules = modern.checkBidi = true;
    modern.checkContextJ = modern.checkContextO = true;
    const IdnConverter strict(modern);
    IdnErrors errors;
    std::cout << strict.toAscii(u"faß.de", errors) << " " << errors.empty()
              << "\n";                        // xn--fa-hia.de 1
    strict.toAscii(u"a_b..example", errors);  // ICU's text: a\uFFFDb..example
    if (errors.has(IdnErrors::EMPTY_LABEL)) {
        std::cout << errors.toString() << " (" << errors.bits() << ")\n";
    }  // EMPTY_LABEL, DISALLOWED (129)
    std::cout << utf16ToUtf8(strict.toUnicode("xn--fa-hia.de", errors)) << " "
              << errors.names().size() << "\n";  // faß.de 0
}
