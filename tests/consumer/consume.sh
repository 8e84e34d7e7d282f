#!/usr/bin/env bash
# consume.sh find_package|pkg-config PREFIX WORK_FOLDER
# consume.sh add_subdirectory SOURCES WORK_FOLDER
# Builds the smallest examples, of the library and of its kit, outside the project the way that the first argument
# names, with the compiler that CXX names, and looks for their pictures on the display. PREFIX "/" stands for a library
# that the system has.
set -euo pipefail
way=$1 from=$2 work=$3
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$here/../..
: "${CXX:=g++}"

rm -rf "$work"
mkdir -p "$work"

build_with_cmake() {
    cmake -S "$here" -B "$work" -G Ninja -DCMAKE_CXX_COMPILER="$CXX" -DCMAKE_BUILD_TYPE=Debug "$@"
    cmake --build "$work"
}

case $way in
    find_package)
        build_with_cmake -DCMAKE_PREFIX_PATH="$from"
        grep -q "kivgles_DIR:PATH=${from%/}/" "$work/CMakeCache.txt"
        ;;
    add_subdirectory)
        build_with_cmake -DKIVGLES_SOURCES="$from"
        ;;
    pkg-config)
        if [[ $from != / ]]; then
            PKG_CONFIG_PATH=$(dirname "$(find "$from" -name kivgles.pc)")
            LD_LIBRARY_PATH=$(pkg-config --variable=libdir "$PKG_CONFIG_PATH/kivgles.pc")
            export PKG_CONFIG_PATH LD_LIBRARY_PATH
        fi
        build_with_pkg_config() {
            read -ra flags <<<"$(pkg-config --cflags --libs "$1" x11)"
            "$CXX" -std=c++17 "$root/examples/$2/main.cpp" "${flags[@]}" -o "$work/$3"
        }
        build_with_pkg_config kivgles minimal consumer
        build_with_pkg_config kivgles-kit hello kit_consumer
        ;;
    *)
        echo "${0##*/}: no such way: $way" >&2
        exit 2
        ;;
esac

pictures=$root/tests/examples/pictures
"$root/tests/examples/check_picture.sh" "$pictures/minimal.png" "" "$work/$way" "$work/consumer"
"$root/tests/examples/check_picture.sh" "$pictures/hello.png" "" "$work/kit-$way" "$work/kit_consumer"
