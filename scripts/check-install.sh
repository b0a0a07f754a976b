#!/usr/bin/env bash
# Installs a built tree to a scratch prefix and checks the installed library's ABI against the
# baseline abi/libfoundation_network.abi (scripts/abi.sh), then builds the example programs
# against it, once through the CMake package and once through pkg-config, and runs each of them
# (they need no network beyond loopback). Then the same from the Debian package (made here by `cpack -G DEB`
# into BUILD_DIR/packages/), unpacked into a scratch root: its dependencies named, fnet and its
# manual page there, the examples built against /usr of that root. Last, builds and runs them once
# more with the library added from this checkout by add_subdirectory (an unoptimised build of
# the libraries alone, a few minutes).
# Usage: scripts/check-install.sh BUILD_DIR
set -euo pipefail
cd "$(dirname "$0")/.."
build=$1
modes=(cmake pkg-config deb deb-pkg-config subdirectory)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# Installed in one place and used from another: the tree must not depend on where it was put.
cmake --install "$build" --prefix "$scratch/staging" >/dev/null
mv "$scratch/staging" "$scratch/prefix"
"$scratch/prefix/bin/fnet" version
pcdir=$(dirname "$(find "$scratch/prefix" -name foundation-network.pc | head -n 1)")
for expected in foundation_network.so.0.2 foundation_core.so.0 fl_i18n.so.0; do
    library=${expected%%.so.*}
    soname=$(readelf -d "$(dirname "$pcdir")/lib$library.so" | sed -n 's/.*SONAME.*\[\(.*\)\]/\1/p')
    [ "$soname" = "lib$expected" ] || { echo "check-install: lib$library has SONAME '$soname'" >&2; exit 1; }
done
echo "check-install: installed $(cd "$scratch/prefix" && find . -type f | wc -l) files:" \
    "$(cd "$scratch/prefix" && find . -name '*.so*' -type f | sort | tr '\n' ' ')"
# The ABI of what was installed is the baseline's, or the baseline was not written anew.
scripts/abi.sh check "$(dirname "$pcdir")/libfoundation_network.so"

# The Debian package: what it depends on, and what it holds.
rm -rf "$build/packages"
(cd "$build" && cpack -G DEB >/dev/null)
deb=$(ls "$build"/packages/*.deb)
depends=$(dpkg-deb -f "$deb" Depends)
for needed in libicu72 libstdc++6 libc6; do
    grep -q "$needed" <<<"$depends" || {
        echo "check-install: $(basename "$deb") does not depend on $needed (Depends: $depends)" >&2
        exit 1
    }
done
dpkg-deb -x "$deb" "$scratch/root"
"$scratch/root/usr/bin/fnet" version
zcat -f "$scratch/root/usr/share/man/man1/fnet.1"* | grep -q '^\.SS "fnet parse"' || {
    echo "check-install: the manual page is missing or does not describe the commands" >&2
    exit 1
}
debpc=$(dirname "$(find "$scratch/root" -name foundation-network.pc | head -n 1)")
echo "check-install: $(basename "$deb"): $(dpkg-deb -c "$deb" | grep -vc '/$') files," \
    "Depends: $depends"

examples=(iri resolve idn addresses interfaces utf8)
for mode in "${modes[@]}"; do
    pc=$pcdir
    case "$mode" in
        cmake) flags=(-DCMAKE_PREFIX_PATH="$scratch/prefix") ;;
        pkg-config) flags=(-DUSE_PKG_CONFIG=ON) ;;
        deb) flags=(-DCMAKE_PREFIX_PATH="$scratch/root/usr") ;;
        deb-pkg-config) flags=(-DUSE_PKG_CONFIG=ON) pc=$debpc ;;
        subdirectory) flags=(-DFOUNDATION_NETWORK_SOURCE_DIR="$PWD") ;;
    esac
    PKG_CONFIG_PATH="$pc" cmake -S examples/consumer -B "$scratch/consumer-$mode" -G Ninja \
        "${flags[@]}" >/dev/null
    cmake --build "$scratch/consumer-$mode" >/dev/null
    for example in "${examples[@]}"; do
        "$scratch/consumer-$mode/$example" >"$scratch/$example.out" || {
            echo "check-install: example $example failed ($mode):" >&2
            cat "$scratch/$example.out" >&2
            exit 1
        }
    done
    echo "check-install: ${#examples[@]} examples built and ran through $mode"
done
