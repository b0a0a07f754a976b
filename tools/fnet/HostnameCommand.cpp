// fnet hostname: the local host's name as the system reports it.
#include <iostream>

#include "Cli.h"
#include "Commands.h"
#include "Json.h"
#include "foundation/network/InetAddress.h"

namespace fnet {

int runHostname(int argc, char** argv) {
    Cli cli("hostname", "[--json]",
            "Prints the local host's name as gethostname reports it, one line, or with --json\n"
            "one object with the key name (on failure: error, with the system's message).");
    cli.takesNoInput();
    if (const auto status = cli.parse(argc, argv)) {
        return *status;
    }
    if (!cli.arguments().empty()) {
        return cli.usageError("takes no input");
    }
    try {
        const std::string name = foundation::network::getLocalHostName();
        std::cout << (cli.json() ? JsonObject().text("name", name).str() : name) << "\n";
        return kExitOk;
    } catch (const std::exception& e) {
        if (cli.json()) {
            std::cout << JsonObject().text("error", e.what()).str() << "\n";
        }
        cli.error(e.what());
        return kExitFailed;
    }
}

}  // namespace fnet
