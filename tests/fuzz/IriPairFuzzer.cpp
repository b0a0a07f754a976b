// Two IRIs from one input, split at the first tab: a base and a reference. Resolution must never
// throw; relativisation must either refuse with one of its six texts or give a reference whose
// text, read back and resolved, gives the target again, apart from the cases recognised in
// support/RelativisationCases.h. Every value made on the way has texts that read back, and any
// two of them compare, order and hash consistently.

#include "fuzz/IriProperties.h"
#include "support/RelativisationCases.h"

namespace {

using fnfuzz::IRI;

constexpr std::string_view kRefusals[] = {
    "Cannot make relative to base. Already relative",
    "Cannot make relative. Base is relative",
    "Cannot make relative to base as base has scheme but this does not",
    "Cannot make relative to base as base has authority but this does not",
    "Cannot make relative to base as base has path but this does not",
    "Cannot make relative to base as base has query but this does not",
};

IRI resolve(const IRI& reference, const IRI& base) {
    const auto target = fnfuzz::attempt<fnfuzz::Never>(
        [&] { return reference.resolveAgainst(base); }, "resolveAgainst");
    fnfuzz::checkTextReadsBack(*target);
    return *target;
}

void relativise(const IRI& target, const IRI& base) {
    IRI relative;
    try {
        relative = target.makeRelativeTo(base);
    } catch (const std::logic_error& e) {
        FNFUZZ_CHECK(fnfuzz::isOneOf(e.what(), kRefusals));
        return;
    }
    fnfuzz::checkTextReadsBack(relative);
    fnfuzz::checkKeys(relative, target);
    // Resolution is defined against an absolute base only; the reference goes through its text,
    // as a reader of it gets it.
    FNFUZZ_CHECK(!base.isAbsolute() ||
                 IRI(relative.toString(false)).resolveAgainst(base) == target ||
                 fntest::unreachableByResolution(target, base) ||
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
    // Refusals to parse are the text fuzzer's business.
    const auto parse = [](std::string_view bytes) {
        return fnfuzz::attempt<std::logic_error>([&] { return IRI(fnfuzz::toUtf16(bytes)); },
                                                 "parsing");
    };
    const auto base = parse(input.substr(0, tab)), reference = parse(input.substr(tab + 1));
    if (!base || !reference) {
        return 0;
    }
    const IRI target = resolve(*reference, *base);
    FNFUZZ_CHECK(resolve(*reference, *base) == target);
    const IRI values[] = {*base, *reference, target, IRI(target.toString(false))};
    for (const IRI& a : values) {
        for (const IRI& b : values) {
            fnfuzz::checkKeys(a, b);
            for (const IRI& c : values) {  // order is transitive
                FNFUZZ_CHECK(!(a < b && b < c) || a < c);
            }
        }
    }
    relativise(target, *base);
    relativise(*reference, *base);
    relativise(*base, *reference);
    return 0;
}
