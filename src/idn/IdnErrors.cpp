#include "foundation/network/IdnErrors.h"

#include <unicode/uidna.h>

#include <array>
#include <cstdio>

namespace foundation::network {

namespace {

struct Named {
    std::uint32_t bit;
    const char* name;
    std::uint32_t icuBit;
};

// Each public constant, its name, and ICU's bit it must equal, so that bits() can be handed to
// code that uses ICU.
#define FNET_IDN_ERROR(NAME)                                                   \
    Named {                                                                    \
        IdnErrors::NAME, #NAME, static_cast<std::uint32_t>(UIDNA_ERROR_##NAME) \
    }

constexpr std::array<Named, 15> kNames = {
    FNET_IDN_ERROR(EMPTY_LABEL),
    FNET_IDN_ERROR(LABEL_TOO_LONG),
    FNET_IDN_ERROR(DOMAIN_NAME_TOO_LONG),
    FNET_IDN_ERROR(LEADING_HYPHEN),
    FNET_IDN_ERROR(TRAILING_HYPHEN),
    FNET_IDN_ERROR(HYPHEN_3_4),
    FNET_IDN_ERROR(LEADING_COMBINING_MARK),
    FNET_IDN_ERROR(DISALLOWED),
    FNET_IDN_ERROR(PUNYCODE),
    FNET_IDN_ERROR(LABEL_HAS_DOT),
    FNET_IDN_ERROR(INVALID_ACE_LABEL),
    FNET_IDN_ERROR(BIDI),
    FNET_IDN_ERROR(CONTEXTJ),
    FNET_IDN_ERROR(CONTEXTO_PUNCTUATION),
    FNET_IDN_ERROR(CONTEXTO_DIGITS),
};

#undef FNET_IDN_ERROR

constexpr bool matchesIcu() {
    for (const Named& named : kNames) {
        if (named.bit != named.icuBit) {
            return false;
        }
    }
    return true;
}
static_assert(matchesIcu(), "IdnErrors constants differ from ICU's UIDNA_ERROR_ bits");

}  // namespace

IdnErrors::IdnErrors(std::uint32_t bits) noexcept : bits_(bits) {}

std::vector<std::string> IdnErrors::names() const {
    std::vector<std::string> names;
    for (std::uint32_t bit = 1; bit != 0; bit <<= 1) {
        if ((bits_ & bit) == 0) {
            continue;
        }
        const Named* known = nullptr;
        for (const Named& named : kNames) {
            known = named.bit == bit ? &named : known;
        }
        if (known != nullptr) {
            names.emplace_back(known->name);
        } else {
            char hex[16];
            std::snprintf(hex, sizeof hex, "0x%x", static_cast<unsigned>(bit));
            names.emplace_back(hex);
        }
    }
    return names;
}

std::string IdnErrors::toString() const {
    std::string text;
    for (const std::string& name : names()) {
        text += (text.empty() ? "" : ", ") + name;
    }
    return text;
}

}  // namespace foundation::network
