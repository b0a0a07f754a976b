#include "foundation/network/IRI.h"

#include <gtest/gtest.h>
#include <pthread.h>

#include <cstdint>
#include <optional>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "foundation/network/IRIArgs.h"
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

TEST(IRIArgs, SettersRefuseUnpairedSurrogates) {
    IRIArgs args;
    EXPECT_THROW(args.setHost(std::u16string(1, char16_t(0xD800))), std::out_of_range);
    EXPECT_FALSE(args.hostSet);
}

}  // namespace
}  // namespace foundation::network
