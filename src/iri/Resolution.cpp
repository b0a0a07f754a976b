// Resolution of an IRI reference against a base, after RFC 3986 section 5.2.
//
// Every component moves in its IRI form (Encoding 1: a parsed value's text as written, a built
// value's escaped form) and is stored in that form, so no escape is ever decoded or added: a
// "%2F" in a path stays "%2F", an IP-literal host keeps its brackets.
#include <string>
#include <utility>
#include <vector>

#include "iri/TemplateIRI.h"
#include "iri/path/PathResolution.h"
#include "iri/path/PathSegments.h"

namespace foundation::network::iri::detail {
template <class String>
std::u16string TemplateIRI<String>::resolvePathComponents(SegmentList& segments,
                                                          bool absolute) const {
    resolvePath(parts.storedPath(Form::Iri), segments, absolute, pathHasDotSegments());
    return joinSegments(segments);
}

template <class String>
void TemplateIRI<String>::resolveInto(const TemplateIRI& base, TemplateIRI& t) const {
    const TemplateIRI& r = *this;
    const TemplateIRI& b = base;
    Assembly taken;

    if (r.empty.load()) {
        if (!b.flags.fragmentPresent) {
            t.becomeCopyOf(b);
            return;
        }
        // The base without its fragment.
        if (b.flags.schemePresent) {
            t.takeSchemeFrom(b, taken);
        }
        t.takeAuthorityFrom(b, taken);
        t.takeQueryFrom(b, taken);
        taken.path.head = b.parts.storedPath(Form::Iri);
        t.flags.pathEmpty = b.flags.pathEmpty;
        t.flags.absolutePath = b.flags.absolutePath;
        t.setPathHasDotSegments(b.pathHasDotSegments());
        t.finishFlags(taken);
        return;
    }

    // One absolute flag for every path computed below, in every branch; kept deliberately, so
    // that "t:a/../b" against a base with the path "/x" gets the path "/b".
    const bool absolute = r.flags.absolutePath || b.flags.absolutePath;
    // The result's path: viewed in an operand where it is taken whole or merged, else computed
    // into `computed`.
    PathPieces& path = taken.path;
    std::u16string computed;
    const auto compute = [&](std::u16string value) {
        computed = std::move(value);
        path.head = computed;
    };
    // R's path with its dot segments removed.
    const auto referencePathWithoutDots = [&] {
        SegmentList segments;
        compute(r.resolvePathComponents(segments, absolute));
    };
    // R's path for a reference with a scheme or an authority: verbatim, or without its dot
    // segments.
    const auto referencePath = [&] {
        if (r.flags.pathEmpty) {
            return;
        }
        if (!r.pathHasDotSegments()) {
            path.head = r.parts.storedPath(Form::Iri);
        } else {
            referencePathWithoutDots();
        }
    };

    if (r.flags.schemePresent) {
        t.takeSchemeFrom(r, taken);
        t.takeAuthorityFrom(r, taken);
        referencePath();
        t.takeQueryFrom(r, taken);
    } else {
        if (r.flags.authorityPresent) {
            t.takeAuthorityFrom(r, taken);
            referencePath();
            t.takeQueryFrom(r, taken);
        } else {
            const std::u16string_view basePath = b.parts.storedPath(Form::Iri);
            const std::u16string_view referenceText = r.parts.storedPath(Form::Iri);
            if (r.flags.pathEmpty) {
                if (!b.flags.pathEmpty) {
                    path.head = basePath;
                }
                t.takeQueryFrom(r.flags.queryPresent ? r : b, taken);
            } else if (r.flags.absolutePath) {
                if (r.pathHasDotSegments()) {
                    referencePathWithoutDots();
                } else {
                    path.head = referenceText;
                }
                t.takeQueryFrom(r, taken);
            } else if (b.flags.authorityPresent && b.flags.pathEmpty) {
                // Kept deliberately: no dot-segment removal here, unlike RFC 3986.
                path.head = u"/";
                path.tail = referenceText;
                t.takeQueryFrom(r, taken);
            } else if (!b.pathHasDotSegments() && !r.pathHasDotSegments()) {
                // The RFC 3986 merge.
                const auto slash = basePath.rfind(u'/');
                if (slash != std::u16string_view::npos) {
                    path.head = basePath.substr(0, slash + 1);
                }
                path.tail = referenceText;
                t.takeQueryFrom(r, taken);
            } else {
                SegmentList segments;
                if (b.pathHasDotSegments()) {
                    splitPathIntoSegments(
                        removeRelativePathSegments(basePath, b.flags.absolutePath), segments);
                } else {
                    splitPathIntoSegments(basePath, segments);
                }
                // Drop the base's last segment; a lone absolute segment leaves the root.
                if (segments.size() == 1) {
                    segments.clear();
                    if (b.flags.absolutePath) {
                        segments.emplace_back(1, u'/');
                    }
                } else if (!segments.empty()) {
                    segments.pop_back();
                    // A "/" left last is an empty segment ("a//b" leaves "a", "/"): the
                    // directory's own slash follows it, as in the merge of RFC 3986.
                    if (segments.back().size() == 1 && segments.back()[0] == u'/') {
                        segments.emplace_back(1, u'/');
                    }
                }
                compute(r.resolvePathComponents(segments, absolute));
                t.takeQueryFrom(r, taken);
            }
            t.takeAuthorityFrom(b, taken);
        }
        if (b.flags.schemePresent) {
            t.takeSchemeFrom(b, taken);
        }
    }
    t.takeFragmentFrom(r, taken);
    // Never set by resolution: a result is taken as free of dot segments when it serves as a
    // base later.
    t.setPathHasDotSegments(false);
    keepPathReadable(path, t.flags.schemePresent, t.flags.hostPresent);
    t.flags.pathEmpty = path.empty();
    t.flags.absolutePath = !path.empty() && path.front() == u'/';
    t.finishFlags(taken);
}

// The text, written once from the components taken, then the flags that follow from them:
// emptiness, the authority, the scheme's marks.
template <class String>
void TemplateIRI<String>::finishFlags(const Assembly& assembly) {
    parts.assign(assembly);
    empty.store(parts.isEmpty() && !flags.schemePresent && !flags.portPresent,
                std::memory_order_relaxed);
    flags.authorityPresent = flags.hostPresent;
    if (flags.schemePresent) {
        flags.absolute = true;
        if (!flags.authorityPresent) {
            flags.opaque = !flags.absolutePath;
        }
    }
}

template std::u16string TemplateIRI<std::wstring>::resolvePathComponents(SegmentList&, bool) const;
template void TemplateIRI<std::wstring>::resolveInto(const TemplateIRI&, TemplateIRI&) const;
template void TemplateIRI<std::wstring>::finishFlags(const Assembly&);

}  // namespace foundation::network::iri::detail
