#!/usr/bin/env bash
# compilers.sh
# Installs what is missing and builds all targets with g++ and with clang; a warning is an error.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh tests clang

for compiler in gcc clang; do
    echo "compilers: building with $compiler"
    cmake --preset "ci-$compiler"
    cmake --build --preset "ci-$compiler"
done
