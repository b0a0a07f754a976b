// IDN conversion in both directions from fuzz bytes. Only IdnConverterException may escape, the
// free functions agree with a converter, and the ASCII form converts back without any other
// exception. (The ASCII form may keep non-ASCII units where ICU reports label errors: kept.)
// A converter with every option gives the same text with and without its errors, and names
// each error bit once.
#include <cstddef>
#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <string_view>

#include "foundation/network/IdnConverter.h"
#include "foundation/network/IdnConverterException.h"
#include "fuzz/FuzzSupport.h"

namespace {

using foundation::network::IdnConverter;
using foundation::network::IdnConverterException;

template <class Call>
auto guarded(Call call, const char* where) -> std::optional<decltype(call())> {
    try {
        return call();
    } catch (const IdnConverterException&) {
        return std::nullopt;
    } catch (const std::exception& e) {
        fnfuzz::unexpected(e, where);
    }
}

void toAscii(const IdnConverter& converter, const std::u16string& name) {
    const auto ascii = guarded([&] { return converter.toAscii(name); }, "toAscii");
    const auto free =
        guarded([&] { return foundation::network::idn_to_ascii(name); }, "idn_to_ascii");
    FNFUZZ_CHECK(ascii == free);
    if (!ascii) {
        return;
    }
    (void)guarded([&] { return converter.toUnicode(*ascii); }, "toUnicode of an ASCII form");
}

void toUnicode(const IdnConverter& converter, const std::string& name) {
    const auto unicode = guarded([&] { return converter.toUnicode(name); }, "toUnicode");
    const auto free =
        guarded([&] { return foundation::network::ascii_to_idn(name); }, "ascii_to_idn");
    FNFUZZ_CHECK(unicode == free);
}

void strict(const IdnConverter& converter, const std::u16string& name) {
    foundation::network::IdnErrors errors;
    const auto withErrors =
        guarded([&] { return converter.toAscii(name, errors); }, "toAscii with errors");
    FNFUZZ_CHECK(withErrors == guarded([&] { return converter.toAscii(name); }, "toAscii"));
    FNFUZZ_CHECK(errors.names().size() ==
                 static_cast<std::size_t>(__builtin_popcount(errors.bits())));
    FNFUZZ_CHECK(errors.empty() == errors.toString().empty());
}

foundation::network::IdnOptions everything() {
    foundation::network::IdnOptions options;
    options.nontransitional = options.useStd3Rules = options.checkBidi = true;
    options.checkContextJ = options.checkContextO = true;
    return options;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const IdnConverter converter;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    toAscii(converter, fnfuzz::toUtf16(bytes));
    toUnicode(converter, std::string(bytes));
    static const IdnConverter checking(everything());
    strict(checking, fnfuzz::toUtf16(bytes));
    return 0;
}
