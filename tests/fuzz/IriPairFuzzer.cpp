// Two IRIs from one input, split at the first tab: a base and a reference. Resolution must never
// throw; relativisation must either refuse with one of its six texts or give a reference whose
// text, read back and resolved, gives the target again, apart from the cases recognised in
// support/RelativisationCases.h. Every value made on the way has texts that read back, and any
// two of them compare, order and hash consistently.
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
#include "fuzz/IriProperties.h"
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

IRI resolve(const IRI& reference, const IRI& base) {
    try {
        IRI target = reference.resolveAgainst(base);
        fnfuzz::checkTextReadsBack(target);
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
    fnfuzz::checkTextReadsBack(relative);
    fnfuzz::checkKeys(relative, target);
    // Resolution is defined against an absolute base only.
    if (!base.isAbsolute()) {
        return;
    }
    // Through the text, as a reader of it gets the reference.
    if (IRI(relative.toString(false)).resolveAgainst(base) == target) {
        return;
    }
    FNFUZZ_CHECK(fntest::unreachableByResolution(target, base) ||
                 fntest::keepsDotSegmentsOfTarget(relative, target, base) ||
                 fntest::colonGuardMeetsKeptDots(relative, target, base) ||
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
    fnfuzz::checkKeys(*base, *reference);
    fnfuzz::checkKeys(target, *base);
    fnfuzz::checkKeys(target, *reference);
    fnfuzz::checkKeys(target, IRI(target.toString(false)));
    // Order is transitive over the three.
    const IRI* values[] = {&*base, &*reference, &target};
    for (const IRI* a : values) {
        for (const IRI* b : values) {
            for (const IRI* c : values) {
                FNFUZZ_CHECK(!(*a < *b && *b < *c) || *a < *c);
            }
        }
    }
    relativise(target, *base);
    relativise(*reference, *base);
    relativise(*base, *reference);
    return 0;
}
