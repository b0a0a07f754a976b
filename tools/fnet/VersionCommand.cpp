// fnet version: the version of the tool, which is the version of the library it is built with.
#include <iostream>

#include "Cli.h"
#include "Commands.h"
#include "Json.h"

namespace fnet {

int runVersion(int argc, char** argv) {
    Cli cli("version", "[--json]",
            "Prints \"fnet VERSION\" (the tool is built with the library of the same version), or\n"
            "with --json one object with the key version.");
    cli.takesNoInput();
    if (const auto status = cli.parse(argc, argv)) {
        return *status;
    }
    if (!cli.arguments().empty()) {
        return cli.usageError("takes no input");
    }
    if (cli.json()) {
        std::cout << JsonObject().text("version", FNET_VERSION).str() << "\n";
    } else {
        std::cout << "fnet " << FNET_VERSION << "\n";
    }
    return kExitOk;
}

}  // namespace fnet
