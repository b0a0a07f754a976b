// The case tables of tests/data/ about IRI values: what each accessor gives (iri.tsv), values
// built from IRIArgs (args.tsv), order and equality (order.tsv), resolution (resolution.tsv) and
// relativisation (relativisation.tsv). A new case is a line of a table.
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <unordered_set>
#include <vector>

#include "foundation/network/IRI.h"
#include "foundation/network/IRIArgs.h"
#include "foundation/network/IdnConverter.h"
#include "foundation/network/Normalization.h"
#include "support/RelativisationCases.h"
#include "support/Table.h"
#include "support/Text.h"

namespace foundation::network {
namespace {

using fntest::unescaped;
using fntest::utf8;
using iri::Encoding;

std::string where(const char* table, const fntest::TableRow& row) {
    return std::string(table) + ":" + std::to_string(row.line);
}

// A value of a table: "<none>" for a default-constructed one, "reference @ base" for a resolved
// one, else a text to parse.
IRI value(const std::string& field) {
    if (field == "<none>") {
        return IRI();
    }
    const auto at = field.find(" @ ");
    if (at != std::string::npos) {
        return IRI(unescaped(field.substr(0, at))).resolveAgainst(value(field.substr(at + 3)));
    }
    return IRI(unescaped(field));
}

// The steps a name such as "normal+host-path" asks for, over the defaults.
iri::Normalization steps(const std::string& name) {
    iri::Normalization how;
    how.characters = name.find("+characters") != std::string::npos;
    how.host = name.find("+host") != std::string::npos;
    how.letterCase = name.find("-case") == std::string::npos;
    how.percentEncoding = name.find("-percent") == std::string::npos;
    how.pathSegments = name.find("-path") == std::string::npos;
    how.schemeBased = name.find("-scheme") == std::string::npos;
    return how;
}

// What the accessor `name` of iri.tsv gives, as UTF-16.
std::u16string read(const IRI& iri, const std::string& name) {
    using Getter = std::u16string (IRI::*)(const Encoding&) const;
    static const std::map<std::string, Getter> components = {{"userInfo", &IRI::getUserInfo},
                                                             {"host", &IRI::getHost},
                                                             {"path", &IRI::getPath},
                                                             {"query", &IRI::getQuery},
                                                             {"fragment", &IRI::getFragment},
                                                             {"authority", &IRI::getAuthority},
                                                             {"ssp", &IRI::getSchemeSpecificPart},
                                                             {"parts", &IRI::toStringFromParts}};
    const std::size_t digit = name.find_first_of("0123456789");
    const auto component = components.find(name.substr(0, digit));
    if (component != components.end()) {
        const Encoding form(digit == std::string::npos ? 1 : std::stoul(name.substr(digit)));
        return (iri.*component->second)(form);
    }
    if (name == "has") {
        std::u16string has;
        const bool flags[] = {iri.hasScheme(),   iri.hasAuthority(),    iri.hasUserInfo(),
                              iri.hasHost(),     iri.hasPort(),         iri.hasQuery(),
                              iri.hasFragment(), iri.hasAbsolutePath(), iri.isOpaque(),
                              iri.isEmpty()};
        for (std::size_t i = 0; i < std::size(flags); ++i) {
            if (flags[i]) {
                has += u"sauhpqf/oe"[i];
            }
        }
        EXPECT_EQ(iri.isAbsolute(), iri.hasScheme());
        return has;
    }
    if (name.rfind("normal", 0) == 0) {
        const IRI normal = iri.normalize(steps(name));
        EXPECT_EQ(normal.normalize(steps(name)), normal) << "a second normalisation";
        EXPECT_EQ(IRI(normal.toString()), normal) << "the normal text read back";
        return normal.toString();
    }
    std::ostringstream stream;
    stream << iri;
    const std::map<std::string, std::function<std::u16string()>> others = {
        {"scheme", [&] { return iri.getScheme(); }},
        {"port", [&] { return iri.getPort(); }},
        {"portNumber", [&] { return fntest::u16(std::to_string(iri.getPortNumber())); }},
        {"strict", [&] { return iri.toString(true); }},
        {"ascii", [&] { return iri.toAsciiString(false); }},
        {"asciiStrict", [&] { return iri.toAsciiString(true); }},
        {"uri", [&] { return iri.toUriString(IdnConverter()); }},
        {"stream", [&] { return fntest::u16(stream.str()); }}};
    return others.at(name)();
}

// Checks the "name=value" fields of a row from `first` on against the value.
void expectAccessors(const IRI& iri, const fntest::TableRow& row, std::size_t first,
                     const std::string& at) {
    for (std::size_t i = first; i < row.fields.size(); ++i) {
        const std::string& field = row.fields[i];
        const std::size_t equals = field.find('=');
        ASSERT_NE(equals, std::string::npos) << at << ": " << field;
        const std::string name = field.substr(0, equals);
        std::u16string got;
        try {
            got = read(iri, name);
        } catch (const std::exception& e) {
            got = u"!" + fntest::u16(e.what());
        }
        EXPECT_EQ(utf8(got), utf8(unescaped(field.substr(equals + 1)))) << at << ": " << name;
    }
}

TEST(IRITables, Accessors) {
    for (const auto& row : fntest::readTable("iri.tsv", 2)) {
        const std::string at = where("iri.tsv", row);
        IRI iri;
        try {
            iri = value(row.fields[0]);
        } catch (const std::exception& e) {
            ASSERT_EQ(row.fields.size(), 2u) << at << ": " << e.what();
            EXPECT_EQ(row.fields[1], std::string("has=!") + e.what()) << at;
            continue;
        }
        if (row.fields[0] != "<none>") {
            EXPECT_EQ(iri.toString(false), unescaped(row.fields[0])) << at;
        }
        expectAccessors(iri, row, 1, at);
    }
}

TEST(IRITables, BuiltFromArgs) {
    for (const auto& row : fntest::readTable("args.tsv", 9)) {
        const std::string at = where("args.tsv", row);
        IRIArgs args;
        using Setter = IRIArgs& (IRIArgs::*)(const std::u16string&);
        const Setter setters[] = {
            &IRIArgs::setScheme, &IRIArgs::setUserInfo, &IRIArgs::setHost,    nullptr,
            &IRIArgs::setPath,   &IRIArgs::setQuery,    &IRIArgs::setFragment};
        for (std::size_t i = 0; i < std::size(setters); ++i) {
            if (row.fields[i] == "<>") {
                continue;
            }
            if (setters[i] == nullptr) {
                args.setPort(static_cast<unsigned short>(std::stoul(row.fields[i])));
            } else {
                (args.*setters[i])(unescaped(row.fields[i]));
            }
        }
        args.schemeChecked = row.fields[7].find('c') != std::string::npos;
        args.queryAsOctets = row.fields[7].find('o') != std::string::npos;
        IRI built;
        try {
            built = IRI(args);
        } catch (const std::logic_error& e) {
            EXPECT_EQ(row.fields[8], std::string("!") + e.what()) << at;
            continue;
        }
        EXPECT_EQ(utf8(built.toString()), row.fields[8]) << at;
        if (args.schemeChecked || args.queryAsOctets) {
            continue;  // a scheme taken unchecked need not parse; octets see args.tsv
        }
        const IRI parsed(built.toString());
        EXPECT_TRUE(parsed == built && parsed.hashValue() == built.hashValue()) << at;
        EXPECT_EQ(IRI(IRIArgs(built)), built) << at << ": taken apart and built again";
        EXPECT_EQ(IRI(IRIArgs(parsed)), parsed) << at << ": its text taken apart and built again";
        expectAccessors(built, row, 9, at);
    }
}

// Code point order of UTF-8 text is its byte order.
TEST(IRITables, OrderEqualityAndHashFollowTheText) {
    std::vector<std::pair<IRI, std::string>> values;
    for (const auto& row : fntest::readTable("order.tsv", 2)) {
        values.emplace_back(value(row.fields[0]), utf8(unescaped(row.fields[1])));
        EXPECT_EQ(utf8(values.back().first.toString(false)), values.back().second)
            << where("order.tsv", row);
    }
    std::set<std::string> texts;
    for (const auto& [a, textA] : values) {
        texts.insert(textA);
        for (const auto& [b, textB] : values) {
            EXPECT_EQ(a < b, textA < textB) << textA << " < " << textB;
            EXPECT_EQ(a == b, textA == textB) << textA << " == " << textB;
            EXPECT_EQ(a != b, textA != textB) << textA << " != " << textB;
            if (textA == textB) {
                EXPECT_EQ(a.hashValue(), b.hashValue()) << textA;
            }
        }
    }
    std::unordered_set<IRI> hashed;
    for (const auto& entry : values) {
        hashed.insert(entry.first);
    }
    EXPECT_EQ(hashed.size(), texts.size());
}

TEST(IRITables, Resolution) {
    for (const auto& row : fntest::readTable("resolution.tsv", 3)) {
        const IRI base = value(row.fields[0]);
        const IRI reference = value(row.fields[1]);
        const IRI resolved = reference.resolveAgainst(base);
        EXPECT_EQ(utf8(resolved.toString(false)), row.fields[2]) << where("resolution.tsv", row);
        EXPECT_EQ(IRI(resolved.toString(false)), resolved) << where("resolution.tsv", row);
        EXPECT_EQ(reference.toString(false), value(row.fields[1]).toString(false));
    }
}

// A fourth field names the kept cases that do not resolve back to the target.
TEST(IRITables, Relativisation) {
    for (const auto& row : fntest::readTable("relativisation.tsv", 3)) {
        const std::string at = where("relativisation.tsv", row);
        const IRI target = value(row.fields[0]);
        const IRI base = value(row.fields[1]);
        IRI relative;
        try {
            relative = target.makeRelativeTo(base);
        } catch (const std::logic_error& e) {
            EXPECT_EQ(row.fields[2], std::string("!") + e.what()) << at;
            EXPECT_EQ(target, value(row.fields[0])) << at << ": operand changed";
            continue;
        }
        EXPECT_EQ(utf8(relative.toString(false)), row.fields[2]) << at;
        const std::string kept = row.fields.size() > 3 ? row.fields[3] : "";
        const IRI back = IRI(relative.toString(false)).resolveAgainst(base);
        if (kept.empty()) {
            EXPECT_EQ(relative.resolveAgainst(base), target) << at;
            EXPECT_EQ(back, target) << at;
        } else {
            EXPECT_NE(back, target) << at;
            EXPECT_TRUE(kept == "unreachable" ? fntest::unreachableByResolution(target, base)
                                              : fntest::isOneDotDotTooFew(relative, target, base))
                << at;
        }
    }
}

}  // namespace
}  // namespace foundation::network
