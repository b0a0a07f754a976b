#include "foundation/network/IdnConverter.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "RawIcu.h"
#include "support/Corpus.h"

namespace {

using foundation::network::IdnConverter;

// One converter, its copies (made, assigned and dropped while others convert) and the free
// functions used from several threads at once: every thread must get what a single thread gets.
// Meant for the tsan preset.
TEST(IdnConverterThreadTest, OneEngineServesSeveralThreads) {
    const std::vector<std::string> lines = fntest::readLines("idn.txt", 600);
    std::vector<std::u16string> names;
    std::vector<std::string> ascii;
    std::vector<std::u16string> unicode;
    for (const std::string& line : lines) {
        names.push_back(fntest::fromUtf8(line));
        const fntest::RawIcuResult toAscii = fntest::rawToAscii(fntest::icuString(names.back()));
        ascii.push_back(fntest::utf8(toAscii.text));
        unicode.push_back(fntest::u16(fntest::rawToUnicode(toAscii.text).text));
    }

    const IdnConverter converter;
    constexpr int kThreads = 6;
    std::vector<int> mismatches(kThreads, 0);
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        // Threads 0 and 3 share the original; 1 and 4 take one copy made on their own thread;
        // 2 copies and assigns it again for every name (the shared count changes under the
        // readers); 5 uses the free functions, which make an engine per call.
        threads.emplace_back([&, t] {
            IdnConverter copy = converter;
            for (std::size_t i = 0; i < names.size(); ++i) {
                std::string out;
                std::u16string back;
                if (t == 5) {
                    out = foundation::network::idn_to_ascii(names[i]);
                    back = foundation::network::ascii_to_idn(out);
                } else {
                    if (t == 2) {
                        copy = IdnConverter(converter);
                    }
                    const IdnConverter& use = t % 3 == 0 ? converter : copy;
                    out = use.toAscii(names[i]);
                    back = use.toUnicode(out);
                }
                mismatches[t] += out != ascii[i];
                mismatches[t] += back != unicode[i];
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    for (int t = 0; t < kThreads; ++t) {
        EXPECT_EQ(mismatches[t], 0) << "thread " << t;
    }
}

}  // namespace
