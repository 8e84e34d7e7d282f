#!/usr/bin/env bash
# install.sh BUILD WORK_FOLDER
# Installs what was built, but not where it is told to be, because an installed library works wherever its folder goes;
# then lets the project outside find it.
set -euo pipefail
rm -rf "$2"
DESTDIR=$2 cmake --install "$1" --prefix /moved
if grep -rI "$1" "$2"; then
    echo "${0##*/}: the files above name a folder of the build" >&2
    exit 1
fi
"$(dirname "${BASH_SOURCE[0]}")/consume.sh" "$2/consumer" -DCMAKE_PREFIX_PATH="$2/moved"
