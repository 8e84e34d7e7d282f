#!/usr/bin/env bash
# arm64.sh [ARGUMENT OF CTEST]...
# Builds everything for ARM64 with Debian's cross compiler, looks at the library's code, and runs the demo and the
# tests under an emulator, on the software renderer that compiles nothing at run time (emulated, another is slow).
# Left out are the sweep of faults, the races with the exit among them, and what has not been tried emulated: the kit,
# and windows beside each other. The X server is this machine's own.
# To install the libraries of ARM64 apt may bring this machine's to the same version; CI does it in a minimal system.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
build=build/arm64

fail() {
    echo "arm64: $*" >&2
    exit 1
}

[[ $(dpkg --print-architecture) != arm64 ]] || fail "this machine is one: scripts/test.sh does it here"

scripts/setup.sh tests imagemagick qemu-user-static g++-aarch64-linux-gnu \
    lib{egl,gles,freetype,x11,png,gtest,gmock}-dev:arm64 lib{egl-mesa0,gles2,gl1-mesa-dri}:arm64
command -v qemu-aarch64-static >/dev/null || fail "there is no qemu-aarch64-static to run the tests with"

echo "arm64: building"
cmake --preset release -B $build -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/toolchains/aarch64-linux-gnu.cmake" \
    -DKIVGLES_WARNINGS_AS_ERRORS=ON -DKIVGLES_BUILD_KIT=OFF
cmake --build $build

# Products are rounded before they are added up, as everywhere: vertices are the same on each processor.
code=$(aarch64-linux-gnu-objdump --disassemble --no-show-raw-insn $build/libkivgles.so)
grep -qw fmul <<<"$code" || fail "the library's code multiplies nothing"
! grep -Ew 'fn?m(add|sub)|fml[as]l?2?' <<<"$code" || fail "the instructions above fuse products and sums"
echo "arm64: no product is fused with a sum"

export GALLIUM_DRIVER=softpipe LIBGL_ALWAYS_SOFTWARE=1
echo "arm64: running the demo"
scripts/with_xvfb.sh qemu-aarch64-static $build/examples/osd_demo/osd_demo --frames 4 --output $build/osd.png
difference=$(compare -metric MAE docs/images/osd.png $build/osd.png null: 2>&1) || (($? == 1))
awk -F '[()]' '{ mean = 255 * $2; exit !(NF == 3 && mean <= 1) }' <<<"$difference" ||
    fail "$build/osd.png is not the kept picture: $difference"
echo "arm64: the demo's picture differs from the kept one by $difference"

echo "arm64: running the tests"
scripts/with_xvfb.sh ctest --test-dir $build --output-on-failure --no-tests=error --timeout 1500 \
    --parallel "$(nproc)" --label-exclude '^all$' --exclude-regex '^(Exit|Faults|Races|Window)' "$@"
echo "arm64: passed"
