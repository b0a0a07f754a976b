// fnet hostname: the local host's name as the system reports it.
#include <exception>

#include "Commands.h"
#include "Json.h"
#include "Runner.h"
#include "foundation/network/InetAddress.h"

namespace fnet {

int runHostname(int argc, char** argv) {
    Cli cli("hostname", "[--json]",
            "Prints the local host's name as gethostname reports it, one line, or with --json\n"
            "one object with the keys name and error (null, or the system's message).");
    cli.takesNoInput();
    if (const auto status = cli.parse(argc, argv)) {
        return *status;
    }
    if (!cli.arguments().empty()) {
        return cli.usageError("takes no input");
    }
    Outcome outcome;
    try {
        const std::string name = foundation::network::getLocalHostName();
        outcome.keys["name"] = jsonSafe(name);
        outcome.text = name + "\n";
    } catch (const std::exception& e) {
        outcome.fail(e.what());
    }
    return writeOutcome(cli, {"name"}, outcome);
}

}  // namespace fnet
