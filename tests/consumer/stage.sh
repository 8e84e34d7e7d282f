#!/usr/bin/env bash
# stage.sh BUILD STAGE
# Installs what was built, and moves it: an installed library works wherever its folder goes.
set -euo pipefail

rm -rf "$2" "$2-before-its-move"
cmake --install "$1" --prefix "$2-before-its-move"
mv "$2-before-its-move" "$2"
if grep -rI -e "$2-before-its-move" -e "$1" "$2"; then
    echo "${0##*/}: the files above name a folder of the build" >&2
    exit 1
fi
