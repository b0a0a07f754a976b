#include "foundation/network/IRI.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "foundation/core/except/Exception.h"
#include "iri/IRIAccess.h"

namespace foundation::network {
namespace {

using iri::Encoding;
using iri::detail::IRIAccess;

std::string utf8(const std::u16string& s) {
    std::string out;
    for (char16_t c : s) {
        out.push_back(c < 0x80 ? static_cast<char>(c) : '?');
    }
    return out;
}

template <class E>
std::string messageOf(const std::function<void()>& f) {
    try {
        f();
    } catch (const E& e) {
        EXPECT_NE(dynamic_cast<const core::except::IInternalException*>(&e), nullptr) << e.what();
        return e.what();
    }
    return "(no exception)";
}

struct FlagCase {
    std::u16string text;
    bool empty, absolute, opaque, authority, absolutePath;
    bool userInfo, host, port, query, fragment;
};

TEST(IRI, ParsingSetsThePresenceAndShapeFlags) {
    const std::vector<FlagCase> cases = {
        {u"", true, false, false, false, false, false, false, false, false, false},
        {u"a:b", false, true, true, false, false, false, false, false, false, false},
        {u"a:", false, true, true, false, false, false, false, false, false, false},
        {u"a:/b", false, true, false, false, true, false, false, false, false, false},
        {u"a://h", false, true, false, true, false, false, true, false, false, false},
        {u"//h/p", false, false, false, true, true, false, true, false, false, false},
        {u"//", false, false, false, true, false, false, true, false, false, false},
        {u"//@", false, false, false, true, false, true, true, false, false, false},
        {u"x://u@[::1]:80/p?q#f", false, true, false, true, true, true, true, true, true, true},
        {u"?", false, false, false, false, false, false, false, false, true, false},
        {u"#", false, false, false, false, false, false, false, false, false, true},
        {u"p/q%20r", false, false, false, false, false, false, false, false, false, false},
    };
    for (const auto& c : cases) {
        const IRI iri(c.text);
        SCOPED_TRACE(utf8(c.text));
        EXPECT_EQ(iri.isEmpty(), c.empty);
        EXPECT_EQ(iri.isAbsolute(), c.absolute);
        EXPECT_EQ(iri.hasScheme(), c.absolute);
        EXPECT_EQ(iri.isOpaque(), c.opaque);
        EXPECT_EQ(iri.hasAuthority(), c.authority);
        EXPECT_EQ(iri.hasAbsolutePath(), c.absolutePath);
        EXPECT_EQ(iri.hasUserInfo(), c.userInfo);
        EXPECT_EQ(iri.hasHost(), c.host);
        EXPECT_EQ(iri.hasPort(), c.port);
        EXPECT_EQ(iri.hasQuery(), c.query);
        EXPECT_EQ(iri.hasFragment(), c.fragment);
        EXPECT_EQ(iri.toString(false), c.text);
        // Assembled from the components, the serialisations give the same text.
        IRI assembled(c.text);
        IRIAccess::assembleFromParts(IRIAccess::impl(assembled));
        EXPECT_EQ(assembled.toString(false), c.text);
        EXPECT_EQ(assembled.toString(true), c.text);
        EXPECT_EQ(assembled.toAsciiString(false), c.text);
    }
    EXPECT_EQ(IRI(u"").getPath(Encoding(1)), u"");
    EXPECT_EQ(IRI(u"x://h:0080/").getPortNumber(), 80);
    EXPECT_EQ(IRI(u"x://h:0080/").getPort(), u"0080");
    EXPECT_EQ(IRI(u"x://h:65535/").getPortNumber(), 65535);
}

TEST(IRI, BadTextThrowsTheParsingFailure) {
    for (const std::u16string text : {u" a", u"x://u%zz@h/", u"x://h:65536/", u"x://h:/",
                                      u"x://h:\u0663/", u"a b", u"x://[::1/", u"x:\u0001"}) {
        EXPECT_EQ(messageOf<std::logic_error>([&] { IRI{text}; }), "IRI parsing failed")
            << utf8(text);
    }
    try {
        IRI{std::u16string(u"x:/") + char16_t(0xD800)};
        ADD_FAILURE() << "an unpaired surrogate was accepted";
    } catch (const std::out_of_range& e) {
        EXPECT_EQ(std::string(e.what()).rfind("Misplaced UTF-16 surrogate U+", 0), 0u) << e.what();
    }
}

TEST(IRI, AbsentPartsThrowTheirTexts) {
    const IRI relative(u"//h/p");
    const IRI plain(u"s://h/");
    EXPECT_EQ(messageOf<std::runtime_error>([&] { relative.getScheme(); }), "No scheme");
    EXPECT_EQ(messageOf<std::runtime_error>([&] { plain.getPortNumber(); }), "No port");
    EXPECT_EQ(messageOf<std::runtime_error>([&] { plain.getPort(); }), "No port");
    EXPECT_EQ(messageOf<std::runtime_error>([&] { plain.getQuery(Encoding(0)); }),
              "Item not set: Query");
    EXPECT_EQ(messageOf<std::runtime_error>([&] { plain.getUserInfo(Encoding(4)); }),
              "Item not set: UserInfo");
    EXPECT_EQ(messageOf<std::runtime_error>([&] { IRI(u"a:b").getAuthority(Encoding(1)); }),
              "Item not set: Host: Host (in getAuthority)");
    EXPECT_EQ(messageOf<std::runtime_error>([&] { IRI().getPath(Encoding(1)); }),
              "Item not set: Path");
    EXPECT_THROW(plain.getHost(Encoding(5)), std::invalid_argument);
    EXPECT_THROW(plain.toStringFromParts(Encoding(7)), std::invalid_argument);
}

TEST(IRI, ComponentsReadInEveryEncoding) {
    const IRI iri(u"http://u%40v@\u00E9x.org:8080/p%2F\u00E9%20/?q=\u00E9&r=%3D#fr\u00E9");
    struct Row {
        std::function<std::u16string(const Encoding&)> get;
        std::u16string decoded, iriForm, uriForm;
    };
    const std::vector<Row> rows = {
        {[&](const Encoding& e) { return iri.getUserInfo(e); }, u"u@v", u"u%40v", u"u%40v"},
        {[&](const Encoding& e) { return iri.getHost(e); }, u"\u00E9x.org", u"\u00E9x.org",
         u"%C3%A9x.org"},
        {[&](const Encoding& e) { return iri.getPath(e); }, u"/p/\u00E9 /", u"/p%2F\u00E9%20/",
         u"/p%2F%C3%A9%20/"},
        {[&](const Encoding& e) { return iri.getQuery(e); }, u"q=\u00E9&r==", u"q=\u00E9&r=%3D",
         u"q=%C3%A9&r=%3D"},
        {[&](const Encoding& e) { return iri.getFragment(e); }, u"fr\u00E9", u"fr\u00E9",
         u"fr%C3%A9"},
        {[&](const Encoding& e) { return iri.getAuthority(e); }, u"u@v@\u00E9x.org:8080",
         u"u%40v@\u00E9x.org:8080", u"u%40v@%C3%A9x.org:8080"},
        {[&](const Encoding& e) { return iri.getSchemeSpecificPart(e); },
         u"//u@v@\u00E9x.org:8080/p/\u00E9 /?q=\u00E9&r==",
         u"//u%40v@\u00E9x.org:8080/p%2F\u00E9%20/?q=\u00E9&r=%3D",
         u"//u%40v@%C3%A9x.org:8080/p%2F%C3%A9%20/?q=%C3%A9&r=%3D"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(utf8(row.iriForm));
        EXPECT_EQ(row.get(Encoding(0)), row.decoded);
        EXPECT_EQ(row.get(Encoding(1)), row.iriForm);
        EXPECT_EQ(row.get(Encoding(2)), row.iriForm);
        EXPECT_EQ(row.get(Encoding(3)), row.uriForm);
        EXPECT_EQ(row.get(Encoding(4)), row.uriForm);
    }
    EXPECT_EQ(iri.getScheme(), u"http");
    EXPECT_EQ(iri.getPortNumber(), 8080);
    EXPECT_EQ(IRI(u"s:p/q?x#f").getSchemeSpecificPart(Encoding(1)), u"p/q?x");
    EXPECT_EQ(IRI(u"s://h:1?#").getSchemeSpecificPart(Encoding(3)), u"//h:1?");
    EXPECT_EQ(iri.toAsciiString(false),
              u"http://u%40v@%C3%A9x.org:8080/p%2F%C3%A9%20/?q=%C3%A9&r=%3D#fr%C3%A9");
    EXPECT_EQ(iri.toStringFromParts(Encoding(0)),
              u"http://u@v@\u00E9x.org:8080/p/\u00E9 /?q=\u00E9&r==#fr\u00E9");
}

TEST(IRI, StrictFormsRepairStrayPercentsButKeepIpLiterals) {
    struct Case {
        std::u16string text, strict, asciiStrict;
    };
    const std::vector<Case> cases = {
        {u"s:a%zz", u"s:a%25zz", u"s:a%25zz"},
        {u"s:/a%4", u"s:/a%254", u"s:/a%254"},
        {u"x://[::1]:8/a%?%q#%", u"x://[::1]:8/a%25?%25q#%25", u"x://[::1]:8/a%25?%25q#%25"},
        {u"x://[v7.a]/%C3%A9%\u00E9", u"x://[v7.a]/%C3%A9%25\u00E9", u"x://[v7.a]/%C3%A9%25%C3%A9"},
        {u"s:%FF", u"s:%FF", u"s:%FF"},
    };
    for (const auto& c : cases) {
        const IRI iri(c.text);
        SCOPED_TRACE(utf8(c.text));
        EXPECT_EQ(iri.toString(false), c.text);
        EXPECT_EQ(iri.toString(true), c.strict);
        EXPECT_EQ(iri.toAsciiString(true), c.asciiStrict);
        EXPECT_EQ(IRI(c.strict).toString(true), c.strict);
    }
    const IRI literal(u"x://[::1]/a%zz");
    EXPECT_EQ(literal.getHost(Encoding(2)), u"[::1]");
    EXPECT_EQ(literal.getHost(Encoding(4)), u"[::1]");
    EXPECT_EQ(literal.getHost(Encoding(0)), u"[::1]");
    EXPECT_EQ(literal.getPath(Encoding(2)), u"/a%25zz");
    EXPECT_EQ(literal.getPath(Encoding(1)), u"/a%zz");
    EXPECT_EQ(literal.getSchemeSpecificPart(Encoding(2)), u"//[::1]/a%25zz");
}

// The derived forms and the hash are cached: every copy, move, swap, assignment and clear must
// carry them over or drop them with the value. Each value's hash is first asked for after it was
// copied, so an assignment also meets a source whose hash was never computed.
TEST(IRI, CachesFollowCopiesMovesSwapsAssignmentsAndClear) {
    struct Forms {
        std::u16string text, strict, ascii, asciiStrict, path;
    };
    const Forms formsA = {u"http://a.example/\u00E9?x#%", u"http://a.example/\u00E9?x#%25",
                          u"http://a.example/%C3%A9?x#%", u"http://a.example/%C3%A9?x#%25",
                          u"/%C3%A9"};
    const Forms formsB = {u"ftp://b.example/\u00FC", u"ftp://b.example/\u00FC",
                          u"ftp://b.example/%C3%BC", u"ftp://b.example/%C3%BC", u"/%C3%BC"};
    const auto hashA = IRI(formsA.text).hashValue();
    const auto hashB = IRI(formsB.text).hashValue();
    const auto fill = [](const IRI& iri) {
        for (unsigned e = 0; e < 5; ++e) {
            iri.toStringFromParts(Encoding(e));
        }
    };
    const auto expectForms = [](const IRI& iri, const Forms& f, std::uint64_t hash) {
        EXPECT_EQ(iri.toString(false), f.text);
        EXPECT_EQ(iri.toString(true), f.strict);
        EXPECT_EQ(iri.toAsciiString(false), f.ascii);
        EXPECT_EQ(iri.toAsciiString(true), f.asciiStrict);
        EXPECT_EQ(iri.getPath(Encoding(3)), f.path);
        EXPECT_EQ(iri.hashValue(), hash);
    };
    const auto expectA = [&](const IRI& iri) { expectForms(iri, formsA, hashA); };
    const auto expectB = [&](const IRI& iri) { expectForms(iri, formsB, hashB); };
    const auto expectEmpty = [](const IRI& iri) {
        EXPECT_TRUE(iri.isEmpty());
        for (unsigned e = 0; e < 5; ++e) {
            EXPECT_EQ(iri.toStringFromParts(Encoding(e)), u"");
        }
        EXPECT_FALSE(iri.hasScheme());
        EXPECT_FALSE(iri.hasQuery());
        EXPECT_EQ(iri.hashValue(), 0u);
    };
    EXPECT_NE(hashA, 0u);
    EXPECT_EQ(std::hash<IRI>{}(IRI(formsA.text)), static_cast<std::size_t>(hashA));
    expectEmpty(IRI(u""));

    for (const bool assembled : {false, true}) {
        SCOPED_TRACE(assembled ? "assembled" : "parsed text");
        IRI a(formsA.text);
        IRI b(formsB.text);
        if (assembled) {
            IRIAccess::assembleFromParts(IRIAccess::impl(a));
            IRIAccess::assembleFromParts(IRIAccess::impl(b));
        }
        fill(a);
        fill(b);
        IRI copy(a);
        expectA(copy);
        IRI moved(std::move(copy));
        expectA(moved);
        expectEmpty(copy);  // NOLINT(bugprone-use-after-move): a moved-from value is empty
        moved.swap(b);
        expectB(moved);
        expectA(b);
        moved = a;
        expectA(moved);
        moved = IRI(formsB.text);
        expectB(moved);
        moved = moved;
        expectB(moved);
        moved = IRI();
        expectEmpty(moved);
        a.clear();
        expectEmpty(a);
        a = b;
        expectA(a);
        swap(a, moved);
        expectEmpty(a);
        expectA(moved);
    }
}

// Random text from the characters that matter to the grammar and the encoders: whatever
// parses must answer every getter and serialise to text that parses again to the same forms.
TEST(IRI, RandomTextParsesOrFailsCleanlyAndRoundTrips) {
    const std::u16string alphabet =
        u"aZ09:/?#[]@!$&'()*+,;=-._~% \"<>\\^`{|}\u00E9\u0663\u200E\uE000\uFFFF\U0001F600";
    std::mt19937 random(20260521);
    std::size_t parsed = 0;
    for (int round = 0; round < 20000; ++round) {
        std::u16string text;
        const std::size_t length = random() % 24;
        for (std::size_t i = 0; i < length; ++i) {
            text += alphabet[random() % alphabet.size()];
            if (random() % 8 == 0) {
                text += u"%C3%A9";
            }
        }
        std::optional<IRI> iri;
        try {
            iri.emplace(text);
        } catch (const std::logic_error&) {  // parse failure, or a surrogate cut in two
            continue;
        }
        ++parsed;
        SCOPED_TRACE(utf8(text));
        for (unsigned value = 0; value < 5; ++value) {
            const Encoding e(value);
            for (const auto& get :
                 {&IRI::getUserInfo, &IRI::getHost, &IRI::getPath, &IRI::getQuery,
                  &IRI::getFragment, &IRI::getAuthority, &IRI::getSchemeSpecificPart}) {
                try {
                    (*iri.*get)(e);
                } catch (const std::runtime_error&) {  // absent
                }
            }
        }
        ASSERT_EQ(iri->toString(false), text);
        const std::u16string ascii = iri->toAsciiString(false);
        ASSERT_EQ(IRI(ascii).toAsciiString(false), ascii);
        const std::u16string strict = iri->toString(true);
        ASSERT_EQ(IRI(strict).toString(true), strict);
        ASSERT_EQ(IRI(iri->toAsciiString(true)).toAsciiString(true), iri->toAsciiString(true));
    }
    EXPECT_GT(parsed, 1000u);
}

TEST(IRI, LongTextIsHandledInLinearTime) {
    std::u16string path;
    for (int i = 0; i < 40000; ++i) {
        path += u"/%C3%A9\u00E9%zz[";
        path.pop_back();
    }
    const IRI iri(u"s://h" + path + u"?" + path.substr(1) + u"#" + path.substr(1));
    EXPECT_EQ(iri.getPath(Encoding(0)).size(), 40000u * 6);
    EXPECT_EQ(iri.getPath(Encoding(3)).size(), 40000u * 16);
    EXPECT_EQ(iri.toString(true).size(), 3 * 40000u * 13 + 5);
    EXPECT_EQ(IRI(iri.toAsciiString(true)).toAsciiString(true), iri.toAsciiString(true));
}

// Runs `work` on a thread with a 1 MB stack: anything that recursed once per character or
// segment of a megabyte-long text would overflow it.
template <class Work>
void onSmallStack(Work work) {
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, 1u << 20), 0);
    pthread_t thread;
    const auto run = [](void* argument) -> void* {
        (*static_cast<Work*>(argument))();
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, &attributes, run, &work), 0);
    ASSERT_EQ(pthread_join(thread, nullptr), 0);
    pthread_attr_destroy(&attributes);
}

