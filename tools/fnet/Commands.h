/// @file
/// @brief The subcommands of fnet. Each takes argv with argv[0] set to its own name and returns
/// the process exit status.
#pragma once

namespace fnet {

struct Command {
    const char* name;
    const char* summary;
    int (*run)(int argc, char** argv);
};

/// fnet version: the version of the tool and library.
int runVersion(int argc, char** argv);

/// fnet parse: IRI references checked by the grammar, with their components.
int runParse(int argc, char** argv);
int runIri(int argc, char** argv);
int runResolve(int argc, char** argv);
int runRelativize(int argc, char** argv);
int runBuild(int argc, char** argv);
int runCompare(int argc, char** argv);
int runNormalize(int argc, char** argv);

/// fnet idn: host names between Unicode and ASCII form.
int runIdn(int argc, char** argv);
int runAddr(int argc, char** argv);
int runLookup(int argc, char** argv);
int runReverse(int argc, char** argv);
int runCanonical(int argc, char** argv);
int runHostname(int argc, char** argv);
int runInterfaces(int argc, char** argv);

}  // namespace fnet
