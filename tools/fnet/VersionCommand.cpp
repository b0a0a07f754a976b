// fnet version: the version of the tool, which is the version of the library it is built with.
#include "Commands.h"
#include "Runner.h"

namespace fnet {

int runVersion(int argc, char** argv) {
    Cli cli("version", "[--json]",
            "Prints \"fnet VERSION\" (the tool is built with the library of the same version), or\n"
            "with --json one object with the keys version and error (null).");
    cli.takesNoInput();
    if (const auto status = cli.parse(argc, argv)) {
        return *status;
    }
    if (!cli.arguments().empty()) {
        return cli.usageError("takes no input");
    }
    Outcome outcome;
    outcome.keys["version"] = FNET_VERSION;
    outcome.text = "fnet " FNET_VERSION "\n";
    return writeOutcome(cli, {"version"}, outcome);
}

}  // namespace fnet
