#!/usr/bin/env bash
# android.sh [ABI]...
# Compiles and links the library for Android (arm64-v8a and x86_64 unless said otherwise) over Debian's headers, and
# looks at the result: its name, its pages, what it exports, which libraries it needs and what it needs of them.
# No NDK takes part and nothing is run.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
build_root=${KIVGLES_ANDROID_BUILD:-build/android}
kept=tests/abi/android

scripts/setup.sh build checks lld llvm libc++-14-dev android-liblog-dev libc6-dev-arm64-cross libc6-dev-amd64-cross

host_libraries=/usr/lib/$(g++ -print-multiarch)

# stub_library SYSROOT TARGET NAME <NAMES: a library that has the names on its input, and nothing behind them.
stub_library() {
    awk '{ print ".globl " $1 "\n.type " $1 ", " ($1 ~ /^_ZT|^__stack_chk_guard$/ ? "@object" : "@function")
           print $1 ": .byte 0" }' |
        clang --target="$2" -fuse-ld=lld -nostdlib -shared -Wl,-soname,"$3.so" -x assembler - -o "$1/usr/lib/$3.so"
}

exported() { nm --dynamic --defined-only --format=just-symbols "$@" | sed '/:$/d; /^$/d; s/@.*//' | LC_ALL=C sort -u; }

# make_sysroot SYSROOT TARGET CPU
make_sysroot() {
    local include=$1/usr/include libcxx=/usr/lib/llvm-14/include/c++/v1 library
    rm -rf "$1"
    mkdir -p "$include/c++" "$1/usr/lib"
    ln -s /usr/include/{EGL,GLES2,KHR,freetype2} "$include"
    ln -s "/usr/$3-linux-gnu/include" "$include/$3"
    ln -s /usr/include/android "$include/android"

    # The NDK's C++ library differs from Debian's of the same make by its inline namespace.
    ln -s "$libcxx" "$include/c++/v1"
    sed 's,/\* #undef _LIBCPP_ABI_NAMESPACE \*/,#define _LIBCPP_ABI_NAMESPACE __ndk1,' "$libcxx/__config_site" \
        >"$include/c++/__config_site"
    exported "$host_libraries"/lib{c++,c++abi}.so.1 | sed 's/3__1/6__ndk1/g' |
        cat - $kept/unwinder.txt | stub_library "$1" "$2" libc++_shared

    # FreeType is the application's; Android's own libraries have what the kept lists say.
    exported "$host_libraries"/libfreetype.so.6 | stub_library "$1" "$2" libfreetype
    for library in libEGL libGLESv2 liblog libc libm libdl; do
        stub_library "$1" "$2" "$library" <"$kept/$library.txt"
    done
}

# expect WHAT EXPECTED FOUND
expect() {
    if [[ $2 != "$3" ]]; then
        printf 'android: %s\nexpected:\n%s\nfound:\n%s\n' "$1" "$2" "$3" >&2
        exit 1
    fi
}

# inspect LIBRARY SYSROOT
inspect() {
    local dynamic pages undefined stray
    dynamic=$(readelf --wide --dynamic "$1")
    expect "the library's name carries no version" "libkivgles.so" \
        "$(sed -n 's/.*(SONAME).*\[\(.*\)\]/\1/p' <<<"$dynamic")"
    expect "the libraries it needs" "$(cat $kept/needed.txt)" \
        "$(sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' <<<"$dynamic" | LC_ALL=C sort)"
    expect "the code is not changed when it is loaded" "" "$(grep TEXTREL <<<"$dynamic" || true)"

    pages=$(readelf --wide --segments "$1" | awk '$1 == "LOAD" { print $NF }' | sort -u)
    expect "pages of 16 KiB" "0x4000" "$pages"

    tests/abi/check_exports.sh "$1"

    undefined=$(llvm-nm --dynamic --undefined-only --just-symbol-name "$1" | LC_ALL=C sort -u)
    stray=$(LC_ALL=C comm -23 <(echo "$undefined") <(exported "$2"/usr/lib/*.so))
    expect "every name it needs is one that Android, FreeType or the C++ library has" "" "$stray"
    echo "android: needs $(wc -l <<<"$undefined") names, all known"
}

abis=("$@")
if ((${#abis[@]} == 0)); then
    abis=(arm64-v8a x86_64)
fi
for abi in "${abis[@]}"; do
    case $abi in
        arm64-v8a) cpu=aarch64 ;;
        x86_64) cpu=x86_64 ;;
        *) echo "android: no such ABI: $abi" >&2 && exit 2 ;;
    esac
    echo "android: building for $abi"
    build=$build_root/$abi
    sysroot=$(realpath -m "$build/sysroot")
    make_sysroot "$sysroot" "$cpu-linux-android21" "$cpu"
    cmake -S . -B "$build" -G Ninja -DCMAKE_TOOLCHAIN_FILE=cmake/toolchains/android-headers.cmake \
        -DANDROID_ABI="$abi" -DKIVGLES_ANDROID_SYSROOT="$sysroot" \
        -DCMAKE_BUILD_TYPE=Release -DKIVGLES_WARNINGS_AS_ERRORS=ON
    cmake --build "$build"

    # Android's own headers are the ones that were read, where it has them.
    stand_ins=$(ninja -C "$build" -t deps | grep -o 'platform/include/.*' | sort -u)
    expect "the stand-ins that Android lacks" "platform/include/bounds_checked.h" "$stand_ins"
    inspect "$build/libkivgles.so" "$sysroot"

    cmake --install "$build" --component prefab --prefix "$build_root/package" >/dev/null
    python3 -m json.tool "$build_root/package/prefab/modules/kivgles/libs/android.$abi/abi.json" >/dev/null
done
echo "android: the prefab layout is in $build_root/package"
echo "android: ${abis[*]} passed (compiled and looked at, not run)"
