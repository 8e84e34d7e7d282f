#!/usr/bin/env bash
# bench.sh [--smoke] [OPTION OF bench/run.py]...
# Installs what is missing, builds the library and the contestants, and measures them in turn under a virtual X
# server, for a quarter of an hour or so. The results go to build/release/bench/results.
# --smoke measures nothing worth knowing: everything for a second, to see that it works.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

effort=("$@")
if [[ ${1:-} == --smoke ]]; then
    effort=(--rounds 1 --turns 1 --seconds 1 "${@:2}")
fi

scripts/setup.sh tests bench libsdl2-dev libsdl2-ttf-dev libcairo2-dev python3-matplotlib python3-numpy fonts-wqy-zenhei

echo "bench: building"
cmake --preset release -DKIVGLES_BUILD_BENCHMARKS=ON
cmake --build --preset release --target bench/all

scripts/with_xvfb.sh bench/run.py build/release/bench build/release/bench/results "${effort[@]}"
