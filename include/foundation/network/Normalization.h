/// @file
/// @brief `iri::Normalization`: the steps `IRI::normalize` takes.
#pragma once

namespace foundation::network::iri {

/// The steps of `IRI::normalize`, each one on or off. The first four are on by default: they
/// never change which resource an IRI names. The last two are off: they compare text that a
/// user would read as the same, which some applications want and others must not do.
///
///     iri::Normalization how;
///     how.characters = true;
///     IRI same = iri.normalize(how);
struct Normalization {
    /// Scheme and the ASCII letters of a registered-name host in lower case, the hexadecimal
    /// digits of every percent-escape in upper case.
    bool letterCase = true;
    /// Escapes of characters that need none (ASCII unreserved characters and the UTF-8 of
    /// non-ASCII characters allowed in IRIs) decoded; escapes that are not UTF-8 stay.
    bool percentEncoding = true;
    /// Dot segments ("." and "..") removed from the path of an absolute IRI, of a network-path
    /// reference, or of an absolute-path reference. A relative path keeps them: they only mean
    /// something against a base.
    bool pathSegments = true;
    /// The default port of http, https, ws, wss and ftp removed; an empty path after an
    /// authority becomes "/" for http, https, ws and wss.
    bool schemeBased = true;
    /// Every component in Unicode Normalization Form C.
    bool characters = false;
    /// A registered-name host in the Unicode form of an internationalized domain name
    /// ("xn--bcher-kva" becomes "bücher"); a host that is not a valid one stays as it is.
    bool host = false;
};

}  // namespace foundation::network::iri
