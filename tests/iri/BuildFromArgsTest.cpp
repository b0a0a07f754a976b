#include "foundation/network/IRIArgs.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "foundation/network/IRI.h"
#include "support/Text.h"

namespace {

using fntest::utf8;
using foundation::network::IRI;
using foundation::network::IRIArgs;
using foundation::network::iri::Encoding;

std::string refusal(const IRIArgs& args) {
    try {
        (void)IRI(args);
    } catch (const std::logic_error& e) {
        return e.what();
    }
    return "(built)";
}

TEST(BuildFromArgsTest, ChecksRunInOrder) {
    IRIArgs args;
    args.setScheme(u"1s").setUserInfo(u"u").setPort(80).setPath(u"p");
    EXPECT_EQ(refusal(args), "Malformed scheme");
    args.schemeChecked = true;
    EXPECT_EQ(refusal(args), "User Info requires a host");
    args.userInfoSet = false;
    EXPECT_EQ(refusal(args), "Port requires a host");
    args.portSet = false;
    args.setHost(u"h");
    EXPECT_EQ(refusal(args), "Path cannot be relative if authority present");
    args.setPath(u"");
    EXPECT_EQ(utf8(IRI(args).toString()), "1s://h");
    for (const char16_t* scheme : {u"", u"a b", u"a:", u"+a", u"-"}) {
        IRIArgs bad;
        bad.setScheme(scheme);
        EXPECT_EQ(refusal(bad), "Malformed scheme") << utf8(scheme);
    }
}

TEST(BuildFromArgsTest, Shapes) {
    struct Case {
        IRIArgs args;
        std::u16string text;
        bool empty;
        bool absolute;
        bool opaque;
    };
    const std::vector<Case> cases = {
        {IRIArgs(), u"", true, false, false},
        {IRIArgs().setPath(u"a/b"), u"a/b", false, false, false},
        {IRIArgs().setHost(u"h").setPath(u""), u"//h", false, false, false},
        {IRIArgs().setHost(u"h"), u"//h", false, false, false},
        {IRIArgs().setScheme(u"s"), u"s:", false, true, true},
        {IRIArgs().setScheme(u"s").setPath(u"/x"), u"s:/x", false, true, false},
        {IRIArgs().setScheme(u"s").setPath(u"x:y"), u"s:x:y", false, true, true},
        {IRIArgs().setHost(u"h").setPort(0), u"//h:0", false, false, false},
        {IRIArgs().setHost(u"h").setPort(65535), u"//h:65535", false, false, false},
        {IRIArgs().setHost(u"[::1]").setPath(u"/p"), u"//[::1]/p", false, false, false},
        {IRIArgs().setPath(u"/a b%/\u00e9").setQuery(u"x y#").setFragment(u"#%"),
         u"/a%20b%25/\u00e9?x%20y%23#%23%25", false, false, false},
        {IRIArgs().setQuery(u""), u"?", false, false, false},
    };
    for (const auto& c : cases) {
        const IRI iri(c.args);
        EXPECT_EQ(iri.toString(), c.text);
        EXPECT_EQ(iri.isEmpty(), c.empty) << utf8(c.text);
        EXPECT_EQ(iri.isAbsolute(), c.absolute) << utf8(c.text);
        EXPECT_EQ(iri.isOpaque(), c.opaque) << utf8(c.text);
        // What was built parses back to an equal value.
        EXPECT_EQ(IRI(iri.toString()), iri) << utf8(c.text);
    }
    EXPECT_EQ(IRI(IRIArgs().setHost(u"h").setPort(0)).getPort(), u"0");
    const IRI escaped(IRIArgs().setPath(u"/a b%/\u00e9").setQuery(u"x y#").setFragment(u"#%"));
    EXPECT_EQ(escaped.getPath(Encoding(0)), u"/a b%/\u00e9");
    EXPECT_EQ(escaped.getQuery(Encoding(0)), u"x y#");
    EXPECT_EQ(escaped.getFragment(Encoding(0)), u"#%");
}

TEST(BuildFromArgsTest, QueryAsOctets) {
    IRIArgs args;
    args.setScheme(u"s").setHost(u"h").setPath(u"/").setQuery(u"\u00e9");
    args.queryAsOctets = true;
    const IRI octets(args);
    EXPECT_EQ(octets.toAsciiString(), u"s://h/?%C3%A9");
    IRIArgs back(octets);
    EXPECT_TRUE(back.queryAsOctets);
    EXPECT_FALSE(back.queryOption);
}

TEST(BuildFromArgsTest, TakenApartAndBuiltAgain) {
    const IRI parsed(u"http://u%40s@h%C3%A9:8080/a%20b/c?x=%26#f%23");
    IRIArgs args(parsed);
    EXPECT_TRUE(args.schemeSet && args.schemeChecked && args.userInfoSet && args.hostSet &&
                args.portSet && args.pathSet && args.querySet && args.fragmentSet);
    EXPECT_EQ(args.scheme, L"http");
    EXPECT_EQ(args.userInfo, L"u@s");
    EXPECT_EQ(args.host, L"h\u00e9");
    EXPECT_EQ(args.port, 8080);
    EXPECT_EQ(args.path, L"/a b/c");
    EXPECT_EQ(args.query, L"x=&");
    EXPECT_EQ(args.fragment, L"f#");
    EXPECT_TRUE(args.userInfoFromIri && args.hostFromIri && args.pathFromIri && args.queryFromIri &&
                args.fragmentFromIri);
    const IRI rebuilt(args);
    EXPECT_EQ(IRIArgs(rebuilt).path, args.path);
    EXPECT_EQ(rebuilt.getHost(Encoding(0)), u"h\u00e9");
    EXPECT_EQ(rebuilt.getPortNumber(), 8080);

    const IRIArgs none{IRI()};
    EXPECT_TRUE(none.pathSet && none.path.empty());
    EXPECT_TRUE(IRI(none).isEmpty());

    IRIArgs plain(IRI(u"a/b"));
    EXPECT_FALSE(plain.schemeSet || plain.hostSet || plain.querySet || plain.fragmentSet);
    EXPECT_TRUE(plain.pathSet);
    EXPECT_EQ(IRI(plain), IRI(u"a/b"));
}

TEST(BuildFromArgsTest, SettersRefuseUnpairedSurrogates) {
    IRIArgs args;
    EXPECT_THROW(args.setHost(std::u16string(1, char16_t(0xD800))), std::out_of_range);
    EXPECT_FALSE(args.hostSet);
}

}  // namespace
