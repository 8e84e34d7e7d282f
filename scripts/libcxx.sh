#!/usr/bin/env bash
# libcxx.sh
# Builds the library with clang and its C++ library, which is Android's too, and runs the test of creations that fail.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh tests clang libc++-dev libc++abi-dev

echo "libcxx: building"
cmake --preset ci-clang -B build/libcxx -DCMAKE_CXX_FLAGS=-stdlib=libc++
cmake --build build/libcxx --target FailedCreations

echo "libcxx: running"
scripts/with_xvfb.sh timeout 60 build/libcxx/tests/FailedCreations
