/// @file
/// @brief Reads the shared corpora (one UTF-8 item per line) for tests and benchmarks.
#pragma once

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace fntest {

/// The corpus directory: $FNET_DATA_DIR if set, else the one configured at build time.
inline std::string dataDir() {
    if (const char* env = std::getenv("FNET_DATA_DIR"); env != nullptr && *env != '\0') {
        return env;
    }
    return FNET_DATA_DIR;
}

/// The lines of `name` in the corpus directory (at most `limit`, 0 for all; the environment
/// variable FNET_CORPUS_LIMIT lowers it further, for quick smoke runs). Throws when the file
/// is missing, so that a test never passes over an empty corpus.
inline std::vector<std::string> readLines(const std::string& name, std::size_t limit = 0) {
    if (const char* env = std::getenv("FNET_CORPUS_LIMIT"); env != nullptr && *env != '\0') {
        const std::size_t envLimit = std::strtoul(env, nullptr, 10);
        if (envLimit != 0 && (limit == 0 || envLimit < limit)) {
            limit = envLimit;
        }
    }
    const std::string path = dataDir() + "/" + name;
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw std::runtime_error("cannot open corpus " + path);
    }
    std::vector<std::string> lines;
    std::string line;
    while ((limit == 0 || lines.size() < limit) && std::getline(in, line)) {
        lines.push_back(line);
    }
    return lines;
}

}  // namespace fntest
