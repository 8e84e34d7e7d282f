#!/usr/bin/env bash
# abi.sh [--accept]
# Builds the library with g++ and compares what it shows to programs that are built already, its exported names and
# the layout of the public classes and records, with what is kept in tests/abi. --accept keeps it as it is now.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
build=${KIVGLES_ABI_BUILD:-build/abi}
kept=tests/abi

scripts/setup.sh
cmake -S . -B "$build" -G Ninja -DCMAKE_CXX_COMPILER=g++ -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_CXX_FLAGS="-ffile-prefix-map=$PWD=." \
    -DKIVGLES_BUILD_TESTS=OFF -DKIVGLES_BUILD_EXAMPLES=OFF -DKIVGLES_BUILD_BENCHMARKS=OFF
cmake --build "$build" --target kivgles
library=$build/libkivgles.so

# Only what the public headers define, without the places where they do.
abidw --headers-dir include/kivgles --drop-private-types --exported-interfaces-only \
    --suppressions $kept/standard_library.abignore \
    --no-show-locs --no-comp-dir-path --no-corpus-path --no-elf-needed --no-parameter-names \
    --no-write-default-sizes --out-file "$build/kivgles.abi" "$library"

if [[ ${1:-} == --accept ]]; then
    $kept/exported_names.sh "$library" >$kept/exports.txt
    cp "$build/kivgles.abi" $kept/kivgles.abi
    echo "abi: kept in $kept; say in CHANGELOG.md what changes for programs that are built already"
    exit 0
fi

$kept/check_exports.sh "$library"
if ! abidiff $kept/kivgles.abi "$build/kivgles.abi"; then
    cat >&2 <<'END'
abi: what programs are built against is not what tests/abi keeps (above: what changed).
A changed layout, and a removed or changed function, break programs that are built already: raise the minor version
in CMakeLists.txt, which raises the SOVERSION. A function that was only added does not. Then accept it:
scripts/abi.sh --accept
END
    exit 1
fi
echo "abi: exported names and layout are as kept"
