// IP address parsing and printing against the system's inet_pton/inet_ntop, a forward lookup,
// and the interface listing against a bare getifaddrs/freeifaddrs. Equality and hashing of
// addresses (BM_Equal_*, BM_Hash_*, BM_Dedupe_*) against the same work on the raw byte strings
// and on Boost.Asio's address values; at the end ours is printed as a ratio to each of them.
#include <arpa/inet.h>
#include <ifaddrs.h>

#include <benchmark/benchmark.h>

#include <boost/asio/ip/address.hpp>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "foundation/network/InetAddress.h"
#include "foundation/network/NetworkInterface.h"
#include "support/Corpus.h"
#include "support/RatioReporter.h"

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

// The corpus three ways, each value built twice so that an equal pair never shares storage.
struct Values {
    std::vector<foundation::network::InetAddress> ours, oursAgain;
    std::vector<std::vector<unsigned char>> bytes, bytesAgain;
    std::vector<boost::asio::ip::address> boost, boostAgain;
};

const Values& values() {
    static const Values all = [] {
        Values v;
        for (const auto& line : addresses()) {
            v.ours.emplace_back(line);
            v.oursAgain.emplace_back(line);
            v.bytes.push_back(v.ours.back().bytes());
            v.bytesAgain.push_back(v.ours.back().bytes());
            v.boost.push_back(boost::asio::ip::make_address(line));
            v.boostAgain.push_back(boost::asio::ip::make_address(line));
        }
        return v;
    }();
    return all;
}

// Every value against its twin (equal: the whole value is read) and against its neighbour
// (mostly unequal), two comparisons per item.
template <class T>
void equalPairs(benchmark::State& state, const std::vector<T>& first, const std::vector<T>& again) {
    std::size_t equal = 0;
    for (auto _ : state) {
        for (std::size_t i = 0; i < first.size(); ++i) {
            equal += first[i] == again[i] ? 1 : 0;
            equal += first[i] == first[(i + 1) % first.size()] ? 1 : 0;
        }
        benchmark::DoNotOptimize(equal);
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * first.size() * 2));
}

void BM_Equal_Ours(benchmark::State& state) {
    equalPairs(state, values().ours, values().oursAgain);
}
BENCHMARK(BM_Equal_Ours);

// The byte strings `bytes()` hands out: what a caller keyed on before addresses compared.
void BM_Equal_RawBytes(benchmark::State& state) {
    equalPairs(state, values().bytes, values().bytesAgain);
}
BENCHMARK(BM_Equal_RawBytes);

void BM_Equal_BoostAsio(benchmark::State& state) {
    equalPairs(state, values().boost, values().boostAgain);
}
BENCHMARK(BM_Equal_BoostAsio);

template <class T, class Hash>
void hashAll(benchmark::State& state, const std::vector<T>& all, Hash hash) {
    std::size_t sum = 0;
    for (auto _ : state) {
        for (const T& value : all) {
            sum += hash(value);
        }
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * all.size()));
}

struct BytesHash {
    std::size_t operator()(const std::vector<unsigned char>& bytes) const {
        return std::hash<std::string_view>()(
            std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
    }
};

void BM_Hash_Ours(benchmark::State& state) {
    hashAll(state, values().ours, std::hash<foundation::network::InetAddress>());
}
BENCHMARK(BM_Hash_Ours);

void BM_Hash_RawBytes(benchmark::State& state) {
    hashAll(state, values().bytes, BytesHash());
}
BENCHMARK(BM_Hash_RawBytes);

void BM_Hash_BoostAsio(benchmark::State& state) {
    hashAll(state, values().boost, std::hash<boost::asio::ip::address>());
}
BENCHMARK(BM_Hash_BoostAsio);

// Both at work: every address into an unordered set and looked up again through its twin.
template <class T, class Hash>
void dedupe(benchmark::State& state, const std::vector<T>& all, const std::vector<T>& again, Hash) {
    for (auto _ : state) {
        std::unordered_set<T, Hash> set(all.begin(), all.end());
        std::size_t found = 0;
        for (const T& value : again) {
            found += set.count(value);
        }
        benchmark::DoNotOptimize(found);
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * all.size()));
}

void BM_Dedupe_Ours(benchmark::State& state) {
    dedupe(state, values().ours, values().oursAgain, std::hash<foundation::network::InetAddress>());
}
BENCHMARK(BM_Dedupe_Ours);

void BM_Dedupe_RawBytes(benchmark::State& state) {
    dedupe(state, values().bytes, values().bytesAgain, BytesHash());
}
BENCHMARK(BM_Dedupe_RawBytes);

void BM_Dedupe_BoostAsio(benchmark::State& state) {
    dedupe(state, values().boost, values().boostAgain, std::hash<boost::asio::ip::address>());
}
BENCHMARK(BM_Dedupe_BoostAsio);

}  // namespace

int main(int argc, char** argv) {
    return fnbench::runWithRatios(argc, argv, [] { (void)values(); });
}
