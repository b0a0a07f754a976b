/// @file
/// @brief A path written as up to three pieces one after the other, so that a path taken from
/// an operand, or a merge of a base directory and a reference path, needs no copy before the
/// result's text is written.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace foundation::network::iri::detail {

/// What keeps a path readable when written after what precedes it.
enum class PathPrefix : std::uint8_t {
    None,
    DotSlash,  ///< "./": a first segment holding ":" would read as a scheme
    SlashDot,  ///< "/.": a path beginning "//" would read as an authority
};

/// The pieces view text that outlives them: an operand's, a literal, or a string the caller
/// keeps until the text is written.
struct PathPieces {
    std::u16string_view head;  ///< the path, or a merge's base directory
    std::u16string_view tail;  ///< a merge's reference path
    PathPrefix prefix = PathPrefix::None;

    std::u16string_view prefixText() const noexcept {
        switch (prefix) {
            case PathPrefix::DotSlash:
                return u"./";
            case PathPrefix::SlashDot:
                return u"/.";
            case PathPrefix::None:
                break;
        }
        return {};
    }
    std::size_t size() const noexcept { return prefixText().size() + head.size() + tail.size(); }
    bool empty() const noexcept { return size() == 0; }
    /// The first unit; the path must not be empty.
    char16_t front() const noexcept {
        const std::u16string_view before = prefixText();
        return !before.empty() ? before.front() : !head.empty() ? head.front() : tail.front();
    }
    void appendTo(std::u16string& out) const {
        out += prefixText();
        out += head;
        out += tail;
    }
};

}  // namespace foundation::network::iri::detail
