#!/usr/bin/env bash
# soak.sh [LIVES [COMMANDS]]
# Puts a surface through so many lives (1,000) and so many paced commands (a million) on the real EGL, prints
# what the process holds on the way, and fails when its memory, descriptors, threads or objects do not stay
# flat. Takes some minutes.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh tests
cmake --preset release -DKIVGLES_TEST_CLIENTS=ON
cmake --build --preset release --target SoakTest
export SOAK_LIVES=${1:-1000} SOAK_COMMANDS=${2:-1000000}
LIBGL_ALWAYS_SOFTWARE=1 scripts/with_xvfb.sh build/release/tests/SoakTest
