// Runs one library call inside a test's network namespace (started by `ip netns exec`) and
// prints what it returned, one tab-separated record per line, for the test to compare with
// what the system's own tools report in the same namespace.
//
//   all NAME | first NAME               ADDRESS<TAB>HOSTNAME per address
//   reverse ADDR | canonical ADDR       the name
//   canonical-by-name NAME              getByName(NAME).getCanonicalHostName()
//   localhost                           getLocalHost(): ADDRESS<TAB>HOSTNAME
//   parallel-all NAME,NAME...           getAllByName of every name from many threads at once,
//                                       rounds over: NAME<TAB>same|differ<TAB>ADDRESS,... sorted
//                                       (or the error text), one line per name
//   interfaces                          NetworkInterface::list(), one interface per line:
//                                       NAME UP LOOPBACK MULTICAST MAC INDEX MTU
//                                       ADDRESS/PREFIX,...
//   all-interfaces                      the same for every interface the system lists, before
//                                       filtering, with a last field 1 when list() keeps it
// A failure prints: error<TAB>KIND<TAB>CATEGORY<TAB>VALUE<TAB>WHAT (exit status 1).
#include <algorithm>
#include <cerrno>
#include <iostream>
#include <map>
#include <mutex>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include <ifaddrs.h>

#include "foundation/network/InetAddress.h"
#include "foundation/network/NetworkInterface.h"
#include "inet/posix/ListNetworkInterfaces.h"

namespace {

using foundation::network::InetAddress;

void printAddress(const InetAddress& address) {
    std::cout << address.toString() << '\t' << address.getHostName() << '\n';
}

void printInterface(const foundation::network::NetworkInterface& interface) {
    std::cout << interface.getIdentifier() << '\t' << interface.isUp() << '\t'
              << interface.isLoopback() << '\t' << interface.supportsMulticast() << '\t'
              << interface.getHardwareAddress().toString() << '\t' << interface.getIndex() << '\t'
              << interface.getMtu() << '\t';
    const auto addresses = interface.getInterfaceAddresses();
    for (std::size_t i = 0; i < addresses.size(); ++i) {
        std::cout << (i == 0 ? "" : ",") << addresses[i].toString();
    }
}

void printAllInterfaces() {
    ifaddrs* list = nullptr;
    if (::getifaddrs(&list) != 0) {
        throw std::system_error(errno, std::system_category(), "getifaddrs");
    }
    foundation::network::posix::OwnedInterfaceList owner(list, &::freeifaddrs);
    for (const auto& impl : foundation::network::posix::listNetworkInterfaces(list)) {
        printInterface(foundation::network::NetworkInterface(impl));
        std::cout << '\t' << foundation::network::posix::isListed(*impl) << '\n';
    }
}

// One lookup as a comparable text: the sorted addresses (a server may rotate its answers), or
// the error.
std::string lookupText(const std::string& name) {
    try {
        std::vector<std::string> addresses;
        for (const auto& address : InetAddress::getAllByName(name)) {
            addresses.push_back(address.toString() + "=" + address.getHostName());
        }
        std::sort(addresses.begin(), addresses.end());
        std::string text;
        for (const auto& address : addresses) {
            text += (text.empty() ? "" : ",") + address;
        }
        return text;
    } catch (const std::exception& e) {
        return std::string("error: ") + e.what();
    }
}

void parallelLookups(const std::string& argument) {
    std::vector<std::string> names;
    std::istringstream in(argument);
    for (std::string name; std::getline(in, name, ',');) {
        names.push_back(name);
    }
    constexpr int kThreads = 8;
    constexpr int kRounds = 10;
    std::mutex mutex;
    std::map<std::string, std::set<std::string>> seen;
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&, t] {
            for (int round = 0; round < kRounds; ++round) {
                for (std::size_t i = 0; i < names.size(); ++i) {
                    const std::string& name = names[(i + t) % names.size()];
                    const std::string text = lookupText(name);
                    const std::lock_guard<std::mutex> lock(mutex);
                    seen[name].insert(text);
                }
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    for (const auto& name : names) {
        const auto& texts = seen[name];
        std::cout << name << '\t' << (texts.size() == 1 ? "same" : "differ") << '\t'
                  << *texts.begin() << '\n';
    }
}

int probe(const std::string& command, const std::string& argument) {
    if (command == "all") {
        for (const auto& address : InetAddress::getAllByName(argument)) {
            printAddress(address);
        }
    } else if (command == "first") {
        printAddress(InetAddress::getByName(argument));
    } else if (command == "reverse") {
        std::cout << InetAddress(argument).getHostName() << '\n';
    } else if (command == "canonical") {
        std::cout << InetAddress(argument).getCanonicalHostName() << '\n';
    } else if (command == "canonical-by-name") {
        std::cout << InetAddress::getByName(argument).getCanonicalHostName() << '\n';
    } else if (command == "parallel-all") {
        parallelLookups(argument);
    } else if (command == "localhost") {
        printAddress(InetAddress::getLocalHost());
    } else if (command == "interfaces") {
        for (const auto& interface : foundation::network::NetworkInterface::list()) {
            printInterface(interface);
            std::cout << '\n';
        }
    } else if (command == "all-interfaces") {
        printAllInterfaces();
    } else {
        std::cerr << "unknown probe " << command << '\n';
        return 2;
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::cerr << "usage: probe COMMAND [ARGUMENT]\n";
        return 2;
    }
    try {
        return probe(argv[1], argc > 2 ? argv[2] : "");
    } catch (const std::system_error& e) {
        std::cout << "error\tsystem_error\t" << e.code().category().name() << '\t'
                  << e.code().value() << '\t' << e.what() << '\n';
    } catch (const std::invalid_argument& e) {
        std::cout << "error\tinvalid_argument\t\t\t" << e.what() << '\n';
    } catch (const std::exception& e) {
        std::cout << "error\tother\t\t\t" << e.what() << '\n';
    }
    return 1;
}
