#!/usr/bin/env bash
# abi.sh [--accept]
# Checks what the library shows to programs that are built already: the layout of the public classes and records
# (tests/abi/Layout.cpp), with g++ and clang, and its exported names (tests/abi/exports.txt). --accept keeps the
# names as they are now.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
build=${KIVGLES_ABI_BUILD:-build/abi}

scripts/setup.sh build checks
for compiler in g++ clang++; do
    "$compiler" -std=c++17 -fsyntax-only -I include tests/abi/Layout.cpp
done
cmake -S . -B "$build" -G Ninja -DCMAKE_CXX_COMPILER=g++ -DCMAKE_BUILD_TYPE=Debug \
    -DKIVGLES_BUILD_TESTS=OFF -DKIVGLES_BUILD_EXAMPLES=OFF -DKIVGLES_BUILD_BENCHMARKS=OFF
cmake --build "$build" --target kivgles

if [[ ${1:-} == --accept ]]; then
    tests/abi/exported_names.sh "$build/libkivgles.so" >tests/abi/exports.txt
    echo "abi: names kept in tests/abi; say in CHANGELOG.md what changes for programs that are built already"
    exit 0
fi
tests/abi/check_exports.sh "$build/libkivgles.so"
echo "abi: exported names and layout are as kept"
