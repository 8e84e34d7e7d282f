#!/usr/bin/env bash
# check_exports.sh LIBRARY
# Fails unless the library exports exactly the names of exports.txt.
set -euo pipefail
here=$(dirname "${BASH_SOURCE[0]}")

if ! difference=$(diff --unified=0 "$here/exports.txt" <("$here/exported_names.sh" "$1")); then
    printf '%s\n' "$difference" | sed -n 's/^[-+][^-+]/&/p'
    cat >&2 <<END
The exported names of $1 are not those of tests/abi/exports.txt (-: missing, +: new).
Is the change meant? A removed or changed name breaks programs that are built already: raise the minor version in
CMakeLists.txt, which raises the SOVERSION. An added one does not. Then accept it: scripts/abi.sh --accept
END
    exit 1
fi
echo "exports: $(wc -l <"$here/exports.txt") names, as kept"
