// Two IRIs from one input, split at the first tab: a base and a reference. Resolution must never
// throw and, against an absolute base, its result must parse again to an equal value;
// relativisation must either refuse with one of its six texts or give a reference that resolves
// back to the target, apart from the cases recognised in support/RelativisationCases.h.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "foundation/network/IRI.h"
#include "fuzz/FuzzSupport.h"
#include "support/RelativisationCases.h"

namespace {

using foundation::network::IRI;

constexpr std::string_view kRefusals[] = {
    "Cannot make relative to base. Already relative",
    "Cannot make relative. Base is relative",
    "Cannot make relative to base as base has scheme but this does not",
    "Cannot make relative to base as base has authority but this does not",
    "Cannot make relative to base as base has path but this does not",
    "Cannot make relative to base as base has query but this does not",
};

std::optional<IRI> parse(std::string_view bytes) {
    try {
        return IRI(fnfuzz::toUtf16(bytes));
    } catch (const std::logic_error&) {
        return std::nullopt;  // refusals are the text fuzzer's business
    }
}

// Against a relative base (outside RFC 3986) the result need not be writable as text: a
// relative path may come out with a colon in its first segment.
IRI resolve(const IRI& reference, const IRI& base) {
    try {
        IRI target = reference.resolveAgainst(base);
        // Dot removal can leave a path starting with "//" where there is no authority
        // ("s:/" with ".//x", as RFC 3986 section 5.2.4 does too); RFC 3986 section 3.3 gives
        // such a path no text of its own, so it reads back with an authority.
        const bool pathLooksLikeAuthority =
            !target.hasAuthority() &&
            target.getPath(foundation::network::iri::Encoding(1)).rfind(u"//", 0) == 0;
        if (base.isAbsolute() && !pathLooksLikeAuthority) {
            FNFUZZ_CHECK(IRI(target.toString(false)) == target);
        }
        return target;
    } catch (const std::exception& e) {
        fnfuzz::unexpected(e, "resolveAgainst or parsing its result");
    }
}

void relativise(const IRI& target, const IRI& base) {
    IRI relative;
    try {
        relative = target.makeRelativeTo(base);
    } catch (const std::logic_error& e) {
        FNFUZZ_CHECK(std::find(std::begin(kRefusals), std::end(kRefusals), e.what()) !=
                     std::end(kRefusals));
        return;
    }
    // Resolution is defined against an absolute base only.
    if (!base.isAbsolute()) {
        return;
    }
    if (relative.resolveAgainst(base) == target) {
        return;
    }
    FNFUZZ_CHECK(fntest::unreachableByResolution(target, base) ||
                 fntest::keepsDotSegmentsOfTarget(relative, target, base) ||
                 fntest::baseHasUnseenDotSegment(base) ||
                 fntest::rootlessBaseGetsRooted(relative, target, base) ||
                 fntest::isOneDotDotTooFew(relative, target, base));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::size_t tab = input.find('\t');
    if (tab == std::string_view::npos) {
        return 0;
    }
    const std::optional<IRI> base = parse(input.substr(0, tab));
    const std::optional<IRI> reference = parse(input.substr(tab + 1));
    if (!base || !reference) {
        return 0;
    }
    const IRI target = resolve(*reference, *base);
    FNFUZZ_CHECK(resolve(*reference, *base) == target);
    relativise(target, *base);
    relativise(*reference, *base);
    relativise(*base, *reference);
    return 0;
}
