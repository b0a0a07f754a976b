// The UTF-8 door: the library speaks UTF-16; most programs hold UTF-8.
#include <foundation/network/Utf8.h>

#include <iostream>
#include <stdexcept>

using namespace foundation::network;

int main() {
    const std::u16string wide = utf8ToUtf16("bücher 📚");           // 📚 takes two UTF-16 units
    std::cout << wide.size() << " " << utf16ToUtf8(wide) << "\n";  // 9 bücher 📚

    // Strict both ways: std::invalid_argument (of the foundation::core::except family).
    try {
        utf8ToUtf16("ab\xC3");  // cut short
    } catch (const std::invalid_argument& e) {
        std::cout << e.what() << "\n";  // invalid UTF-8 at byte 2
    }
    try {
        utf16ToUtf8(u"x\xD800");
    } catch (const std::invalid_argument& e) {
        std::cout << e.what() << "\n";  // unpaired UTF-16 surrogate at index 1
    }
    // For text that must be shown whatever it holds: U+FFFD per ill-formed part.
    std::cout << utf16ToUtf8(utf8ToUtf16Replacing("ab\xC3")) << "\n";  // ab�
}
