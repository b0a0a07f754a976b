// Builds an IRI from an IRIArgs record filled from fuzz bytes. Building either succeeds or
// refuses with one of its four texts; a built IRI's texts read back, and taken apart with toArgs
// it builds an equal IRI.
// Input: one byte of flags (which fields are given, schemeChecked, queryAsOctets), two bytes of
// port, then the scheme, user info, host, path, query and fragment separated by newlines.

#include "foundation/network/IRIArgs.h"
#include "fuzz/IriProperties.h"

using fnfuzz::IRI;
using foundation::network::IRIArgs;

// The refusals of building.
constexpr std::string_view kRefusals[] = {
    "Malformed scheme",
    "User Info requires a host",
    "Port requires a host",
    "Path cannot be relative if authority present",
};

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3) {
        return 0;
    }
    std::string_view rest(reinterpret_cast<const char*>(data + 3), size - 3);
    IRIArgs args;
    using Setter = IRIArgs& (IRIArgs::*)(const std::u16string&);
    const std::pair<Setter, const bool*> fields[] = {
        {&IRIArgs::setScheme, &args.schemeSet}, {&IRIArgs::setUserInfo, &args.userInfoSet},
        {&IRIArgs::setHost, &args.hostSet},     {&IRIArgs::setPath, &args.pathSet},
        {&IRIArgs::setQuery, &args.querySet},   {&IRIArgs::setFragment, &args.fragmentSet}};
    for (std::size_t i = 0; i < 6; ++i) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        const std::u16string value = fnfuzz::toUtf16(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if ((data[0] & (1u << i)) == 0) {
            continue;
        }
        // A setter converts its UTF-16 argument first: invalid UTF-16 leaves the record unchanged.
        try {
            (args.*fields[i].first)(value);
            FNFUZZ_CHECK(*fields[i].second);
        } catch (const std::out_of_range& e) {
            FNFUZZ_CHECK(fnfuzz::isConversionError(e) && !fnfuzz::isValidUtf16(value) &&
                         !*fields[i].second);
        }
    }
    if ((data[0] & 0x40) != 0) {
        args.setPort(static_cast<std::uint16_t>(data[1] << 8 | data[2]));
    }
    args.queryAsOctets = (data[0] & 0x80) != 0;

    IRI built;
    try {
        built = IRI(args);
    } catch (const std::out_of_range& e) {
        fnfuzz::fail(e.what(), "building from arguments");
    } catch (const std::logic_error& e) {
        FNFUZZ_CHECK(fnfuzz::isOneOf(e.what(), kRefusals));
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
        back.queryAsOctets = false, back.queryOption = true;
    }
    const IRI rebuilt(back);
    FNFUZZ_CHECK(rebuilt == built && rebuilt.hashValue() == built.hashValue());
    fnfuzz::checkKeys(rebuilt, built);
    return 0;
}
