#!/usr/bin/env bash
# docs.sh
# Installs what is missing and writes the reference of the public headers to build/docs/index.html. Anything that
# a client can see and that is not described in full is an error.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh

KIVGLES_VERSION=$(sed -n 's/^ *VERSION \([0-9.]*\)$/\1/p' CMakeLists.txt)
export KIVGLES_VERSION
mkdir -p build/docs
doxygen docs/Doxyfile

# A row that is wrapped ends its table: what follows would be running text.
rows=$(cat include/kivgles/*.h | grep -cE '^ */// \| .*\|$')
shown=$(cat build/docs/*.html | grep -oE 'class="markdownTable(Head|Row(Odd|Even))"' | wc -l)
if grep -nE '^ *///.*\|' include/kivgles/*.h | grep -vE ':[0-9]+: */// \|.*\|$' || ((rows != shown)); then
    echo "docs: tables of $rows rows in the headers have $shown in the reference; each row is a line" >&2
    exit 1
fi
echo "docs: build/docs/index.html"
