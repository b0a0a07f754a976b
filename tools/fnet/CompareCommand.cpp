// fnet compare: equality, order and hashes of pairs of IRIs.
#include <cstdint>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "Cli.h"
#include "Commands.h"
#include "IriInput.h"
#include "Json.h"
#include "Text.h"

namespace fnet {

using foundation::network::IRI;

int runCompare(int argc, char** argv) {
    Cli cli("compare", "[--json] [--] A B [A B]...",
            "Compares each pair of IRIs A and B: equal (A == B), less (A < B, the text order)\n"
            "and both hash values. Inputs are taken two by two (with '-', lines of standard\n"
            "input alternate A and B). Plain output: one line per pair,\n"
            "\"equal=BOOL less=BOOL hashA=N hashB=N\". With --json: one object per pair with\n"
            "the keys a, b, equal, less, hashA, hashB (numbers) and error.");
    if (const auto status = cli.parse(argc, argv)) {
        return *status;
    }
    const std::vector<std::string> inputs = cli.inputs();
    if (inputs.empty() || inputs.size() % 2 != 0) {
        return cli.usageError("needs IRIs in pairs: A B");
    }
    const auto comparePair = [&](const std::string& aText, const std::string& bText) {
        std::string error;
        std::optional<IRI> a = readIri(aText, error);
        std::optional<IRI> b;
        if (a) {
            b = readIri(bText, error);
            if (!b) {
                error = "b: " + error;
            }
        } else {
            error = "a: " + error;
        }
        JsonObject json;
        json.text("a", aText).text("b", bText);
        if (!a || !b) {
            cli.error(error + ": " + sanitizeUtf8(aText) + " " + sanitizeUtf8(bText));
            if (cli.json()) {
                json.null("equal").null("less").null("hashA").null("hashB").text("error", error);
                std::cout << json.str() << "\n";
            }
            return false;
        }
        const bool equal = *a == *b;
        const bool less = *a < *b;
        const std::string hashA = std::to_string(a->hashValue());
        const std::string hashB = std::to_string(b->hashValue());
        if (cli.json()) {
            json.boolean("equal", equal)
                .boolean("less", less)
                .raw("hashA", hashA)
                .raw("hashB", hashB)
                .null("error");
            std::cout << json.str() << "\n";
        } else {
            std::cout << "equal=" << (equal ? "true" : "false")
                      << " less=" << (less ? "true" : "false") << " hashA=" << hashA
                      << " hashB=" << hashB << "\n";
        }
        return true;
    };
    int status = kExitOk;
    for (std::size_t i = 0; i < inputs.size(); i += 2) {
        if (!comparePair(inputs[i], inputs[i + 1])) {
            status = kExitFailed;
        }
    }
    return status;
}

}  // namespace fnet
