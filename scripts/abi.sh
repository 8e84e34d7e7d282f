#!/usr/bin/env bash
# abi.sh
# Checks what the library shows to programs that are built already, with g++ and clang: the layout of the public classes
# and records and the functions (tests/abi/Interface.cpp), and that it exports nothing but its one class.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
build=${KIVGLES_ABI_BUILD:-build/abi}

scripts/setup.sh build checks
cmake -S . -B "$build" -G Ninja -DCMAKE_CXX_COMPILER=g++ -DCMAKE_BUILD_TYPE=Debug \
    -DKIVGLES_BUILD_TESTS=OFF -DKIVGLES_BUILD_EXAMPLES=OFF -DKIVGLES_BUILD_BENCHMARKS=OFF
cmake --build "$build" --target kivgles
for compiler in g++ clang++; do
    "$compiler" -std=c++17 -I include tests/abi/Interface.cpp "$build/libkivgles.so" -o "$build/interface"
done

others=$(nm --dynamic --defined-only --format=just-symbols "$build/libkivgles.so" | grep -v '^_ZNK\?7kivgles16KivGLDrawSurface' || true)
if [[ $others ]]; then
    printf 'abi: the library also exports\n%s\n' "$others" >&2
    exit 1
fi
echo "abi: layout and functions are as kept, and nothing else is exported"
