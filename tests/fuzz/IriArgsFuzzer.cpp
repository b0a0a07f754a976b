// Builds an IRI from an IRIArgs record filled from fuzz bytes. Building either succeeds or
// refuses with one of its four texts; a built IRI's texts read back, and taken apart with toArgs
// it builds an equal IRI.
// Input: one byte of flags (which fields are given, schemeChecked, queryAsOctets), two bytes of
// port, then the scheme, user info, host, path, query and fragment separated by newlines.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "foundation/network/IRI.h"
#include "foundation/network/IRIArgs.h"
#include "fuzz/FuzzSupport.h"
#include "fuzz/IriProperties.h"

namespace {

using foundation::network::IRI;
using foundation::network::IRIArgs;

constexpr std::string_view kRefusals[] = {
    "Malformed scheme",
    "User Info requires a host",
    "Port requires a host",
    "Path cannot be relative if authority present",
};

using Setter = IRIArgs& (IRIArgs::*)(const std::u16string&);

// A setter converts its UTF-16 argument first: invalid UTF-16 leaves the record unchanged.
void set(IRIArgs& args, Setter setter, const bool& flag, std::string_view bytes) {
    const std::u16string value = fnfuzz::toUtf16(bytes);
    try {
        (args.*setter)(value);
        FNFUZZ_CHECK(flag);
    } catch (const std::out_of_range& e) {
        FNFUZZ_CHECK(fnfuzz::isConversionError(e) && !fnfuzz::isValidUtf16(value) && !flag);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3) {
        return 0;
    }
    const std::uint8_t flags = data[0];
    const auto port = static_cast<std::uint16_t>(data[1] << 8 | data[2]);
    std::vector<std::string_view> fields;
    std::string_view rest(reinterpret_cast<const char*>(data + 3), size - 3);
    for (std::size_t i = 0; i < 6; ++i) {
        const std::size_t end = rest.find('\n');
        fields.push_back(rest.substr(0, end));
        rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    }

    IRIArgs args;
    const Setter setters[] = {&IRIArgs::setScheme, &IRIArgs::setUserInfo, &IRIArgs::setHost,
                              &IRIArgs::setPath,   &IRIArgs::setQuery,    &IRIArgs::setFragment};
    const bool* setFlags[] = {&args.schemeSet, &args.userInfoSet, &args.hostSet,
                              &args.pathSet,   &args.querySet,    &args.fragmentSet};
    for (std::size_t i = 0; i < 6; ++i) {
        if ((flags & (1u << i)) != 0) {
            set(args, setters[i], *setFlags[i], fields[i]);
        }
    }
    if ((flags & 0x40) != 0) {
        args.setPort(port);
    }
    args.queryAsOctets = (flags & 0x80) != 0;

    IRI built;
    try {
        built = IRI(args);
    } catch (const std::out_of_range& e) {
        fnfuzz::unexpected(e, "building from arguments");
    } catch (const std::logic_error& e) {
        FNFUZZ_CHECK(std::find(std::begin(kRefusals), std::end(kRefusals), e.what()) !=
                     std::end(kRefusals));
        return 0;
    }
    fnfuzz::checkTextReadsBack(built);

    IRIArgs back;
    built.toArgs(back);
    // Kept deliberately: toArgs hands back a query stored as UTF-8 octets together with
    // queryAsOctets, and building re-expresses those octets once more. Rebuilding the same value
    // takes the octets as they stand, with the query option.
    if (back.queryAsOctets &&
        std::any_of(back.query.begin(), back.query.end(), [](wchar_t c) { return c >= 0x80; })) {
        back.queryAsOctets = false;
        back.queryOption = true;
    }
    const IRI rebuilt(back);
    FNFUZZ_CHECK(rebuilt == built && rebuilt.hashValue() == built.hashValue());
    fnfuzz::checkKeys(rebuilt, built);
    return 0;
}
