// Runs one library call inside a test's network namespace (started by `ip netns exec`) and
// prints what it returned, one tab-separated record per line, for the test to compare with
// what the system's own tools report in the same namespace.
//
//   all NAME | first NAME               ADDRESS<TAB>HOSTNAME per address
//   reverse ADDR | canonical ADDR       the name
//   canonical-by-name NAME              getByName(NAME).getCanonicalHostName()
//   localhost                           getLocalHost(): ADDRESS<TAB>HOSTNAME
// A failure prints: error<TAB>KIND<TAB>CATEGORY<TAB>VALUE<TAB>WHAT (exit status 1).
#include <iostream>
#include <stdexcept>
#include <string>
#include <system_error>

#include "foundation/network/InetAddress.h"

namespace {

using foundation::network::InetAddress;

void printAddress(const InetAddress& address) {
    std::cout << address.toString() << '\t' << address.getHostName() << '\n';
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
    } else if (command == "localhost") {
        printAddress(InetAddress::getLocalHost());
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
