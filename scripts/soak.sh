#!/usr/bin/env bash
# soak.sh [LIVES [COMMANDS]]
# Puts surfaces through so many lives (1,000), then one through so many commands (a million), of eight clients on the
# real EGL. Prints how much memory the process holds after each tenth, and fails when it grows. Takes some minutes.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh tests
cmake --preset release -DKIVGLES_TEST_CLIENTS=ON
cmake --build --preset release --target SoakTest
export SOAK_LIVES=${1:-1000} SOAK_COMMANDS=${2:-1000000}
LIBGL_ALWAYS_SOFTWARE=1 scripts/with_xvfb.sh build/release/tests/SoakTest
