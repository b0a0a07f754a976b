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

TEST(ConcurrencyTest, SharedValuesAndParallelCalls) {
    const InetAddress shared("fe80::1%lo");
    const auto interfaces = NetworkInterface::list();
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&] {
            for (int i = 0; i < 50; ++i) {
                const InetAddress copy = shared;
                EXPECT_EQ(copy.toString(), "fe80::1%lo");
                EXPECT_TRUE(copy == shared && copy.hashValue() == shared.hashValue());
                // Each call makes its own resolver; an empty name fails without the network.
                EXPECT_THROW(InetAddress::getAllByName(""), std::system_error);
                const auto again = NetworkInterface::list();
                EXPECT_EQ(again.size(), interfaces.size());
                for (const auto& interface : interfaces) {
                    EXPECT_FALSE(interface.getIdentifier().empty());
                    EXPECT_FALSE(interface.getInetAddresses().empty());
                }
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
}

// Address values read from many threads while other threads copy, assign and drop them: the
// handles share one implementation through its reference count.
TEST(ConcurrencyTest, SharedAddressValuesUnderCopiesAndReads) {
    struct Expected {
        InetAddress value;
        std::string text;
        std::vector<unsigned char> bytes;
        int version;
        bool loopback;
        bool multicast;
    };
    std::vector<Expected> values;
    for (const char* text : {"127.0.0.1", "224.1.2.3", "::1", "ff02::1", "fe80::1%lo",
                             "2001:db8::ffff:192.0.2.1", "10.0.0.255"}) {
        const InetAddress value(text);
        values.push_back({value, value.toString(), value.bytes(), value.getVersion(),
                          value.isLoopback(), value.isMulticast()});
    }
    constexpr int kThreads = 6;
    std::vector<int> mismatches(kThreads, 0);
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&, t] {
            InetAddress copy;
            for (int round = 0; round < 200; ++round) {
                for (const auto& e : values) {
                    if (t % 2 == 1) {
                        copy = e.value;  // the count changes while others read
                    }
                    const InetAddress& use = t % 2 == 0 ? e.value : copy;
                    mismatches[t] += use.toString() != e.text;
                    mismatches[t] += use.getHostAddress() != e.text;
                    mismatches[t] += use.bytes() != e.bytes;
                    mismatches[t] += use.getVersion() != e.version;
                    mismatches[t] += use.isLoopback() != e.loopback;
                    mismatches[t] += use.isMulticast() != e.multicast;
                    mismatches[t] += InetAddress(use.bytes()).bytes() != e.bytes;
                }
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
