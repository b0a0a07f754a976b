// The size of an IRI and the heap blocks it holds, counted by replacing the global operator new
// in this test binary alone, so that no later change silently regrows the value.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <string>
#include <utility>

#include "foundation/network/IRI.h"

static std::size_t gBlocks = 0;       // blocks allocated and not yet freed
static std::size_t gAllocations = 0;  // blocks allocated at all

void* operator new(std::size_t size) {
    void* p = std::malloc(size == 0 ? 1 : size);
    if (p == nullptr) {
        throw std::bad_alloc();
    }
    ++gBlocks;
    ++gAllocations;
    return p;
}
void operator delete(void* p) noexcept {
    if (p != nullptr) {
        --gBlocks;
        std::free(p);
    }
}
// The sized and array forms too, as a sanitizer's runtime may serve them without the above.
void operator delete(void* p, std::size_t) noexcept {
    operator delete(p);
}
void* operator new[](std::size_t size) {
    return operator new(size);
}
void operator delete[](void* p) noexcept {
    operator delete(p);
}
void operator delete[](void* p, std::size_t) noexcept {
    operator delete(p);
}

namespace foundation::network {
namespace {

// The object fits in two cache lines. Blocks still held by one value, after parsing, after the
// reads that need no derived form (the text, the IRI form of each component) and after a copy: a
// text of up to seven UTF-16 units is held in the object itself, a longer one in one block.
TEST(IRIFootprint, AValueFitsTwoCacheLinesAndHoldsFewBlocks) {
    EXPECT_LE(sizeof(IRI), 128u);
    const std::pair<std::u16string, std::size_t> cases[] = {
        {u"", 0},
        {u"a:b", 0},
        {u"http://user@example.org:8080/a/b/../c?q=1#f", 1},
        {u"http://r\u00E9sum\u00E9.example/\U0001F600/%41?\u00E9#x", 1},
        {u"//h/" + std::u16string(5000, u'a'), 1},
        {u"rel/./a:b/../c", 1}};
    const iri::Encoding iriForm(1);
    // The first parse in a thread sets up the grammar and the thread's conversion buffer.
    static_cast<void>(IRI(u"//h/" + std::u16string(6000, u'a')));
    for (const auto& [text, blocks] : cases) {
        SCOPED_TRACE(testing::PrintToString(text));
        const std::size_t before = gBlocks;
        {
            const IRI iri(text);
            EXPECT_EQ(gBlocks - before, blocks) << "parse";
            EXPECT_EQ(iri.toString(false), text);
            static_cast<void>(iri.getPath(iriForm) + (iri.hasHost() ? iri.getHost(iriForm) : u"") +
                              (iri.hasQuery() ? iri.getQuery(iriForm) : u""));
            EXPECT_EQ(gBlocks - before, blocks) << "reads";
            const IRI copy(iri);
            EXPECT_EQ(gBlocks - before, 2 * blocks) << "copy";
        }
        EXPECT_EQ(gBlocks, before);
    }
    // Derived forms and serialisations share one block; a form equal to the stored text holds
    // nothing of its own.
    const IRI ascii(u"http://example.org/a/b?q#f"), unicode(u"http://example.org/\u00E9");
    std::size_t before = gBlocks;
    static_cast<void>(ascii.toAsciiString(false));
    static_cast<void>(ascii.getPath(iri::Encoding(0)));
    static_cast<void>(ascii.getHost(iri::Encoding(3)));
    EXPECT_EQ(gBlocks - before, 1u);
    before = gBlocks;
    static_cast<void>(unicode.toAsciiString(false));
    EXPECT_EQ(gBlocks - before, 3u);  // the table, the path's URI form, the serialisation
}

// Resolution and relativisation write the result's text from views of the operands: the one
// block the result holds is the only allocation, unless dot segments must be removed.
TEST(IRIFootprint, ResolutionAndRelativisationAllocateOnlyTheResult) {
    const IRI base(u"http://example.org/catalogue/books/item?id=7");
    struct Case {
        bool relativise;  // else resolve
        const char16_t* operand;
        const char16_t* expected;
    };
    const Case cases[] = {
        {false, u"reviews/latest", u"http://example.org/catalogue/books/reviews/latest"},
        {false, u"/help#contents", u"http://example.org/help#contents"},
        {false, u"//mirror.example.net/x", u"http://mirror.example.net/x"},
        {false, u"?page=2", u"http://example.org/catalogue/books/item?page=2"},
        {true, u"http://example.org/catalogue/music/album", u"../music/album"},
        {true, u"http://example.org/catalogue/books/item?id=8", u"?id=8"},
        {true, u"http://example.org/catalogue/books/cover.png", u"./cover.png"},
        {true, u"http://mirror.example.net/catalogue", u"//mirror.example.net/catalogue"}};
    for (const auto& [relativise, operand, expected] : cases) {
        SCOPED_TRACE(testing::PrintToString(std::u16string(operand)));
        const IRI parsed(operand);
        const auto run = [&] {
            return relativise ? parsed.makeRelativeTo(base) : parsed.resolveAgainst(base);
        };
        static_cast<void>(run());  // the operands' path scans, once
        const std::size_t before = gAllocations;
        const IRI result = run();
        EXPECT_EQ(gAllocations - before, 1u);
        EXPECT_EQ(result.toString(false), expected);
    }
}

}  // namespace
}  // namespace foundation::network
