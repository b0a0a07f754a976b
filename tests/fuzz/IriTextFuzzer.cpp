// Parses fuzz text as an IRI and checks, on success, every reading of it: each getter in each
// Encoding, each serialisation, the round trips of toString and toAsciiString, and that copying,
// moving, swapping and clearing keep equality and hash, and normalisation's properties.
#include <sstream>

#include "foundation/network/Normalization.h"
#include "fuzz/IriProperties.h"

namespace {

using fnfuzz::Encoding;
using fnfuzz::IRI;

// Calls a getter: it must answer when the component is present and refuse with `absent`
// otherwise. An encoded form may meet an escape that decodes to no valid code point; that is the
// conversion error, allowed where `conversions`.
template <class Call>
void readComponent(Call call, bool present, const char* absent, bool conversions = true) {
    try {
        call();
        FNFUZZ_CHECK(present);
    } catch (const std::out_of_range& e) {
        FNFUZZ_CHECK(conversions && fnfuzz::isConversionError(e));
    } catch (const std::runtime_error& e) {
        FNFUZZ_CHECK(!present && fnfuzz::startsWith(e.what(), absent));
    }
}

void readEverything(const IRI& iri) {
    FNFUZZ_CHECK(!(iri.hasUserInfo() || iri.hasPort()) || iri.hasHost());
    FNFUZZ_CHECK(iri.hasAuthority() == iri.hasHost() && iri.isAbsolute() == iri.hasScheme());
    (void)iri.isOpaque();
    readComponent([&] { FNFUZZ_CHECK(!iri.getScheme().empty()); }, iri.hasScheme(), "No scheme",
                  false);
    readComponent([&] { (void)iri.getPort(), (void)iri.getPortNumber(); }, iri.hasPort(), "No port",
                  false);
    for (std::uint32_t value = 0; value <= 4; ++value) {
        const Encoding encoding(value);
        const auto read = [&](auto getter, bool present) {
            readComponent([&] { (void)(iri.*getter)(encoding); }, present, "Item not set");
        };
        read(&IRI::getUserInfo, iri.hasUserInfo()), read(&IRI::getHost, iri.hasHost());
        read(&IRI::getAuthority, iri.hasHost()), read(&IRI::getQuery, iri.hasQuery());
        read(&IRI::getFragment, iri.hasFragment()), read(&IRI::getPath, !iri.isEmpty());
        read(&IRI::getSchemeSpecificPart, !iri.isEmpty());
        // Only the decoded form (0) may meet the conversion error.
        readComponent([&] { (void)iri.toStringFromParts(encoding); }, true, "", value == 0);
    }
    (void)(std::ostringstream() << iri);
}

// toAsciiString(false) is ASCII after the scheme (a scheme may hold non-ASCII letters), parses
// again, and a second round changes nothing.
void checkAsciiRoundTrip(const IRI& iri) {
    const std::u16string ascii = iri.toAsciiString(false);
    for (std::size_t i = iri.hasScheme() ? iri.getScheme().size() : 0; i < ascii.size(); ++i) {
        FNFUZZ_CHECK(ascii[i] < 0x80);
    }
    (void)iri.toAsciiString(true), (void)iri.toString(true);
    // Kept: such an IP literal's URI form does not parse (see fnfuzz::hasNonAsciiIpLiteral).
    if (!fnfuzz::hasNonAsciiIpLiteral(iri)) {
        const std::u16string second = IRI(ascii).toAsciiString(false);
        FNFUZZ_CHECK(IRI(second).toAsciiString(false) == second);
    }
}

void checkValueSemantics(const IRI& iri) {
    const auto same = [&iri](const IRI& other) {
        return other == iri && !(other != iri) && !(other < iri) && !(iri < other) &&
               other.hashValue() == iri.hashValue() && other.toString(false) == iri.toString(false);
    };
    IRI copy(iri), other;
    FNFUZZ_CHECK(same(copy));
    IRI moved(std::move(copy));
    other.swap(moved);
    FNFUZZ_CHECK(same(other) && moved.isEmpty() && moved == IRI() &&
                 moved.hashValue() == IRI().hashValue());
    IRI assigned;
    assigned = other;
    FNFUZZ_CHECK(same(assigned));
    assigned.clear();
    FNFUZZ_CHECK(assigned.isEmpty() && assigned == IRI() && iri.isEmpty() == (iri == IRI()));
}

// Normalising, with the default steps and with every step, never fails, gives a value whose
// texts read back, and a second normalisation changes nothing.
void checkNormalization(const IRI& iri) {
    foundation::network::iri::Normalization every;
    every.characters = every.host = true;
    for (const auto& how : {foundation::network::iri::Normalization{}, every}) {
        const auto normal =
            fnfuzz::attempt<fnfuzz::Never>([&] { return iri.normalize(how); }, "normalize");
        fnfuzz::checkTextReadsBack(*normal);
        FNFUZZ_CHECK(normal->normalize(how).toString(false) == normal->toString(false));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::u16string text = fnfuzz::toUtf16({reinterpret_cast<const char*>(data), size});
    IRI iri;
    try {
        iri = IRI(text);
    } catch (const std::out_of_range& e) {
        FNFUZZ_CHECK(fnfuzz::isConversionError(e) && !fnfuzz::isValidUtf16(text));
        return 0;
    } catch (const std::logic_error& e) {
        FNFUZZ_CHECK(std::string(e.what()) == "IRI parsing failed");
        return 0;
    }
    FNFUZZ_CHECK(fnfuzz::isValidUtf16(text) && iri.toString(false) == text);
    readEverything(iri);
    checkAsciiRoundTrip(iri);
    checkValueSemantics(iri);
    checkNormalization(iri);
    FNFUZZ_CHECK(iri.toString(false) == text);
    return 0;
}
