#!/usr/bin/env bash
# soak.sh [ROUNDS]
# Lets eight windows with eight clients each come and go for so many rounds (200, which are more than a thousand lives and
# a million commands) on the real EGL. Prints how much memory the process holds after each tenth, and fails when it
# grows. Takes some minutes.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh tests
cmake --preset release
cmake --build --preset release --target WindowsTest
export WINDOW_ROUNDS=${1:-200} LIBGL_ALWAYS_SOFTWARE=1
# shellcheck disable=SC2016 # the inner shell knows its server
scripts/with_xvfb.sh sh -c 'OTHER_DISPLAY=$DISPLAY exec "$@"' sh scripts/with_xvfb.sh build/release/tests/WindowsTest
