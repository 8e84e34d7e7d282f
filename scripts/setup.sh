#!/usr/bin/env bash
# setup.sh [PACKAGE]...
# Installs the Debian packages that building, testing and checking need and the further ones named, as far as they
# are missing. Works as root or with sudo; asks for nothing but a password that sudo may want.
set -euo pipefail

packages=(
    # Compilers and build tools
    g++ clang libclang-rt-dev cmake ninja-build pkg-config
    # Checks
    clang-format clang-tidy cppcheck doxygen shellcheck abigail-tools llvm
    # The library
    libegl-dev libgles-dev libfreetype-dev
    # The software renderer and the virtual X server
    libegl-mesa0 libgles2 libgl1-mesa-dri xvfb x11-utils
    # Tests and benchmarks
    libgtest-dev libgmock-dev libbenchmark-dev libx11-dev python3-fonttools
    # Fonts: outlines with Latin, Greek and Cyrillic; Chinese, Japanese and Korean
    fonts-dejavu-core fonts-wqy-microhei
    # Examples
    libpng-dev libcli11-dev libutfcpp-dev imagemagick
)
packages+=("$@")

missing=()
for package in "${packages[@]}"; do
    state=$(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null || true)
    [[ $state == installed ]] || missing+=("$package")
done

if ((${#missing[@]} == 0)); then
    echo "setup: all ${#packages[@]} packages are installed"
    exit 0
fi

as_root=()
if ((EUID != 0)); then
    if ! command -v sudo >/dev/null; then
        echo "setup: run this as root, or install sudo; missing: ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
fi

echo "setup: installing ${missing[*]}"
"${as_root[@]}" apt-get update
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install --yes --no-install-recommends "${missing[@]}" </dev/null
echo "setup: installed ${#missing[@]} packages"
