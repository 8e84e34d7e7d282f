#!/usr/bin/env bash
# compilers.sh [gcc|clang]...
# Installs what is missing and builds all targets with that compiler, with both if none is named; a warning is an error.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

compilers=("$@")
if (($# == 0)); then
    compilers=(gcc clang)
fi
for compiler in "${compilers[@]}"; do
    case $compiler in
        gcc) scripts/setup.sh tests ;;
        clang) scripts/setup.sh tests clang ;;
        *) echo "compilers: no such compiler: $compiler" >&2 && exit 2 ;;
    esac
    echo "compilers: building with $compiler"
    cmake --preset "ci-$compiler"
    cmake --build --preset "ci-$compiler"
done
