#!/usr/bin/env bash
# install.sh BUILD WORK_FOLDER
# Installs what was built and moves it, because an installed library works wherever its folder goes; then lets the
# project outside find it.
set -euo pipefail
build=$1 installed=$2/installed moved=$2/moved

rm -rf "$2"
cmake --install "$build" --prefix "$installed"
mv "$installed" "$moved"
if grep -rI -e "$installed" -e "$build" "$moved"; then
    echo "${0##*/}: the files above name a folder of the build" >&2
    exit 1
fi
"$(dirname "${BASH_SOURCE[0]}")/consume.sh" "$2/consumer" -DCMAKE_PREFIX_PATH="$moved"
