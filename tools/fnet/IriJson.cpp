#include "IriJson.h"

#include <exception>
#include <functional>
#include <optional>

#include "Json.h"
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

using Getter = std::function<std::u16string(const Encoding&)>;

// The component in Encodings 0 to 4 (a conversion that fails shows as null).
void setEncodings(boost::json::value& target, const Getter& get) {
    boost::json::object& object = target.emplace_object();
    for (unsigned value = 0; value < 5; ++value) {
        setText(object[std::to_string(value)], tryRead([&] { return get(Encoding(value)); }));
    }
}

void addLine(std::string& out, const std::string& name, const std::string& value) {
    out += name + std::string(name.size() < 24 ? 24 - name.size() : 1, ' ') + value + "\n";
}

std::string quoted(const std::u16string& text) {
    return jsonString(utf16ToUtf8(text));
}

// A component in Encodings 0, 1 and 3, and in 2 and 4 where the repair changes it.
void addComponent(std::string& out, const std::string& name, const Getter& get) {
    std::u16string forms[5];
    for (unsigned value = 0; value < 5; ++value) {
        try {
            forms[value] = get(Encoding(value));
        } catch (const std::exception& e) {
            addLine(out, name + " [" + std::to_string(value) + "]",
                    std::string("error: ") + e.what());
            return;
        }
    }
    addLine(out, name + " [0]", quoted(forms[0]));
    addLine(out, name + " [1]", quoted(forms[1]));
    if (forms[2] != forms[1]) {
        addLine(out, name + " [2]", quoted(forms[2]));
    }
    addLine(out, name + " [3]", quoted(forms[3]));
    if (forms[4] != forms[3]) {
        addLine(out, name + " [4]", quoted(forms[4]));
    }
}

}  // namespace

const RecordKeys kIriKeys = {
    "empty",    "absolute",       "opaque",        "hasAuthority",       "hasAbsolutePath",
    "scheme",   "port",           "portNumber",    "userInfo",           "host",
    "path",     "query",          "fragment",      "authority",          "schemeSpecificPart",
    "toString", "toStringStrict", "toAsciiString", "toAsciiStringStrict"};

void iriJson(const IRI& iri, boost::json::object& keys) {
    keys["empty"] = iri.isEmpty();
    keys["absolute"] = iri.isAbsolute();
    keys["opaque"] = iri.isOpaque();
    keys["hasAuthority"] = iri.hasAuthority();
    keys["hasAbsolutePath"] = iri.hasAbsolutePath();
    if (iri.hasScheme()) {
        keys["scheme"] = jsonSafe(utf16ToUtf8(iri.getScheme()));
    }
    if (iri.hasPort()) {
        keys["port"] = jsonSafe(utf16ToUtf8(iri.getPort()));
        keys["portNumber"] = iri.getPortNumber();
    }
    const bool hasPath = tryRead([&] { return iri.getPath(Encoding(1)); }).has_value();
    const bool present[] = {iri.hasUserInfo(), iri.hasHost(),      hasPath,        iri.hasQuery(),
                            iri.hasFragment(), iri.hasAuthority(), iri.hasScheme()};
    const Getter getters[] = {
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
            setEncodings(keys[kComponentKeys[i]], getters[i]);
        }
    }
    const std::function<std::u16string()> serialisations[] = {
        [&] { return iri.toString(false); },
        [&] { return iri.toString(true); },
        [&] { return iri.toAsciiString(false); },
        [&] { return iri.toAsciiString(true); },
    };
    for (std::size_t i = 0; i < 4; ++i) {
        setText(keys[kSerialisationKeys[i]], tryRead(serialisations[i]));
    }
}

std::string iriText(std::string_view input, const IRI& iri) {
    std::string out;
    addLine(out, "input", jsonString(input));
    std::string flags;
    const std::pair<bool, const char*> named[] = {
        {iri.isEmpty(), "empty"},
        {iri.isAbsolute(), "absolute"},
        {iri.isOpaque(), "opaque"},
        {iri.hasAuthority(), "has-authority"},
        {iri.hasAbsolutePath(), "has-absolute-path"},
        {iri.hasUserInfo(), "has-user-info"},
        {iri.hasHost(), "has-host"},
        {iri.hasPort(), "has-port"},
        {iri.hasQuery(), "has-query"},
        {iri.hasFragment(), "has-fragment"},
    };
    for (const auto& [set, name] : named) {
        if (set) {
            flags += (flags.empty() ? "" : " ") + std::string(name);
        }
    }
    addLine(out, "flags", flags.empty() ? "(none)" : flags);
    if (iri.hasScheme()) {
        addLine(out, "scheme", quoted(iri.getScheme()));
    }
    if (iri.hasUserInfo()) {
        addComponent(out, "userInfo", [&](const Encoding& e) { return iri.getUserInfo(e); });
    }
    if (iri.hasHost()) {
        addComponent(out, "host", [&](const Encoding& e) { return iri.getHost(e); });
    }
    if (iri.hasPort()) {
        addLine(out, "port", quoted(iri.getPort()));
        addLine(out, "portNumber", std::to_string(iri.getPortNumber()));
    }
    if (!iri.isEmpty()) {
        addComponent(out, "path", [&](const Encoding& e) { return iri.getPath(e); });
    }
    if (iri.hasQuery()) {
        addComponent(out, "query", [&](const Encoding& e) { return iri.getQuery(e); });
    }
    if (iri.hasFragment()) {
        addComponent(out, "fragment", [&](const Encoding& e) { return iri.getFragment(e); });
    }
    if (iri.hasAuthority()) {
        addComponent(out, "authority", [&](const Encoding& e) { return iri.getAuthority(e); });
    }
    if (iri.hasScheme()) {
        addComponent(out, "schemeSpecificPart",
                     [&](const Encoding& e) { return iri.getSchemeSpecificPart(e); });
    }
    addLine(out, "toString", quoted(iri.toString(false)));
    addLine(out, "toString strict", quoted(iri.toString(true)));
    addLine(out, "toAsciiString", quoted(iri.toAsciiString(false)));
    addLine(out, "toAsciiString strict", quoted(iri.toAsciiString(true)));
    out += "\n";
    return out;
}

std::string iriErrorText(std::string_view input, const std::string& error) {
    std::string out;
    addLine(out, "input", jsonString(input));
    addLine(out, "error", error);
    out += "\n";
    return out;
}

}  // namespace fnet
