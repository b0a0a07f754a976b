// fnet hostname: the local host's name as the system reports it.
#include <exception>

#include "Commands.h"
#include "Json.h"
#include "Runner.h"
#include "foundation/network/InetAddress.h"

namespace fnet {

namespace {

int run(const Cli& cli) {
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

}  // namespace

const Command kHostnameCommand{
    .name = "hostname",
    .summary = "the local host's name",
    .usage = "[--json]",
    .description =
        "Prints the local host's name as gethostname reports it, one line, or with --json\n"
        "one object with the keys name and error (null, or the system's message).",
    .run = run,
};

}  // namespace fnet
