#!/usr/bin/env bash
# fuzz.sh TARGET SECONDS [ARGUMENT OF LIBFUZZER]...
# Builds a fuzz target (font, operations) with clang and the address and undefined-behaviour
# sanitizers, and runs it for so long from the inputs kept in tests/fuzz/corpus. What it learns stays in
# build/fuzz/corpus; an input that fails is left in build/fuzz.
set -euo pipefail

if (($# < 2)); then
    echo "usage: ${0##*/} font|operations SECONDS [ARGUMENT OF LIBFUZZER]..." >&2
    exit 2
fi
target=$1
seconds=$2
cd "$(dirname "${BASH_SOURCE[0]}")/.."
build=${KIVGLES_FUZZ_BUILD:-build/fuzz}

scripts/setup.sh tests checks

cmake --preset fuzz -B "$build"
cmake --build "$build" --target "fuzz_$target"

fuzzer=$build/tests/fuzz/fuzz_$target

# No input may take long or much memory. The sanitizer limits the latter: libFuzzer would start a thread for it
# and let it go, and the operations wait for whatever thread is let go. Their process grows with the threads that it
# has started: more than three million runs take several processes.
options=(-timeout=10 -print_funcs=0 -rss_limit_mb=0 -malloc_limit_mb=1024 -artifact_prefix="$build/")
if [[ $target == operations ]]; then
    options+=(-max_len=96 -entropic=0)  # some fifteen operations; many inputs are worth more than rare ones
fi
# The rest is for speed.
export ASAN_OPTIONS=${ASAN_OPTIONS:-hard_rss_limit_mb=1024:quarantine_size_mb=1:malloc_context_size=8:allocator_release_to_os_interval_ms=-1}

corpora=("$build/corpus/$target" "tests/fuzz/corpus/$target")
mkdir -p "${corpora[0]}"
if [[ $target == font ]]; then
    fonts=$build/tests/fuzz/fonts
    corpora+=("$fonts/seeds")
    options+=(-entropic_scale_per_exec_time=1)
    "$fuzzer" "${options[@]}" "$fonts/damaged"/*
fi
exec "$fuzzer" "${options[@]}" -max_total_time="$seconds" -print_final_stats=1 "${@:3}" "${corpora[@]}"
