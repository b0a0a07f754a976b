#!/usr/bin/env bash
# Keeps README.md honest: every program under examples/consumer/ is quoted in it exactly (after
# a line "<!-- example: examples/consumer/NAME.cpp -->"), and every function the public headers
# declare is shown or named in it.
# Usage: scripts/check-readme.sh [SOURCE_DIR]
set -euo pipefail
cd "${1:-$(dirname "$0")/..}"
status=0

for example in examples/consumer/*.cpp; do
    quoted=$(awk -v marker="<!-- example: $example -->" '
        $0 == marker { found = 1; next }
        found == 1 && /^```/ { if (inside) exit; inside = 1; next }
        inside { print }' README.md)
    if [ -z "$quoted" ]; then
        echo "check-readme: $example is not quoted in README.md" >&2
        status=1
    elif [ "$quoted" != "$(cat "$example")" ]; then
        echo "check-readme: README.md's copy of $example differs from the file:" >&2
        diff <(echo "$quoted") "$example" >&2 || true
        status=1
    fi
done

# Names declared as functions in the public headers (comments, macros and keywords left out).
names=$(sed -e 's://.*$::' include/foundation/network/*.h |
    grep -oE '\b[A-Za-z_][A-Za-z0-9_]*\s*\(' | sed -E 's/\s*\($//' |
    grep -vxE 'if|for|while|return|sizeof|alignas|decltype|noexcept|static_cast|__attribute__|visibility|operator|Encoding|ArgsBase|swap|value_' |
    sort -u)
for name in $names; do
    if ! grep -q "\b$name\b" README.md; then
        echo "check-readme: the public function $name is not named in README.md" >&2
        status=1
    fi
done
exit $status
