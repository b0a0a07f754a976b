// Values shared across threads and calls made from several threads at once; meant for the
// ThreadSanitizer build, which fails on any data race.
#include <gtest/gtest.h>

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

}  // namespace
