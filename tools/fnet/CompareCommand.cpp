// fnet compare: equality, order and hashes of pairs of IRIs.
#include <optional>
#include <string>

#include "Commands.h"
#include "IriInput.h"
#include "Runner.h"

namespace fnet {

using foundation::network::IRI;

namespace {

Job prepare(const Cli& cli) {
    const bool json = cli.json();
    const auto handler = [json](std::span<const std::string_view> items, Outcome& out) {
        std::string error;
        const std::optional<IRI> a = readIri(items[0], error);
        if (!a) {
            out.fail("a: " + error);
            return;
        }
        const std::optional<IRI> b = readIri(items[1], error);
        if (!b) {
            out.fail("b: " + error);
            return;
        }
        const bool equal = *a == *b;
        const bool less = *a < *b;
        if (json) {
            out.keys["equal"] = equal;
            out.keys["less"] = less;
            out.keys["hashA"] = a->hashValue();
            out.keys["hashB"] = b->hashValue();
        } else {
            out.text = std::string("equal=") + (equal ? "true" : "false") +
                       " less=" + (less ? "true" : "false") +
                       " hashA=" + std::to_string(a->hashValue()) +
                       " hashB=" + std::to_string(b->hashValue()) + "\n";
        }
    };
    return {{"equal", "less", "hashA", "hashB"}, [handler]() -> Handler { return handler; }};
}

}  // namespace

const Command kCompareCommand{
    .name = "compare",
    .summary = "compare pairs of IRIs: equal, less, hashes",
    .usage = "[--json] [--] A B [A B]...",
    .description =
        "Compares each pair of IRIs A and B: equal (A == B), less (A < B, the text order)\n"
        "and both hash values. Inputs are taken two by two (with '-', lines of standard\n"
        "input alternate A and B). Plain output: one line per pair,\n"
        "\"equal=BOOL less=BOOL hashA=N hashB=N\". With --json: one object per pair with\n"
        "the keys input ([A, B]), equal, less, hashA, hashB (numbers) and error.",
    .inputs = {.missing = "needs IRIs in pairs: A B", .shape = {.group = 2}},
    .prepare = prepare,
};

}  // namespace fnet
