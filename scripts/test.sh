#!/usr/bin/env bash
# Builds everything and runs every test: the default build, then the static checks (clang-format
# and clang-tidy, every finding an error), then the AddressSanitizer and UndefinedBehaviorSanitizer
# build, then the ThreadSanitizer build, then one quick pass of every benchmark over a slice of
# the corpora (a smoke check; times are not judged), then every fuzzer for a bounded time
# (FNET_FUZZ_SECONDS each, default 45; two at a time on two cores).
# Last, the library is installed to a scratch prefix and packaged as a .deb, and the consumer
# examples are built against each (find_package, pkg-config, add_subdirectory) and run.
# scripts/test.sh coverage prints the line and branch coverage of the library (not part of the
# default run).
# Usage: scripts/test.sh [default|lint|asan-ubsan|tsan|bench|fuzz|install|coverage]...
#   (no argument: all but coverage)
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh

steps=("$@")
if [ ${#steps[@]} -eq 0 ]; then
    steps=(default lint asan-ubsan tsan bench fuzz install)
fi

jobs=$(nproc)
for step in "${steps[@]}"; do
    start=$SECONDS
    case "$step" in
        bench)
            cmake --preset default >/dev/null
            cmake --build --preset default --target bench-smoke -j "$jobs"
            ;;
        lint)
            find include src core i18n tools tests bench examples \( -name '*.cpp' -o -name '*.h' \) \
                -print0 | xargs -0 clang-format-14 --dry-run --Werror
            cmake --preset default >/dev/null  # the compilation database clang-tidy reads
            # less the GCC-only options clang does not know
            mkdir -p build/tidy
            sed -e 's/ -fvect-cost-model=dynamic//g' build/default/compile_commands.json \
                >build/tidy/compile_commands.json
            run-clang-tidy-14 -clang-tidy-binary clang-tidy-14 -p build/tidy -quiet \
                -extra-arg=-Wno-unknown-warning-option \
                -j "$jobs" "$PWD/(src|core|i18n|tools)/.*\.cpp$" >build/default/clang-tidy.log 2>&1 || {
                grep -E '(warning|error):' build/default/clang-tidy.log | sort -u >&2
                echo "test.sh: clang-tidy findings (build/default/clang-tidy.log)" >&2
                exit 1
            }
            ;;
        coverage)
            # Not part of the default run: line and branch coverage of the library by the tests.
            cmake --preset coverage >/dev/null
            cmake --build --preset coverage -j "$jobs"
            find build/coverage -name '*.gcda' -delete
            # (an instrumented library exports the gcov runtime: the export check does not apply)
            ctest --preset coverage -j "$jobs" -E libraries_export_only_their_own_names \
                >build/coverage/ctest.log || {
                tail -n 40 build/coverage/ctest.log >&2
                exit 1
            }
            # The stress tests race on the counters (atomic ones make the corpus tests ten times
            # slower): a line whose count came out negative is skipped rather than fatal.
            gcovr --root . --filter 'src/' --filter 'core/' --filter 'i18n/' --print-summary \
                --gcov-ignore-parse-errors --output build/coverage/coverage.txt build/coverage
            echo "test.sh: per file in build/coverage/coverage.txt"
            ;;
        fuzz)
            scripts/fuzz.sh "${FNET_FUZZ_SECONDS:-45}"
            ;;
        install)
            cmake --preset default >/dev/null
            cmake --build --preset default -j "$jobs"
            scripts/check-install.sh build/default
            ;;
        *)
            cmake --preset "$step" >/dev/null
            cmake --build --preset "$step" -j "$jobs"
            ctest --preset "$step" -j "$jobs"
            ;;
    esac
    echo "test.sh: step '$step' took $((SECONDS - start)) s"
done
