#include "IriJson.h"

#include <exception>
#include <functional>
#include <optional>

#include "Text.h"

namespace fnet {

namespace {

using foundation::network::IRI;
using foundation::network::iri::Encoding;

constexpr const char* kComponentKeys[] = {
    "userInfo", "host", "path", "query", "fragment", "authority", "schemeSpecificPart"};
constexpr const char* kSerialisationKeys[] = {"toString", "toStringStrict", "toAsciiString",
                                              "toAsciiStringStrict"};

std::optional<std::string> tryRead(const std::function<std::u16string()>& read) {
    try {
        return utf16ToUtf8(read());
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

// The component in Encodings 0 to 4 (a conversion that fails shows as null).
std::string encodingsObject(const std::function<std::u16string(const Encoding&)>& get) {
    JsonObject object;
    for (unsigned value = 0; value < 5; ++value) {
        const auto text = tryRead([&] { return get(Encoding(value)); });
        object.optionalText(std::to_string(value), text ? &*text : nullptr);
    }
    return object.str();
}

}  // namespace

JsonObject iriJson(const std::string& input, const IRI& iri) {
    JsonObject object;
    object.text("input", sanitizeUtf8(input))
        .null("error")
        .boolean("empty", iri.isEmpty())
        .boolean("absolute", iri.isAbsolute())
        .boolean("opaque", iri.isOpaque())
        .boolean("hasAuthority", iri.hasAuthority())
        .boolean("hasAbsolutePath", iri.hasAbsolutePath());
    if (iri.hasScheme()) {
        object.text("scheme", utf16ToUtf8(iri.getScheme()));
    } else {
        object.null("scheme");
    }
    if (iri.hasPort()) {
        object.text("port", utf16ToUtf8(iri.getPort())).number("portNumber", iri.getPortNumber());
    } else {
        object.null("port").null("portNumber");
    }
    const bool hasPath = tryRead([&] { return iri.getPath(Encoding(1)); }).has_value();
    const bool present[] = {iri.hasUserInfo(), iri.hasHost(),      hasPath,        iri.hasQuery(),
                            iri.hasFragment(), iri.hasAuthority(), iri.hasScheme()};
    const std::function<std::u16string(const Encoding&)> getters[] = {
        [&](const Encoding& e) { return iri.getUserInfo(e); },
        [&](const Encoding& e) { return iri.getHost(e); },
        [&](const Encoding& e) { return iri.getPath(e); },
        [&](const Encoding& e) { return iri.getQuery(e); },
        [&](const Encoding& e) { return iri.getFragment(e); },
        [&](const Encoding& e) { return iri.getAuthority(e); },
        [&](const Encoding& e) { return iri.getSchemeSpecificPart(e); },
    };
    for (std::size_t i = 0; i < 7; ++i) {
        if (present[i]) {
            object.raw(kComponentKeys[i], encodingsObject(getters[i]));
        } else {
            object.null(kComponentKeys[i]);
        }
    }
    const std::function<std::u16string()> serialisations[] = {
        [&] { return iri.toString(false); },
        [&] { return iri.toString(true); },
        [&] { return iri.toAsciiString(false); },
        [&] { return iri.toAsciiString(true); },
    };
    for (std::size_t i = 0; i < 4; ++i) {
        const auto text = tryRead(serialisations[i]);
        object.optionalText(kSerialisationKeys[i], text ? &*text : nullptr);
    }
    return object;
}

JsonObject iriErrorJson(const std::string& input, const std::string& error) {
    JsonObject object;
    object.text("input", sanitizeUtf8(input)).text("error", sanitizeUtf8(error));
    for (const char* key : {"empty", "absolute", "opaque", "hasAuthority", "hasAbsolutePath",
                            "scheme", "port", "portNumber"}) {
        object.null(key);
    }
    for (const char* key : kComponentKeys) {
        object.null(key);
    }
    for (const char* key : kSerialisationKeys) {
        object.null(key);
    }
    return object;
}

}  // namespace fnet
