#!/usr/bin/env bash
# Builds the libFuzzer targets (fuzz preset), writes their seeds from the corpora, and runs each
# for a bounded time. Fails on the first finding; the input is kept under build/fuzz/artifacts/.
# Usage: scripts/fuzz.sh [seconds per fuzzer] [fuzzer...]   (default: 45 s, every fuzzer)
# FNET_FUZZ_JOBS=N runs N fuzzers at once (default: the number of cores).
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-45}
shift || true
fuzzers=("$@")
if [ ${#fuzzers[@]} -eq 0 ]; then
    fuzzers=(fuzz_iri_text fuzz_iri_pair fuzz_iri_args fuzz_iri_helpers fuzz_idn fuzz_inet_address)
fi
data=$(cd ../shared/data 2>/dev/null && pwd || true)
build=build/fuzz

cmake --preset fuzz >/dev/null
cmake --build --preset fuzz --target fuzzers -j "$(nproc)"

# seed <fuzzer> <prefix> : one seed file per line of standard input, the prefix put in front.
seed() {
    local dir=$build/seeds/$1
    mkdir -p "$dir"
    awk -v dir="$dir" -v prefix="$2" -v start="$(find "$dir" -type f | wc -l)" \
        '{ name = dir "/" (start + NR); printf "%s%s", prefix, $0 > name; close(name) }'
}

rm -rf "$build/seeds"
mkdir -p "$build/seeds"
if [ -n "$data" ]; then
    # IRI text: every IRI of the IRI corpus, a slice of the URLs, references as written.
    cat "$data/iris.txt" | seed fuzz_iri_text ""
    awk 'NR % 50 == 0' "$data/urls.txt" | seed fuzz_iri_text ""
    awk -F'\t' 'NR % 40 == 0 { print $2 }' "$data/refs.tsv" | seed fuzz_iri_text ""
    # Pairs: base and reference, and neighbouring URLs (often of the same site).
    awk 'NR % 20 == 0' "$data/refs.tsv" | seed fuzz_iri_pair ""
    awk 'NR % 50 == 1 { previous = $0 } NR % 50 == 2 { print previous "\t" $0 }' \
        "$data/urls.txt" | seed fuzz_iri_pair ""
    # Arguments: flags (all fields but queryAsOctets), port 8080, then the six fields.
    awk 'NR % 50 == 0 {
            url = $0; fragment = ""; query = ""
            if ((i = index(url, "#")) > 0) { fragment = substr(url, i + 1); url = substr(url, 1, i - 1) }
            if ((i = index(url, "?")) > 0) { query = substr(url, i + 1); url = substr(url, 1, i - 1) }
            scheme = ""; if ((i = index(url, "://")) > 0) { scheme = substr(url, 1, i - 1); url = substr(url, i + 3) }
            host = url; path = ""; if ((i = index(url, "/")) > 0) { host = substr(url, 1, i - 1); path = substr(url, i) }
            user = ""; if ((i = index(host, "@")) > 0) { user = substr(host, 1, i - 1); host = substr(host, i + 1) }
            sub(/:[0-9]*$/, "", host)
            printf "%s\t%s\t%s\t%s\t%s\t%s\n", scheme, user, host, path, query, fragment
         }' "$data/urls.txt" |
        awk -v dir="$build/seeds/fuzz_iri_args" 'BEGIN { system("mkdir -p " dir) }
            { name = dir "/" NR; n = split($0, f, "\t")
              printf "\177\037\220%s\n%s\n%s\n%s\n%s\n%s", f[1], f[2], f[3], f[4], f[5], f[6] > name
              close(name) }'
    # IDN names, addresses, and paths for the helpers (first byte: 0 UTF-8 check, 1 split,
    # 2 dot segments).
    cat "$data/idn.txt" | seed fuzz_idn ""
    cat "$data/addrs.txt" | seed fuzz_inet_address ""
    awk 'NR % 20 == 0' "$data/idn.txt" "$data/iris.txt" | seed fuzz_iri_helpers "0"
    awk -F'/' 'NR % 100 == 0 { sub(/^[a-z]+:\/\/[^\/]*/, ""); sub(/[?#].*/, ""); print }' \
        "$data/urls.txt" | tee >(seed fuzz_iri_helpers "1") | seed fuzz_iri_helpers "2"
fi

jobs=${FNET_FUZZ_JOBS:-$(nproc)}
status=0
run() {
    local name=$1
    local corpus=$build/corpus/$name artifacts=$build/artifacts/$name
    mkdir -p "$corpus" "$artifacts" "$build/seeds/$name"
    if "$build/tests/fuzz/$name" "$corpus" "$build/seeds/$name" -max_total_time="$seconds" \
        -timeout=25 -rss_limit_mb=4096 -max_len=4096 -print_final_stats=1 \
        -artifact_prefix="$artifacts/" >"$build/$name.log" 2>&1; then
        echo "fuzz.sh: $name: $(grep -o 'stat::number_of_executed_units: *[0-9]*' "$build/$name.log" |
            grep -o '[0-9]*$') runs in $seconds s, no finding"
    else
        echo "fuzz.sh: $name FOUND A FAILURE (input in $artifacts/):"
        grep -E -A20 'ERROR|property failed|unexpected exception|deadly signal' "$build/$name.log" | head -40
        return 1
    fi
}
pids=()
for name in "${fuzzers[@]}"; do
    run "$name" &
    pids+=($!)
    if [ ${#pids[@]} -ge "$jobs" ]; then
        wait "${pids[0]}" || status=1
        pids=("${pids[@]:1}")
    fi
done
for pid in "${pids[@]}"; do
    wait "$pid" || status=1
done
exit $status
