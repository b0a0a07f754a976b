#!/usr/bin/env bash
# Builds everything and runs every test: the default build, then the AddressSanitizer and
# UndefinedBehaviorSanitizer build, then the ThreadSanitizer build, then one quick pass of every
# benchmark over a slice of the corpora (a smoke check; times are not judged), then every fuzzer
# for a bounded time (FNET_FUZZ_SECONDS each, default 45; two at a time on two cores).
# Last, the library is installed to a scratch prefix and the consumer example is built against it
# with find_package and with pkg-config, and run.
# Usage: scripts/test.sh [default|asan-ubsan|tsan|bench|fuzz|install]...   (no argument: all of them)
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh

steps=("$@")
if [ ${#steps[@]} -eq 0 ]; then
    steps=(default asan-ubsan tsan bench fuzz install)
fi

jobs=$(nproc)
for step in "${steps[@]}"; do
    start=$SECONDS
    case "$step" in
        bench)
            cmake --preset default >/dev/null
            cmake --build --preset default --target bench-smoke -j "$jobs"
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
