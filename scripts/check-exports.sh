#!/usr/bin/env bash
# Fails when a shared library exports a name that is not its own: every defined dynamic symbol
# must belong to the foundation:: or fl:: namespaces (functions, data, and the type information
# and virtual tables of their classes).
# Usage: scripts/check-exports.sh LIBRARY...
set -euo pipefail
status=0
for library in "$@"; do
    total=$(nm -D --defined-only "$library" | wc -l)
    foreign=$(nm -D --defined-only "$library" | awk '{ print $3 }' | c++filt |
        grep -vE '^((typeinfo|typeinfo name|vtable|VTT|guard variable) for )?(foundation|fl)::' ||
        true)
    if [ "$total" -eq 0 ]; then
        echo "check-exports: $library exports nothing" >&2
        status=1
    elif [ -n "$foreign" ]; then
        echo "check-exports: $library exports $(wc -l <<<"$foreign") names not its own:" >&2
        head -n 20 <<<"$foreign" >&2
        status=1
    else
        echo "check-exports: $library: $total names, all its own"
    fi
done
exit $status
