#!/usr/bin/env bash
# wayland.sh
# Installs what is missing, builds the tests of windows and runs them on Wayland: all of them on sway, and on weston
# those that need no tool of the compositor's.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh tests wayland

echo "wayland: building"
cmake --preset debug
cmake --build --preset debug --target WindowTest

export LIBGL_ALWAYS_SOFTWARE=1
test=build/debug/tests/WindowTest
echo "wayland: running the tests on sway"
scripts/with_wayland.sh sway timeout 60 "$test"
echo "wayland: running the tests on weston"
scripts/with_wayland.sh weston timeout 60 "$test" \
    --gtest_filter='Windows.TakeTheSize*:Windows.SayWhat*:WindowOfADyingServer.*'
echo "wayland: passed"
