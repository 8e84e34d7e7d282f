#!/usr/bin/env bash
# package.sh
# Makes the Debian packages, has lintian look at them, installs them, builds and runs a program with them, and
# removes them again. Needs root or sudo. The packages stay in build/package.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
build=${KIVGLES_PACKAGE_BUILD:-build/package}

scripts/setup.sh build demo window lintian file gzip
as_root=()
if ((EUID != 0)); then
    as_root=(sudo)
fi

cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
    -DCMAKE_SKIP_INSTALL_RPATH=ON -DCMAKE_CXX_FLAGS="-D_FORTIFY_SOURCE=2 -fstack-protector-strong" \
    -DCMAKE_SHARED_LINKER_FLAGS=-Wl,-z,relro,-z,now \
    -DKIVGLES_BUILD_TESTS=OFF -DKIVGLES_BUILD_EXAMPLES=OFF -DKIVGLES_BUILD_BENCHMARKS=OFF
cmake --build "$build"
rm -f "$build"/*.deb
(umask 022 && cd "$build" && cpack)

debs=("$build"/*.deb)
names=()
for deb in "${debs[@]}"; do
    names+=("$(dpkg-deb --field "$deb" Package)")
done

echo "package: lintian"
lintian --allow-root --fail-on error "${debs[@]}"

for name in "${names[@]}"; do
    if dpkg-query --show "$name" >/dev/null 2>&1; then
        echo "package: $name is installed on this machine already, which is left as it is" >&2
        exit 1
    fi
done
echo "package: installing ${names[*]}"
remove() { "${as_root[@]}" dpkg --purge "${names[@]}"; }
trap remove EXIT
"${as_root[@]}" dpkg --install "${debs[@]}"

scripts/with_xvfb.sh tests/consumer/consume.sh "$build/consumer"

trap - EXIT
remove
left=$(find /usr/lib /usr/include /usr/share/doc -iname '*kivgles*')
if [[ -n $left ]]; then
    printf 'package: left after removal:\n%s\n' "$left" >&2
    exit 1
fi
echo "package: ${names[*]} install, work and can be removed"
