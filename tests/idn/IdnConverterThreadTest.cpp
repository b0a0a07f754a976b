#include "foundation/network/IdnConverter.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "RawIcu.h"
#include "support/Corpus.h"

namespace {

using foundation::network::IdnConverter;

// One converter and its copies used from several threads at once: every thread must get what a
// single thread gets. Meant for the tsan preset.
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
    constexpr int kThreads = 4;
    std::vector<int> mismatches(kThreads, 0);
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        // Even threads share the original, odd ones take a copy made on their own thread.
        threads.emplace_back([&, t] {
            const IdnConverter copy = converter;
            const IdnConverter& use = t % 2 == 0 ? converter : copy;
            for (std::size_t i = 0; i < names.size(); ++i) {
                const std::string out = use.toAscii(names[i]);
                mismatches[t] += out != ascii[i];
                mismatches[t] += use.toUnicode(out) != unicode[i];
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
