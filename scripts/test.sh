#!/usr/bin/env bash
# test.sh [PRESET [ARGUMENT OF CTEST]...]
# Installs what is missing, builds the preset (debug unless said otherwise; asan, tsan, ...) and runs all tests
# under a virtual X server.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

preset=${1:-debug}

groups=(tests)
if [[ $preset == ci-clang ]]; then
    groups+=(checks)
fi
scripts/setup.sh "${groups[@]}"

echo "test: building preset $preset"
cmake --preset "$preset"
cmake --build --preset "$preset"

echo "test: running the tests of preset $preset"
scripts/with_xvfb.sh ctest --preset "$preset" --parallel "$(nproc)" "${@:2}"
