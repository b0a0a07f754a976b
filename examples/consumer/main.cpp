// Uses the installed library through its public headers only.
#include <foundation/network/IdnConverter.h>

#include <iostream>

int main() {
    using namespace foundation::network;
    const IdnConverter converter;  // one engine, reused for every name
    const std::string ascii = converter.toAscii(u"B\u00fccher.example");
    std::cout << "IDN: " << ascii << "\n";
    return ascii == "xn--bcher-kva.example" ? 0 : 1;
}
