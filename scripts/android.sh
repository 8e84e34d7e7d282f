#!/usr/bin/env bash
# android.sh [ABI]...
# Compiles and links the library for Android (arm64-v8a, armeabi-v7a and x86_64 unless said otherwise) over Debian's
# headers, against libraries that have the names which tests/abi/android.txt says are needed
# and no others, and looks at the result: its name, its pages, what it exports, which libraries it needs. No NDK takes
# part and nothing is run.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
build_root=${KIVGLES_ANDROID_BUILD:-build/android}
needs=tests/abi/android.txt

scripts/setup.sh build checks lld llvm libc++-14-dev android-liblog-dev \
    libc6-dev-arm64-cross libc6-dev-armel-cross libc6-dev-amd64-cross

host_libraries=/usr/lib/$(g++ -print-multiarch)

# stub_library SYSROOT TARGET LIBRARY <NAMES: a library that has the names on its input, and nothing behind them.
stub_library() {
    local object=$1/stub.o
    awk -v scope="$([[ $3 != *.a ]] || echo .hidden)" '
        { print ".globl " $1 "\n.type " $1 ", " ($1 ~ /^_ZT/ ? "%object" : "%function") "\n" $1 ": .byte 0" }
        scope { print scope " " $1 }' | clang --target="$2" -c -x assembler - -o "$object"
    case $3 in
        *.a) llvm-ar rcs "$1/usr/lib/$3" "$object" ;;
        *.so) clang --target="$2" -fuse-ld=lld -nostdlib -shared -Wl,-soname,"$3" "$object" -o "$1/usr/lib/$3" ;;
    esac
}

mapfile -t libraries < <(sed '/^#/d; s/ .*//' $needs | uniq)
# needed LIBRARY: the names that are needed of it.
needed() { sed -n "s/^$1 //p" $needs | tr ' ' '\n'; }

exported() { nm --dynamic --defined-only --format=just-symbols "$@" | sed '/:$/d; /^$/d; s/@.*//' | sort -u; }
# declared HEADER: what a header of Khronos declares, of EGL up to version 1.4.
declared() { sed '/EGL_VERSION_1_5/q' "$1" | sed -nE 's/.*APIENTRY *(e?gl[A-Za-z0-9]+) .*/\1/p'; }

# make_sysroot SYSROOT TARGET HEADERS_OF_THE_C_LIBRARY
make_sysroot() {
    local include=$1/usr/include libcxx=/usr/lib/llvm-14/include/c++/v1 library
    rm -rf "$1"
    mkdir -p "$include/c++" "$1/usr/lib"
    ln -s /usr/include/{EGL,GLES2,KHR,freetype2,utf8cpp} "$include"
    ln -s "/usr/$3/include" "$include/c"
    ln -s /usr/include/android "$include/android"

    # The NDK's C++ library differs from Debian's of the same make by its inline namespace.
    ln -s "$libcxx" "$include/c++/v1"
    sed 's,/\* #undef _LIBCPP_ABI_NAMESPACE \*/,#define _LIBCPP_ABI_NAMESPACE __ndk1,' "$libcxx/__config_site" \
        >"$include/c++/__config_site"
    for library in "${libraries[@]}"; do
        case $library in
            libc++_shared.so) exported "$host_libraries"/lib{c++,c++abi}.so.1 | sed 's/3__1/6__ndk1/g' ;;
            libfreetype.so) exported "$host_libraries"/libfreetype.so.6 ;;
            libEGL.so) declared "$include/EGL/egl.h" ;;
            libGLESv2.so) declared "$include/GLES2/gl2.h" ;;
        esac | cat - <(needed "$library") | stub_library "$1" "$2" "$library"
    done
}

# expect WHAT EXPECTED FOUND
expect() {
    if [[ $2 != "$3" ]]; then
        printf 'android: %s\nexpected:\n%s\nfound:\n%s\n' "$1" "$2" "$3" >&2
        exit 1
    fi
}

# inspect LIBRARY
inspect() {
    local dynamic pages
    dynamic=$(readelf --wide --dynamic "$1")
    expect "the library's name carries no version" "libkivgles.so" \
        "$(sed -n 's/.*(SONAME).*\[\(.*\)\]/\1/p' <<<"$dynamic")"
    expect "the libraries it needs" "$(printf '%s\n' "${libraries[@]}" | grep -v '\.a$')" \
        "$(sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' <<<"$dynamic" | LC_ALL=C sort)"
    expect "the code is not changed when it is loaded" "" "$(grep TEXTREL <<<"$dynamic" || true)"

    pages=$(readelf --wide --segments "$1" | awk '$1 == "LOAD" { print $NF }' | sort -u)
    expect "pages of 16 KiB" "0x4000" "$pages"

    expect "it exports nothing but its class" "" "$(exported "$1" | grep -v '^_ZNK\?7kivgles16KivGLDrawSurface' || true)"
}

abis=("$@")
if ((${#abis[@]} == 0)); then
    abis=(arm64-v8a armeabi-v7a x86_64)
fi
for abi in "${abis[@]}"; do
    case $abi in
        arm64-v8a) cpu=aarch64 headers=aarch64-linux-gnu ;;
        armeabi-v7a) cpu=armv7a headers=arm-linux-gnueabi ;;
        x86_64) cpu=x86_64 headers=x86_64-linux-gnu ;;
        *) echo "android: no such ABI: $abi" >&2 && exit 2 ;;
    esac
    echo "android: building for $abi"
    build=$build_root/$abi
    sysroot=$(realpath -m "$build/sysroot")
    make_sysroot "$sysroot" "$cpu-linux-android21" "$headers"
    cmake -S . -B "$build" -G Ninja -DCMAKE_TOOLCHAIN_FILE=cmake/toolchains/android-headers.cmake \
        -DANDROID_ABI="$abi" -DKIVGLES_ANDROID_SYSROOT="$sysroot" \
        -DCMAKE_BUILD_TYPE=Release -DKIVGLES_WARNINGS_AS_ERRORS=ON
    cmake --build "$build"

    # Android's own headers are the ones that were read, where it has them.
    stand_ins=$(ninja -C "$build" -t deps | grep -o 'platform/include/.*' | sort -u)
    expect "the stand-ins that Android lacks" "platform/include/bounds_checked.h" "$stand_ins"
    inspect "$build/libkivgles.so"

    cmake --install "$build" --component prefab --prefix "$build_root/package" >/dev/null
    python3 -m json.tool "$build_root/package/prefab/modules/kivgles/libs/android.$abi/abi.json" >/dev/null
done
echo "android: the prefab layout is in $build_root/package"
echo "android: ${abis[*]} passed (compiled and looked at, not run)"
