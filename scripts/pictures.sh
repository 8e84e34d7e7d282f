#!/usr/bin/env bash
# pictures.sh
# Takes the pictures of the examples anew, for the pages and the tests that show or compare them: each that differs
# replaces the kept one, in docs/images or tests/examples/pictures. Look at them before they are committed.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh tests imagemagick

cmake --preset release -DKIVGLES_TEST_CLIENTS=ON
cmake --build --preset release
scripts/with_xvfb.sh ctest --test-dir build/release -R '^Examples\.' || true # differences are what this is for

shopt -s nullglob
for kept in docs/images/*.png tests/examples/pictures/*.png; do
    taken=build/release/tests/examples/$(basename "$kept" .png)-actual.png
    if [[ -e $taken ]] && ! compare -metric AE "$taken" "$kept" null: 2>/dev/null; then
        convert "$taken" -strip -define png:compression-level=9 "$kept"
        echo "pictures: $kept is new"
    fi
done
scripts/links.sh
