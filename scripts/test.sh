#!/usr/bin/env bash
# test.sh [--all] [PRESET [ARGUMENT OF CTEST]...]
# Installs what is missing, builds the preset (debug unless said otherwise; asan, tsan, ...) and runs the tests
# under a virtual X server: those that need minutes, labelled `all`, only with --all.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

tests=(--label-exclude '^all$')
if [[ ${1:-} == --all ]]; then
    tests=()
    shift
fi
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
scripts/with_xvfb.sh ctest --preset "$preset" --parallel "$(nproc)" "${tests[@]}" "${@:2}"
