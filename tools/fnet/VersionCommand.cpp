// fnet version: the version of the tool, which is the version of the library it is built with.
#include "Commands.h"
#include "Runner.h"

namespace fnet {

namespace {

int run(const Cli& cli) {
    Outcome outcome;
    outcome.keys["version"] = FNET_VERSION;
    outcome.text = "fnet " FNET_VERSION "\n";
    return writeOutcome(cli, {"version"}, outcome);
}

}  // namespace

const Command kVersionCommand{
    .name = "version",
    .summary = "print the version of fnet and of the library",
    .usage = "[--json]",
    .description =
        "Prints \"fnet VERSION\" (the tool is built with the library of the same version), or\n"
        "with --json one object with the keys version and error (null).",
    .run = run,
};

}  // namespace fnet
