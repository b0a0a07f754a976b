// The case tables of tests/data/ about IRI values: what each accessor gives (iri.tsv), values
// built from IRIArgs (args.tsv), order and equality (order.tsv), resolution (resolution.tsv) and
// relativisation (relativisation.tsv). A new case is a line of a table. Then the value itself:
// caches under copies and moves, megabyte values.
#include <gtest/gtest.h>
#include <pthread.h>

#include <functional>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <tuple>
#include <unordered_set>
#include <vector>

#include "foundation/network/IRI.h"
#include "foundation/network/IRIArgs.h"
#include "foundation/network/IdnConverter.h"
#include "foundation/network/Normalization.h"
#include "iri/IRIAccess.h"
#include "iri/IRIReads.h"
#include "support/RelativisationCases.h"
#include "support/Table.h"
#include "support/Text.h"

namespace foundation::network {
namespace {

using fntest::unescaped;
using fntest::utf8;
using iri::Encoding;

// A value of a table: "<none>" for a default-constructed one, "reference @ base" for a resolved
// one, else a text to parse.
IRI value(const std::string& field) {
    const auto at = field.find(" @ ");
    return field == "<none>" ? IRI()
           : at == std::string::npos
               ? IRI(unescaped(field))
               : IRI(unescaped(field.substr(0, at))).resolveAgainst(value(field.substr(at + 3)));
}

// The steps a name such as "normal+host-path" asks for, over the defaults.
iri::Normalization steps(const std::string& name) {
    const auto has = [&name](const char* step) { return name.find(step) != std::string::npos; };
    return {!has("-case"),   !has("-percent"),   !has("-path"),
            !has("-scheme"), has("+characters"), has("+host")};
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
        EXPECT_EQ(iri.isAbsolute(), iri.hasScheme());
        const bool flags[] = {iri.hasScheme(),   iri.hasAuthority(),    iri.hasUserInfo(),
                              iri.hasHost(),     iri.hasPort(),         iri.hasQuery(),
                              iri.hasFragment(), iri.hasAbsolutePath(), iri.isOpaque(),
                              iri.isEmpty()};
        std::u16string has;
        for (std::size_t i = 0; i < std::size(flags); ++i) {
            has += flags[i] ? std::u16string(1, u"sauhpqf/oe"[i]) : u"";
        }
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
void expectAccessors(const IRI& iri, const fntest::TableRow& row, std::size_t first) {
    for (std::size_t i = first; i < row.fields.size(); ++i) {
        const std::string& field = row.fields[i];
        const std::size_t equals = field.find('=');
        ASSERT_NE(equals, std::string::npos) << row.at << ": " << field;
        const std::string name = field.substr(0, equals);
        std::u16string got;
        try {
            got = read(iri, name);
        } catch (const std::exception& e) {
            got = u"!" + fntest::u16(e.what());
        }
        EXPECT_EQ(utf8(got), utf8(unescaped(field.substr(equals + 1)))) << row.at << ": " << name;
    }
}

TEST(IRITables, Accessors) {
    for (const auto& row : fntest::readTable("iri.tsv", 2)) {
        try {
            const IRI iri = value(row.fields[0]);
            EXPECT_TRUE(row.fields[0] == "<none>" ||
                        iri.toString(false) == unescaped(row.fields[0]))
                << row.at;
            expectAccessors(iri, row, 1);
        } catch (const std::exception& e) {  // a row "text	has=!refusal"
            EXPECT_EQ(row.fields.size() == 2 ? row.fields[1] : "", std::string("has=!") + e.what())
                << row.at;
        }
    }
}

TEST(IRITables, BuiltFromArgs) {
    for (const auto& row : fntest::readTable("args.tsv", 9)) {
        IRIArgs args;
        using Setter = IRIArgs& (IRIArgs::*)(const std::u16string&);
        const Setter setters[] = {
            &IRIArgs::setScheme, &IRIArgs::setUserInfo, &IRIArgs::setHost,    nullptr,
            &IRIArgs::setPath,   &IRIArgs::setQuery,    &IRIArgs::setFragment};
        args.schemeChecked = row.fields[7].find('c') != std::string::npos;
        args.queryAsOctets = row.fields[7].find('o') != std::string::npos;
        IRI built;
        try {  // a setter refuses a lone surrogate, the constructor what does not fit together
            for (std::size_t i = 0; i < std::size(setters); ++i) {
                if (row.fields[i] != "<>" && setters[i] == nullptr) {
                    args.setPort(static_cast<unsigned short>(std::stoul(row.fields[i])));
                } else if (row.fields[i] != "<>") {
                    (args.*setters[i])(unescaped(row.fields[i]));
                }
            }
            built = IRI(args);
        } catch (const std::logic_error& e) {
            EXPECT_EQ(row.fields[8], std::string("!") + e.what()) << row.at;
            continue;
        }
        EXPECT_EQ(utf8(built.toString()), row.fields[8]) << row.at;
        if (args.schemeChecked || args.queryAsOctets) {
            continue;  // a scheme taken unchecked need not parse; octets see args.tsv
        }
        const IRI parsed(built.toString());
        EXPECT_TRUE(parsed == built && parsed.hashValue() == built.hashValue()) << row.at;
        EXPECT_EQ(IRI(IRIArgs(built)), built) << row.at << ": taken apart and built again";
        EXPECT_EQ(IRI(IRIArgs(parsed)), parsed)
            << row.at << ": its text taken apart and built again";
        expectAccessors(built, row, 9);
    }
}

TEST(IRITables, OrderEqualityAndHashFollowTheText) {
    std::vector<IRI> values;
    for (const auto& row : fntest::readTable("order.tsv", 2)) {
        values.push_back(value(row.fields[0]));
        EXPECT_EQ(values.back().toString(false), unescaped(row.fields[1])) << row.at;
    }
    fntest::expectOrderedByText(values);
    const std::set<IRI> ordered(values.begin(), values.end());
    EXPECT_EQ(std::unordered_set<IRI>(values.begin(), values.end()).size(), ordered.size());
}

TEST(IRITables, Resolution) {
    for (const auto& row : fntest::readTable("resolution.tsv", 3)) {
        const IRI base = value(row.fields[0]), reference = value(row.fields[1]),
                  resolved = reference.resolveAgainst(base);
        EXPECT_EQ(utf8(resolved.toString(false)), row.fields[2]) << row.at;
        EXPECT_TRUE(IRI(resolved.toString(false)) == resolved) << row.at << ": read back";
        EXPECT_EQ(reference.toString(false), value(row.fields[1]).toString(false));
    }
}

// A fourth field names the kept cases that do not resolve back to the target.
TEST(IRITables, Relativisation) {
    for (const auto& row : fntest::readTable("relativisation.tsv", 3)) {
        const IRI target = value(row.fields[0]), base = value(row.fields[1]);
        IRI relative;
        try {
            relative = target.makeRelativeTo(base);
        } catch (const std::logic_error& e) {
            EXPECT_EQ(row.fields[2], std::string("!") + e.what()) << row.at;
            EXPECT_EQ(target, value(row.fields[0])) << row.at << ": operand changed";
            continue;
        }
        EXPECT_EQ(utf8(relative.toString(false)), row.fields[2]) << row.at;
        const std::string kept = row.fields.size() > 3 ? row.fields[3] : "";
        const IRI back = IRI(relative.toString(false)).resolveAgainst(base);
        EXPECT_EQ(back == target && relative.resolveAgainst(base) == target, kept.empty())
            << row.at;
        EXPECT_TRUE(kept.empty() ||
                    (kept == "unreachable" ? fntest::unreachableByResolution(target, base)
                                           : fntest::isOneDotDotTooFew(relative, target, base)))
            << row.at;
    }
}

// The derived forms and the hash are cached: every copy, move, swap, assignment and clear must
// carry them over or drop them with the value. Each value's hash is first asked for after it was
// copied, so an assignment also meets a source whose hash was never computed.
TEST(IRI, CachesFollowCopiesMovesSwapsAssignmentsAndClear) {
    const std::u16string textA = u"http://a.example/\u00E9?x#%", textB = u"ftp://b.example/\u00FC";
    const fntest::Reads formsA = fntest::readEverything(IRI(textA)),
                        formsB = fntest::readEverything(IRI(textB)),
                        empty = fntest::readEverything(IRI());
    EXPECT_TRUE(IRI(u"").isEmpty() && IRI(u"") == IRI() && IRI(u"").hashValue() == 0);
    for (const bool assembled : {false, true}) {
        SCOPED_TRACE(assembled ? "assembled" : "parsed text");
        IRI a(textA), b(textB);
        for (IRI* value : {&a, &b}) {
            if (assembled) {
                iri::detail::IRIAccess::assembleFromParts(iri::detail::IRIAccess::impl(*value));
            }
            for (unsigned e = 0; e < 5; ++e) {
                value->toStringFromParts(Encoding(e));
            }
        }
        IRI copy(a);
        EXPECT_EQ(fntest::readEverything(copy), formsA) << "copied";
        IRI moved(std::move(copy));
        using Step =
            std::tuple<const char*, std::function<void()>, const IRI*, const fntest::Reads*>;
        const Step steps[] = {
            {"moved", [] {}, &moved, &formsA},
            {"moved from", [] {}, &copy, &empty},  // NOLINT(bugprone-use-after-move): it is empty
            {"swapped", [&] { moved.swap(b); }, &moved, &formsB},
            {"swapped with", [] {}, &b, &formsA},
            {"copy-assigned", [&] { moved = a; }, &moved, &formsA},
            {"move-assigned", [&] { moved = IRI(textB); }, &moved, &formsB},
            {"self-assigned", [&] { moved = moved; }, &moved, &formsB},
            {"assigned empty", [&] { moved = IRI(); }, &moved, &empty},
            {"cleared", [&] { a.clear(); }, &a, &empty},
            {"assigned after clear", [&] { a = b; }, &a, &formsA},
            {"swapped with empty", [&] { swap(a, moved); }, &a, &empty},
            {"swapped with empty", [] {}, &moved, &formsA}};
        for (const auto& [step, act, value, forms] : steps) {
            act();
            EXPECT_EQ(fntest::readEverything(*value), *forms) << step;
        }
    }
}

// A megabyte-long IRI (many segments, dot segments, bad escapes, a long query) parses,
// serialises, resolves and relativises in a thread with a 1 MB stack: anything that recursed once
// per character or segment would overflow it.
TEST(IRI, MegabyteValuesNeedNoDeepStack) {
    std::u16string path, bad, reference, expected = u"/dir/";
    for (int i = 0; i < 116509; ++i) {  // a reference of 1 MB, a path and a bad path of 0.5 MB
        path += i < 32768 ? u"/seg/./x/../%41\u00E9" : u"";
        bad += i < 40000 ? u"/%C3%A9\u00E9%zz" : u"";
        reference += u"a/../b/./";
        expected += u"b/";
    }
    const std::u16string text = u"http://h" + path + u"?" + std::u16string(1u << 19, u'q');
    auto work = [&] {
        const IRI iri(text), badIri(u"s://h" + bad + u"?" + bad.substr(1) + u"#" + bad.substr(1));
        ASSERT_EQ(iri.toString(false), text);
        EXPECT_EQ(iri.toString(true), text);
        EXPECT_GT(iri.toAsciiString(true).size(), text.size());
        EXPECT_EQ(iri.getPath(Encoding(0)).size(), path.size() - 2 * (path.size() / 16));
        EXPECT_EQ(badIri.getPath(Encoding(0)).size(), 40000u * 6);
        EXPECT_EQ(badIri.getPath(Encoding(3)).size(), 40000u * 16);
        EXPECT_EQ(badIri.toString(true).size(), 3 * 40000u * 13 + 5);
        EXPECT_EQ(IRI(badIri.toAsciiString(true)).toAsciiString(true), badIri.toAsciiString(true));
        const IRI resolved = IRI(reference).resolveAgainst(IRI(u"http://h/dir/page"));
        EXPECT_EQ(resolved.getPath(Encoding(1)), expected);
        (void)iri.makeRelativeTo(IRI(u"http://h/seg/other")).toString(false);
        EXPECT_EQ(iri.hashValue(), IRI(text).hashValue());
    };
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, 1u << 20), 0);
    pthread_t thread;
    const auto run = [](void* argument) -> void* {
        (*static_cast<decltype(work)*>(argument))();
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, &attributes, run, &work), 0);
    ASSERT_EQ(pthread_join(thread, nullptr), 0);
    pthread_attr_destroy(&attributes);
}

}  // namespace
}  // namespace foundation::network
