#!/usr/bin/env bash
# setup.sh [GROUP|PACKAGE]...
# Installs the Debian packages of the groups and the further ones named (PACKAGE:ARCHITECTURE for another machine's),
# as far as they are missing; those of all groups if none is named. Removes none. Works as root or with sudo; asks for
# nothing but a password that sudo may want.
#
# build   compiles library and kit    window   the window library on X11 and Wayland
# demo    compiles and runs the demo  wayland  compositors, to run it on
# tests   demo, kit, window, tests    checks   looks at the sources, with clang and the tools around it
#                                     bench    Google Benchmark
set -euo pipefail

fail() {
    echo "setup: $*" >&2
    exit 1
}

core=(
    g++ cmake ninja-build pkg-config
    libegl-dev libgles-dev libfreetype-dev
)
kit=(libpango1.0-dev) # and Cairo with it
build=("${core[@]}" "${kit[@]}")
demo=(
    "${core[@]}"
    # The software renderer and the virtual X server
    libegl-mesa0 libgles2 libgl1-mesa-dri xvfb x11-utils
    # The core's examples
    libx11-dev libpng-dev libcli11-dev libutfcpp-dev
    # Fonts: outlines with Latin, Greek and Cyrillic; Chinese, Japanese and Korean
    fonts-dejavu-core fonts-wqy-microhei
)
window=(libx11-dev libxfixes-dev libwayland-dev libdecor-0-dev libxkbcommon-dev)
wayland=(sway weston grim wtype libdecor-0-plugin-1-cairo)
tests=("${demo[@]}" "${kit[@]}" "${window[@]}" fonts-noto-core fonts-noto-color-emoji libgtest-dev libgmock-dev python3-fonttools)
checks=(
    clang libclang-rt-dev llvm
    clang-format clang-tidy cppcheck doxygen shellcheck imagemagick
)
bench=(libbenchmark-dev)

if (($# == 0)); then
    set -- tests checks bench
fi
packages=()
for name in "$@"; do
    case $name in
        build) packages+=("${build[@]}") ;;
        demo) packages+=("${demo[@]}") ;;
        window) packages+=("${window[@]}") ;;
        wayland) packages+=("${wayland[@]}") ;;
        tests) packages+=("${tests[@]}") ;;
        checks) packages+=("${checks[@]}") ;;
        bench) packages+=("${bench[@]}") ;;
        *) packages+=("$name") ;;
    esac
done

# installed PACKAGE: for this machine's architecture, whichever others it is also there for, or for the one named.
native=$(dpkg --print-architecture)
installed() {
    local architecture=$native
    [[ $1 != *:* ]] || architecture=${1#*:}
    # shellcheck disable=SC2016  # the variables are dpkg-query's
    dpkg-query --show --showformat='${Architecture} ${db:Status-Status}\n' "$1" 2>/dev/null |
        grep -Eqx "(all|$architecture) installed"
}

missing=()
declare -A architectures=()
for package in "${packages[@]}"; do
    if ! installed "$package"; then
        missing+=("$package")
        [[ $package != *:* ]] || architectures[${package#*:}]=1
    fi
done

if ((${#missing[@]} == 0)); then
    echo "setup: all ${#packages[@]} packages are installed"
    exit 0
fi

as_root=()
if ((EUID != 0)); then
    command -v sudo >/dev/null || fail "run this as root, or install sudo; missing: ${missing[*]}"
    as_root=(sudo)
fi

echo "setup: installing ${missing[*]}"
for architecture in "${!architectures[@]}"; do
    "${as_root[@]}" dpkg --add-architecture "$architecture"
done
"${as_root[@]}" apt-get update
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install --yes --no-install-recommends --no-remove "${missing[@]}" </dev/null ||
    fail "apt could not install ${missing[*]}"
echo "setup: installed ${#missing[@]} packages"
