// Parses fuzz text as an IRI and checks, on success, every reading of it: each getter in each
// Encoding, each serialisation, the round trips of toString and toAsciiString, and that copying,
// moving, swapping and clearing keep equality and hash, and normalisation's properties.
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>

#include "foundation/network/IRI.h"
#include "foundation/network/Normalization.h"
#include "fuzz/FuzzSupport.h"
#include "fuzz/IriProperties.h"

namespace {

using foundation::network::IRI;
using foundation::network::iri::Encoding;

using Getter = std::u16string (IRI::*)(const Encoding&) const;

// Calls one getter: it must answer when the component is present (the path of any value but
// the empty one), and refuse with the
// absent-component error otherwise. The decoded form may meet an escape that decodes to no
// valid code point; that is the conversion error.
void readComponent(const IRI& iri, Getter getter, bool present, const Encoding& encoding) {
    try {
        (void)(iri.*getter)(encoding);
        FNFUZZ_CHECK(present);
    } catch (const std::out_of_range& e) {
        if (!fnfuzz::isConversionError(e)) {
            fnfuzz::unexpected(e, "a getter");
        }
    } catch (const std::runtime_error& e) {
        FNFUZZ_CHECK(!present);
        FNFUZZ_CHECK(fnfuzz::startsWith(e.what(), "Item not set"));
    }
}

void readEverything(const IRI& iri) {
    (void)iri.isEmpty();
    (void)iri.isOpaque();
    FNFUZZ_CHECK(!iri.hasUserInfo() || iri.hasHost());
    FNFUZZ_CHECK(!iri.hasPort() || iri.hasHost());
    FNFUZZ_CHECK(iri.hasAuthority() == iri.hasHost());
    FNFUZZ_CHECK(iri.isAbsolute() == iri.hasScheme());
    try {
        const std::u16string scheme = iri.getScheme();
        FNFUZZ_CHECK(iri.hasScheme() && !scheme.empty());
    } catch (const std::runtime_error& e) {
        FNFUZZ_CHECK(!iri.hasScheme() && std::string(e.what()) == "No scheme");
    }
    try {
        const std::u16string port = iri.getPort();
        FNFUZZ_CHECK(iri.hasPort());
        (void)iri.getPortNumber();
    } catch (const std::runtime_error& e) {
        FNFUZZ_CHECK(!iri.hasPort() && std::string(e.what()) == "No port");
    }
    for (std::uint32_t value = 0; value <= 4; ++value) {
        const Encoding encoding(value);
        readComponent(iri, &IRI::getUserInfo, iri.hasUserInfo(), encoding);
        readComponent(iri, &IRI::getHost, iri.hasHost(), encoding);
        readComponent(iri, &IRI::getPath, !iri.isEmpty(), encoding);
        readComponent(iri, &IRI::getQuery, iri.hasQuery(), encoding);
        readComponent(iri, &IRI::getFragment, iri.hasFragment(), encoding);
        readComponent(iri, &IRI::getAuthority, iri.hasHost(), encoding);
        readComponent(iri, &IRI::getSchemeSpecificPart, !iri.isEmpty(), encoding);
        try {
            (void)iri.toStringFromParts(encoding);
        } catch (const std::out_of_range& e) {
            if (value != 0 || !fnfuzz::isConversionError(e)) {
                fnfuzz::unexpected(e, "toStringFromParts");
            }
        }
    }
    std::ostringstream out;
    out << iri;
}

// toAsciiString(false) is ASCII after the scheme (a scheme may hold non-ASCII letters), parses
// again, and a second round changes nothing.
void checkAsciiRoundTrip(const IRI& iri) {
    const std::u16string ascii = iri.toAsciiString(false);
    const std::size_t schemeLength = iri.hasScheme() ? iri.getScheme().size() : 0;
    for (std::size_t i = schemeLength; i < ascii.size(); ++i) {
        FNFUZZ_CHECK(ascii[i] < 0x80);
    }
    // Kept: an IP literal with non-ASCII letters or digits has a URI form that does not parse
    // (see fnfuzz::hasNonAsciiIpLiteral).
    if (fnfuzz::hasNonAsciiIpLiteral(iri)) {
        return;
    }
    const IRI again(ascii);
    const std::u16string second = again.toAsciiString(false);
    FNFUZZ_CHECK(IRI(second).toAsciiString(false) == second);
    (void)iri.toAsciiString(true);
    (void)iri.toString(true);
}

void checkValueSemantics(const IRI& iri) {
    const std::uint64_t hash = iri.hashValue();
    IRI copy(iri);
    FNFUZZ_CHECK(copy == iri && !(copy != iri) && copy.hashValue() == hash);
    FNFUZZ_CHECK(!(copy < iri) && !(iri < copy));
    IRI moved(std::move(copy));
    FNFUZZ_CHECK(moved == iri && moved.hashValue() == hash);
    IRI other;
    other.swap(moved);
    FNFUZZ_CHECK(other == iri && other.hashValue() == hash);
    FNFUZZ_CHECK(moved.isEmpty() && moved == IRI() && moved.hashValue() == IRI().hashValue());
    IRI assigned;
    assigned = other;
    FNFUZZ_CHECK(assigned == iri && assigned.toString(false) == iri.toString(false));
    assigned.clear();
    FNFUZZ_CHECK(assigned.isEmpty() && assigned == IRI());
    FNFUZZ_CHECK(iri.isEmpty() == (iri == IRI()));
}

// Normalising, with the default steps and with every step, never fails, gives a value whose
// texts read back, and a second normalisation changes nothing.
void checkNormalization(const IRI& iri) {
    foundation::network::iri::Normalization every;
    every.characters = true;
    every.host = true;
    for (const auto& how : {foundation::network::iri::Normalization{}, every}) {
        try {
            const IRI normal = iri.normalize(how);
            fnfuzz::checkTextReadsBack(normal);
            FNFUZZ_CHECK(normal.normalize(how).toString(false) == normal.toString(false));
        } catch (const std::exception& e) {
            fnfuzz::unexpected(e, "normalize");
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::u16string text = fnfuzz::toUtf16(data, size);
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
    FNFUZZ_CHECK(fnfuzz::isValidUtf16(text));
    FNFUZZ_CHECK(iri.toString(false) == text);
    readEverything(iri);
    checkAsciiRoundTrip(iri);
    checkValueSemantics(iri);
    checkNormalization(iri);
    FNFUZZ_CHECK(iri.toString(false) == text);
    return 0;
}
