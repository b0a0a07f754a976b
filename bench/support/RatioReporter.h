/// @file
/// @brief The report every benchmark with peers prints: Google Benchmark's table, then for each
/// group of benchmarks named BM_<Group>_<Library> the time per item of each library and ours
/// divided by it (below 1: ours is faster). A benchmark counts items with SetItemsProcessed;
/// "Ours" names the library measured.
#pragma once

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace fnbench {

class RatioReporter : public benchmark::ConsoleReporter {
public:
    // Colours only on a terminal.
    RatioReporter() : ConsoleReporter(isatty(STDOUT_FILENO) != 0 ? OO_ColorTabular : OO_Tabular) {}

    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const auto& run : runs) {
            const auto rate = run.counters.find("items_per_second");
            const std::string name = run.benchmark_name();
            const auto split = name.rfind('_');
            if (run.error_occurred || run.run_type != Run::RT_Iteration ||
                rate == run.counters.end() || rate->second.value <= 0 ||
                name.rfind("BM_", 0) != 0 || split == std::string::npos || split <= 3) {
                continue;
            }
            groups_[name.substr(3, split - 3)][name.substr(split + 1)] = 1e9 / rate->second.value;
        }
    }

    void Finalize() override {
        ConsoleReporter::Finalize();
        GetOutputStream() << "\nns per item, and ours divided by the other's:\n";
        for (const auto& [group, libraries] : groups_) {
            const auto ours = libraries.find("Ours");
            for (const auto& [library, nanoseconds] : libraries) {
                char line[160];
                std::snprintf(line, sizeof line, "  %-14s %-14s %9.2f ns", group.c_str(),
                              library.c_str(), nanoseconds);
                GetOutputStream() << line;
                if (ours != libraries.end() && library != "Ours") {
                    std::snprintf(line, sizeof line, "   ours/%s %.2fx", library.c_str(),
                                  ours->second / nanoseconds);
                    GetOutputStream() << line;
                }
                GetOutputStream() << "\n";
            }
        }
    }

private:
    std::map<std::string, std::map<std::string, double>> groups_;
};

/// Runs the benchmarks given on the command line with the ratio report, after `load` (which
/// reads the corpora, so that no benchmark times it); the body of main.
inline int runWithRatios(int argc, char** argv, void (*load)() = nullptr) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    if (load != nullptr) {
        load();
    }
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}

}  // namespace fnbench