// A megabyte-long IRI (many segments, dot segments, a long query) parses, serialises, resolves
// and relativises without exhausting a small stack.
TEST(IRI, MegabyteValuesNeedNoDeepStack) {
    std::u16string path;
    while (path.size() < (1u << 19)) {
        path += u"/seg/./x/../%41\u00E9";
    }
    const std::u16string text = u"http://h" + path + u"?" + std::u16string(1u << 19, u'q');
    std::u16string reference;
    while (reference.size() < (1u << 20)) {
        reference += u"a/../b/./";
    }
    bool done = false;
    onSmallStack([&] {
        const IRI iri(text);
        ASSERT_EQ(iri.toString(false), text);
        EXPECT_EQ(iri.toString(true), text);
        EXPECT_GT(iri.toAsciiString(true).size(), text.size());
        EXPECT_EQ(IRI(iri.toAsciiString(false)), IRI(iri.toAsciiString(false)));
        EXPECT_EQ(iri.getPath(Encoding(0)).size(), path.size() - 2 * (path.size() / 16));
        std::u16string expected = u"/dir/";
        for (std::size_t i = 0; i < reference.size() / 9; ++i) {
            expected += u"b/";
        }
        const IRI resolved = IRI(reference).resolveAgainst(IRI(u"http://h/dir/page"));
        EXPECT_EQ(resolved.getPath(Encoding(1)), expected);
        const IRI relative = iri.makeRelativeTo(IRI(u"http://h/seg/other"));
        EXPECT_EQ(iri.hashValue(), IRI(text).hashValue());
        (void)relative.toString(false);
        done = true;
    });
    EXPECT_TRUE(done);
}

TEST(IRI, StreamsAsAscii) {
    std::ostringstream out;
    out << IRI(u"http://h/\u00E9") << '|' << IRI() << '|' << IRI(u"");
    EXPECT_EQ(out.str(), "http://h/%C3%A9||");
}

}  // namespace
}  // namespace foundation::network
