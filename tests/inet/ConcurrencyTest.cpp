// Values shared across threads and calls made from several threads at once; meant for the
// ThreadSanitizer build, which fails on any data race.
#include <gtest/gtest.h>

#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "foundation/network/InetAddress.h"
#include "foundation/network/NetworkInterface.h"

namespace {

using foundation::network::InetAddress;
using foundation::network::NetworkInterface;

TEST(ConcurrencyTest, ParallelCallsAndSharedValuesUnderCopiesAndReads) {
    const auto interfaces = NetworkInterface::list();
    std::vector<InetAddress> values;
    std::vector<std::string> texts;
    for (const char* text : {"127.0.0.1", "224.1.2.3", "::1", "ff02::1", "fe80::1%lo",
                             "2001:db8::ffff:192.0.2.1", "10.0.0.255"}) {
        values.emplace_back(text);
        texts.push_back(values.back().toString());
    }
    constexpr int kThreads = 6;
    std::vector<int> mismatches(kThreads, 0);
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&, t] {
            InetAddress copy;
            for (int round = 0; round < 200; ++round) {
                for (std::size_t i = 0; i < values.size(); ++i) {
                    if (t % 2 == 1) {
                        copy = values[i];  // the count changes while others read
                    }
                    const InetAddress& use = t % 2 == 0 ? values[i] : copy;
                    mismatches[t] += use.toString() != texts[i] || use != values[i] ||
                                     use.hashValue() != values[i].hashValue() ||
                                     InetAddress(use.bytes()).bytes() != values[i].bytes() ||
                                     use.isLoopback() != values[i].isLoopback();
                }
                if (round % 4 == 0) {
                    // Each call makes its own resolver; an empty name fails without the network.
                    EXPECT_THROW(InetAddress::getAllByName(""), std::system_error);
                    EXPECT_EQ(NetworkInterface::list().size(), interfaces.size());
                }
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(mismatches, std::vector<int>(kThreads, 0));
}

}  // namespace
