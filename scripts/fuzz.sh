#!/usr/bin/env bash
# fuzz.sh TARGET SECONDS [ARGUMENT OF LIBFUZZER]...
# Builds a fuzz target (font, operations, conversions) with clang and the address and undefined-behaviour
# sanitizers, and runs it for so long from the inputs kept in tests/fuzz/corpus. What it learns stays in
# build/fuzz/corpus; an input that fails is left in build/fuzz.
set -euo pipefail

if (($# < 2)); then
    echo "usage: ${0##*/} font|operations|conversions SECONDS [ARGUMENT OF LIBFUZZER]..." >&2
    exit 2
fi
target=$1
seconds=$2
cd "$(dirname "${BASH_SOURCE[0]}")/.."
build=${KIVGLES_FUZZ_BUILD:-build/fuzz}

sanitizers="-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all"
cmake -S . -B "$build" -G Ninja \
    -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=Debug \
    "-DCMAKE_CXX_FLAGS=$sanitizers" "-DCMAKE_CXX_FLAGS_DEBUG=-O1 -g -fno-omit-frame-pointer" \
    -DKIVGLES_BUILD_FUZZERS=ON -DKIVGLES_BUILD_TESTS=OFF -DKIVGLES_BUILD_EXAMPLES=OFF \
    -DKIVGLES_BUILD_BENCHMARKS=OFF
cmake --build "$build" --target "fuzz_$target"

fuzzer=$build/tests/fuzz/fuzz_$target

# No input may take long or much memory. Draw threads free their last bytes in their own time: there leaks are
# looked for at the end.
options=(-timeout=10 -rss_limit_mb=1024 -artifact_prefix="$build/")
if [[ $target == operations ]]; then
    options+=(-detect_leaks=0 -max_len=256)
fi
export ASAN_OPTIONS=${ASAN_OPTIONS:-quarantine_size_mb=8:allocator_release_to_os_interval_ms=-1}  # for speed

corpora=("$build/corpus/$target")
mkdir -p "${corpora[0]}"
if [[ -d tests/fuzz/corpus/$target ]]; then
    corpora+=("tests/fuzz/corpus/$target")
fi
if [[ $target == font ]]; then
    tests/fuzz/make_seeds.py "$build/fonts"
    corpora+=("$build/fonts/seeds")
    options+=(-entropic_scale_per_exec_time=1)
    "$fuzzer" "${options[@]}" "$build/fonts/damaged"/*
fi
exec "$fuzzer" "${options[@]}" -max_total_time="$seconds" -print_final_stats=1 "${@:3}" "${corpora[@]}"
