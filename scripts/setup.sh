#!/usr/bin/env bash
# Installs what building, testing and benchmarking need, from Debian's archive, only when
# missing. Quick when everything is already there. Needs root (or sudo) to install.
set -euo pipefail

packages=(
    g++ cmake ninja-build pkg-config
    libboost1.81-dev libboost-url1.81-dev libicu-dev
    libgtest-dev libbenchmark-dev libcli11-dev
    iproute2 dnsmasq-base
    liburiparser-dev libidn2-dev
    clang-14 libclang-rt-14-dev
    clang-tidy-14 clang-format-14 help2man dpkg-dev time python3 gcovr abigail-tools
)

missing=()
for package in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$package")
    fi
done

if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi

echo "setup: installing ${missing[*]}"
sudo=""
if [ "$(id -u)" -ne 0 ]; then
    sudo="sudo"
fi
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
