// IP address parsing and printing against the system's inet_pton/inet_ntop, a forward lookup,
// and the interface listing against a bare getifaddrs/freeifaddrs.
#include <arpa/inet.h>
#include <ifaddrs.h>

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "foundation/network/InetAddress.h"
#include "foundation/network/NetworkInterface.h"
#include "support/Corpus.h"

namespace {

const std::vector<std::string>& addresses() {
    static const auto lines = fntest::readLines("addrs.txt");
    return lines;
}

void InetAddress_TextToString(benchmark::State& state) {
    const auto& lines = addresses();
    std::size_t bytes = 0;
    for (auto _ : state) {
        for (const auto& line : lines) {
            std::string text = foundation::network::InetAddress(line).toString();
            bytes += text.size();
            benchmark::DoNotOptimize(text);
        }
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * lines.size()));
    benchmark::DoNotOptimize(bytes);
}
BENCHMARK(InetAddress_TextToString);

// The same work with the C library: parse (IPv6 first, then IPv4, as the library does) into a
// string, print back into a string.
void InetPton_InetNtop(benchmark::State& state) {
    const auto& lines = addresses();
    std::size_t bytes = 0;
    for (auto _ : state) {
        for (const auto& line : lines) {
            unsigned char binary[16];
            char buffer[INET6_ADDRSTRLEN];
            const char* printed = nullptr;
            if (::inet_pton(AF_INET6, line.c_str(), binary) == 1) {
                printed = ::inet_ntop(AF_INET6, binary, buffer, sizeof buffer);
            } else if (::inet_pton(AF_INET, line.c_str(), binary) == 1) {
                printed = ::inet_ntop(AF_INET, binary, buffer, sizeof buffer);
            }
            std::string text = printed != nullptr ? printed : "";
            bytes += text.size();
            benchmark::DoNotOptimize(text);
        }
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * lines.size()));
    benchmark::DoNotOptimize(bytes);
}
BENCHMARK(InetPton_InetNtop);

void InetAddress_GetAllByNameLocalhost(benchmark::State& state) {
    try {
        for (auto _ : state) {
            benchmark::DoNotOptimize(foundation::network::InetAddress::getAllByName("localhost"));
        }
    } catch (const std::exception& e) {
        state.SkipWithError(e.what());  // a host that cannot resolve localhost
    }
}
BENCHMARK(InetAddress_GetAllByNameLocalhost);

void NetworkInterface_List(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(foundation::network::NetworkInterface::list());
    }
}
BENCHMARK(NetworkInterface_List);

// The system call alone: what any listing has to pay before building a single value.
void Getifaddrs_Freeifaddrs(benchmark::State& state) {
    for (auto _ : state) {
        ifaddrs* list = nullptr;
        if (::getifaddrs(&list) != 0) {
            state.SkipWithError("getifaddrs failed");
            break;
        }
        benchmark::DoNotOptimize(list);
        ::freeifaddrs(list);
    }
}
BENCHMARK(Getifaddrs_Freeifaddrs);

}  // namespace

BENCHMARK_MAIN();
