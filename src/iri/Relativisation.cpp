// Relativisation: the inverse of resolution. A relativised against B is a reference R such that
// resolving R against B gives A back, with one kept exception (a base path not ending in "/"
// that lies two or more directories below the shared prefix gets one ".." too few).
//
// Components are read and stored in their IRI form (Encoding 1), so the target's text is kept
// exactly as written.
#include <algorithm>
#include <stdexcept>
#include <string>
#include <utility>

#include "foundation/core/except/Exception.h"
#include "iri/TemplateIRI.h"
#include "iri/Utf16.h"
#include "iri/path/PathResolution.h"
#include "iri/path/PathSegments.h"
#include "iri/path/RelativePath.h"

namespace foundation::network::iri::detail {
namespace {

using core::except::detail::AnonymousInternalException;

[[noreturn]] void refuse(const char* message) {
    throw AnonymousInternalException<std::logic_error>(message);
}

}  // namespace

template <class String>
RelativePathPieces TemplateIRI<String>::getMinimalRelativePath() const {
    return minimalRelativePath(parts.storedPath(Form::Iri));
}

template <class String>
RelativePathPieces TemplateIRI<String>::getRelativePath(const TemplateIRI& base) const {
    // Each path as stored, or with its dot segments removed where it has any.
    std::u16string basePathWithoutDots;
    std::u16string pathWithoutDots;
    std::u16string_view basePath = base.parts.storedPath(Form::Iri);
    std::u16string_view path = parts.storedPath(Form::Iri);
    if (base.pathScanFindsDotSegments()) {
        basePathWithoutDots = removeRelativePathSegments(basePath, base.flags.absolutePath);
        basePath = basePathWithoutDots;
    }
    if (pathScanFindsDotSegments()) {
        pathWithoutDots = removeRelativePathSegments(path, flags.absolutePath);
        path = pathWithoutDots;
    }
    RelativePathPieces relative = relativePathPieces(path, flags.absolutePath, basePath);
    if (!pathWithoutDots.empty()) {  // the rest views it: made whole before it goes
        relative.lead += relative.rest;
        relative.rest = {};
    }
    return relative;
}

template <class String>
void TemplateIRI<String>::relativiseInto(const TemplateIRI& base, TemplateIRI& t) const {
    const TemplateIRI& a = *this;
    const TemplateIRI& b = base;

    if (!a.flags.absolutePath && b.flags.absolutePath && !a.flags.pathEmpty) {
        refuse("Cannot make relative to base. Already relative");
    }
    if (a.flags.absolutePath && !b.flags.absolutePath && !b.flags.pathEmpty) {
        refuse("Cannot make relative. Base is relative");
    }

    // A different scheme: only A itself resolves to A.
    if (a.flags.schemePresent &&
        (!b.flags.schemePresent || !sameUnits(a.schemeText(), b.schemeText()))) {
        t.becomeCopyOf(a);
        return;
    }

    Assembly taken;
    // The result's path: a view of A's, or a relative path whose lead is kept in `relative`.
    RelativePathPieces relative;
    const auto setPath = [&](std::u16string_view head, std::u16string_view tail = {}) {
        taken.path.head = head;
        taken.path.tail = tail;
        keepPathReadable(taken.path, t.flags.schemePresent, t.flags.hostPresent);
        t.flags.pathEmpty = taken.path.empty();
        t.flags.absolutePath = !taken.path.empty() && taken.path.front() == FORWARD_SLASH;
        t.forgetPathFacts();
    };
    const auto setRelativePath = [&](RelativePathPieces pieces) {
        relative = std::move(pieces);
        setPath(relative.lead, relative.rest);
    };
    const auto finish = [&] {
        t.takeFragmentFrom(a, taken);
        t.finishFlags(taken);
    };

    // The scheme-specific parts and authorities are compared component by component rather
    // than assembled: their delimiters split them unambiguously, so this is the same test.
    const bool bothAuthorities = a.flags.authorityPresent && b.flags.authorityPresent;
    const bool sameAuthority =
        bothAuthorities && a.flags.userInfoPresent == b.flags.userInfoPresent &&
        (!a.flags.userInfoPresent || sameUnits(a.parts.view(ComponentKind::UserInfo, Form::Iri),
                                               b.parts.view(ComponentKind::UserInfo, Form::Iri))) &&
        sameUnits(a.parts.view(ComponentKind::Host, Form::Iri),
                  b.parts.view(ComponentKind::Host, Form::Iri)) &&
        a.flags.portPresent == b.flags.portPresent &&
        (!a.flags.portPresent || sameUnits(a.portText(), b.portText()));
    const bool sameQuery =
        a.flags.queryPresent == b.flags.queryPresent &&
        (!a.flags.queryPresent || sameUnits(a.parts.view(ComponentKind::Query, Form::Iri),
                                            b.parts.view(ComponentKind::Query, Form::Iri)));
    const std::u16string_view path = a.parts.storedPath(Form::Iri);
    const std::u16string_view basePath = b.parts.storedPath(Form::Iri);

    // Same resource: only A's fragment remains.
    if (sameUnits(a.schemeText(), b.schemeText()) &&
        a.flags.authorityPresent == b.flags.authorityPresent &&
        (!a.flags.authorityPresent || sameAuthority) && sameUnits(path, basePath) && sameQuery) {
        finish();
        return;
    }

    if (!a.flags.schemePresent) {
        if (b.flags.schemePresent) {
            refuse("Cannot make relative to base as base has scheme but this does not");
        }
        if (!a.flags.authorityPresent && b.flags.authorityPresent) {
            refuse("Cannot make relative to base as base has authority but this does not");
        }
    }

    // A's authority (and all that follows it) where the authorities differ.
    const bool authorityDiffers = a.flags.authorityPresent && !sameAuthority;
    // An empty path resolves to the base's path, and an empty path without a query to the
    // base's query: A's authority, or else A whole, keeps them from doing so.
    const bool emptyPathNeedsMore =
        a.flags.pathEmpty &&
        (!b.flags.pathEmpty || (b.flags.queryPresent && !a.flags.queryPresent));
    if (!a.flags.authorityPresent && b.flags.authorityPresent) {
        t.becomeCopyOf(a);  // A has a scheme here: it stands as it is.
        return;
    }
    if (a.flags.schemePresent && !a.flags.authorityPresent && emptyPathNeedsMore) {
        t.becomeCopyOf(a);
        return;
    }
    // Only the authority keeps a path beginning "//" from being read as one.
    const bool pathLooksLikeAuthority = path.substr(0, 2) == u"//";
    // Whether either path holds an empty segment (each value keeps its answer).
    const auto emptySegments = [&] { return a.pathHasEmptySegment() || b.pathHasEmptySegment(); };
    if (authorityDiffers ||
        (a.flags.authorityPresent && (emptyPathNeedsMore || pathLooksLikeAuthority))) {
        t.takeAuthorityFrom(a, taken);
        setPath(path);
        t.setPathHasDotSegments(a.pathHasDotSegments());
        t.takeQueryFrom(a, taken);
        finish();
        return;
    }

    // Same authority or none on both sides.
    if (a.flags.pathEmpty && !a.flags.schemePresent) {
        if (!a.flags.authorityPresent && !b.flags.pathEmpty) {
            refuse("Cannot make relative to base as base has path but this does not");
        }
        if (!a.flags.queryPresent && !a.flags.authorityPresent && b.flags.queryPresent) {
            refuse("Cannot make relative to base as base has query but this does not");
        }
        t.takeQueryFrom(a, taken);
        finish();
        return;
    }

    if (!a.flags.pathEmpty) {
        if (b.flags.pathEmpty) {
            // Against an empty path with an authority, resolution writes "/" and the reference
            // path as it is, dot segments and all.
            const bool keepDots =
                b.flags.authorityPresent && a.flags.absolutePath && a.pathHasDotSegments();
            setPath(keepDots ? path.substr(1) : path);
        } else if (sameUnits(path, basePath)) {
            // Resolution would pick up B's query for an empty path.
            if (b.flags.queryPresent && !a.flags.queryPresent) {
                setRelativePath(getMinimalRelativePath());
            }
        } else if (a.flags.absolutePath && emptySegments()) {
            // Resolution reads a "/" element after an empty segment as a trailing slash, so
            // no relative path crosses one reliably: the absolute path does.
            setPath(path);
        } else {
            // Paths that differ only in dot segments: name A's last segment in B's directory.
            RelativePathPieces pieces = getRelativePath(b);
            setRelativePath(pieces.empty() ? getMinimalRelativePath() : std::move(pieces));
            // Dot removal over a rootless path with empty segments can root or shorten the
            // merged path ("T/..//x/" + "../i" gives "//i"): where that may happen the
            // reference is checked, and A, which has a scheme, stands for itself otherwise.
            if (a.flags.schemePresent && !a.pathHasDotSegments() && emptySegments()) {
                TemplateIRI candidate = t;
                Assembly candidateParts = taken;
                if (a.flags.queryPresent) {
                    candidate.takeQueryFrom(a, candidateParts);
                }
                candidate.takeFragmentFrom(a, candidateParts);
                candidate.finishFlags(candidateParts);
                if (!(candidate.doResolve(b) == a)) {
                    t.becomeCopyOf(a);
                    return;
                }
            }
        }
    }
    // Equal queries are left to resolution only where the path is empty: a non-empty path
    // drops the base's query.
    if (a.flags.queryPresent && (!sameQuery || !t.flags.pathEmpty)) {
        t.takeQueryFrom(a, taken);
    }
    finish();
}

template RelativePathPieces TemplateIRI<std::wstring>::getMinimalRelativePath() const;
template RelativePathPieces TemplateIRI<std::wstring>::getRelativePath(const TemplateIRI&) const;
template void TemplateIRI<std::wstring>::relativiseInto(const TemplateIRI&, TemplateIRI&) const;

}  // namespace foundation::network::iri::detail
