#!/usr/bin/env bash
# fnet as a filter over a large file, against the loop a Python user would write with
# urllib.parse doing the same job (and writing nothing). Prints times, the ratios
# (Python / fnet: above 1, fnet is faster) and fnet's peak memory at two input sizes.
# Usage: bench/tool/fnet-vs-python.sh [FNET] [TIMES]
#   FNET   the tool (default build/default/tools/fnet/fnet)
#   TIMES  how many copies of urls.txt make the input (default 20: about a million lines)
set -euo pipefail
cd "$(dirname "$0")/../.."
fnet=${1:-build/default/tools/fnet/fnet}
times=${2:-20}
data=${FNET_DATA_DIR:-../shared/data}
base='http://a/b/c/d;p?q'
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

repeat() {  # repeat N OUT: N copies of urls.txt
    for _ in $(seq "$1"); do cat "$data/urls.txt"; done >"$2"
}
repeat "$times" "$work/in.txt"
lines=$(wc -l <"$work/in.txt")

# wall seconds, CPU seconds and peak kilobytes of a command, its output discarded (exit status 1,
# some inputs refused, is expected)
measure() {
    /usr/bin/time -f '%e %U %S %M' -o "$work/time" "$@" >/dev/null 2>"$work/err" || [ $? -eq 1 ]
    tail -n 1 "$work/time" | awk '{ printf "%s %.2f %s\n", $1, $2 + $3, $4 }'
}

python_parse='
import sys
from urllib.parse import urlsplit
for line in sys.stdin:
    try:
        urlsplit(line.rstrip("\r\n"))
    except ValueError:
        pass
'
python_resolve='
import sys
from urllib.parse import urljoin
base = sys.argv[1]
for line in sys.stdin:
    urljoin(base, line.rstrip("\r\n"))
'

echo "input: $lines lines ($(du -h "$work/in.txt" | cut -f1)), $(nproc) cores," \
    "load average $(cut -d' ' -f1 /proc/loadavg) before the runs"
printf '%-36s %15s %15s %7s %7s\n' job "python wall/cpu" "fnet wall/cpu" "wall x" "cpu x"
for job in parse resolve; do
    if [ "$job" = parse ]; then
        read -r py pycpu _ < <(measure python3 -c "$python_parse" <"$work/in.txt")
        read -r ours cpu _ < <(measure "$fnet" parse --json - <"$work/in.txt")
    else
        read -r py pycpu _ < <(measure python3 -c "$python_resolve" "$base" <"$work/in.txt")
        read -r ours cpu _ < <(measure "$fnet" resolve --json "$base" - <"$work/in.txt")
    fi
    printf '%-36s %6ss/%6ss %6ss/%6ss %6.1fx %6.1fx\n' "fnet $job --json (urllib.parse)" \
        "$py" "$pycpu" "$ours" "$cpu" "$(python3 -c "print($py / $ours)")" \
        "$(python3 -c "print($pycpu / $cpu)")"
done
echo "(ratio = Python / fnet; wall time counts fnet's --jobs $(nproc), CPU time all threads)"

# Peak memory must not grow with the input: the same run over four times as many lines.
read -r _ _ small < <(measure "$fnet" parse --json - <"$work/in.txt")
repeat "$((times * 4))" "$work/in.txt"
read -r _ _ large < <(measure "$fnet" parse --json - <"$work/in.txt")
echo "fnet parse --json - peak memory: $((small / 1024)) MB over $lines lines," \
    "$((large / 1024)) MB over $((lines * 4)) lines"
