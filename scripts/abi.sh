#!/usr/bin/env bash
# The ABI baseline of libfoundation_network (abigail-tools): what the shared library exports, its
# functions, variables and the types they reach, as abidw reads them from the library's debug
# information (a RelWithDebInfo or Debug build), limited to the types of the public headers.
#   scripts/abi.sh update [LIBRARY]   write abi/libfoundation_network.abi from LIBRARY (default:
#                                     the default preset's build; `cmake --build --preset default
#                                     --target abi-baseline` builds it first and runs this)
#   scripts/abi.sh check LIBRARY      compare LIBRARY with the baseline (abidiff); any difference,
#                                     compatible or not, fails and says which
# A deliberate change of the ABI regenerates the baseline in the same commit as the version bump
# (CMakeLists.txt's project version; while the major version is 0 each minor version has its own
# SONAME).
set -euo pipefail
cd "$(dirname "$0")/.."
baseline=abi/libfoundation_network.abi
headers=include/foundation/network
# Only what the library exports: its own copies of template code are not its ABI. The baseline
# keeps only the types of the public headers (an implementation type behind a shared_ptr may
# change freely); the check reads the library whole, so that a public type is never taken for
# an internal one.

case "${1:-}" in
    update)
        library=${2:-build/default/src/libfoundation_network.so}
        abidw --exported-interfaces-only --headers-dir "$headers" --drop-private-types \
            --no-corpus-path --no-comp-dir-path --no-show-locs --type-id-style hash \
            --out-file "$baseline" "$library"
        echo "abi: wrote $baseline from $library ($(grep -c '<elf-symbol' "$baseline") symbols)"
        ;;
    check)
        library=${2:?usage: scripts/abi.sh check LIBRARY}
        status=0
        report=$(abidiff --exported-interfaces-only --fail-no-debug-info "$baseline" "$library") ||
            status=$?
        # abidiff's status is a bit set: 1 error, 2 usage, 4 a change, 8 an incompatible change.
        if [ "$status" -eq 0 ]; then
            echo "abi: $(basename "$library") matches $baseline"
            exit 0
        fi
        echo "$report" >&2
        if [ $((status & 3)) -ne 0 ]; then
            echo "abi: abidiff failed (status $status)" >&2
        elif [ $((status & 8)) -ne 0 ]; then
            echo "abi: $(basename "$library") breaks the ABI of $baseline: if that is meant, bump" \
                "the version (a new SONAME) and run scripts/abi.sh update" >&2
        else
            echo "abi: $(basename "$library") adds to the ABI of $baseline: if that is meant, run" \
                "scripts/abi.sh update" >&2
        fi
        exit 1
        ;;
    *)
        echo "usage: scripts/abi.sh update [LIBRARY] | check LIBRARY" >&2
        exit 2
        ;;
esac
