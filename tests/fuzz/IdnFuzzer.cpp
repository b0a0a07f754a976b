// IDN conversion in both directions from fuzz bytes. Only IdnConverterException may escape, the
// free functions agree with a converter, and the ASCII form converts back without any other
// exception. (The ASCII form may keep non-ASCII units where ICU reports label errors: kept.)
// A converter with every option gives the same text with and without its errors, and names
// each error bit once.

#include "foundation/network/IdnConverter.h"
#include "fuzz/FuzzSupport.h"

namespace {

using foundation::network::IdnConverter;

template <class Call>
auto guarded(Call call, const char* where) {
    return fnfuzz::attempt<foundation::network::IdnConverterException>(call, where);
}

IdnConverter everything() {
    foundation::network::IdnOptions options;
    options.nontransitional = options.useStd3Rules = options.checkBidi = true;
    options.checkContextJ = options.checkContextO = true;
    return IdnConverter(options);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const IdnConverter converter, checking = everything();
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::u16string name = fnfuzz::toUtf16(bytes);

    const auto ascii = guarded([&] { return converter.toAscii(name); }, "toAscii");
    FNFUZZ_CHECK(ascii ==
                 guarded([&] { return foundation::network::idn_to_ascii(name); }, "idn_to_ascii"));
    if (ascii) {
        (void)guarded([&] { return converter.toUnicode(*ascii); }, "toUnicode of an ASCII form");
    }
    FNFUZZ_CHECK(guarded([&] { return converter.toUnicode(bytes); }, "toUnicode") ==
                 guarded([&] { return foundation::network::ascii_to_idn(bytes); }, "ascii_to_idn"));

    foundation::network::IdnErrors errors;
    FNFUZZ_CHECK(guarded([&] { return checking.toAscii(name, errors); }, "toAscii with errors") ==
                 guarded([&] { return checking.toAscii(name); }, "toAscii"));
    FNFUZZ_CHECK(errors.names().size() ==
                 static_cast<std::size_t>(__builtin_popcount(errors.bits())));
    FNFUZZ_CHECK(errors.empty() == errors.toString().empty());
    return 0;
}
