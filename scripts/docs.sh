#!/usr/bin/env bash
# docs.sh
# Installs Doxygen if it is missing and writes the reference of the public headers of core, kit and window to
# build/docs/index.html. What a client can see and is not described in full is an error, and so is a class that the
# reference does not have or shows no use of.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
headers=(include/kivgles/*.h kit/include/kivgles/kit/*.h window/include/kivgles/window/*.h)
pages=build/docs

scripts/setup.sh doxygen

KIVGLES_VERSION=$(sed -n 's/^ *VERSION \([0-9.]*\)$/\1/p' CMakeLists.txt)
export KIVGLES_VERSION
rm -rf "$pages"
mkdir -p "$pages"
doxygen docs/Doxyfile

fail() {
    echo "docs: $*" >&2
    exit 1
}

# A row that is wrapped ends its table: what follows would be running text.
rows=$(cat "${headers[@]}" docs/reference.dox | grep -cE '^ *(/// )?\| .*\|$')
shown=$(cat "$pages"/*.html | grep -oE 'class="markdownTable(Head|Row(Odd|Even))"' | wc -l)
if grep -nE '^ *///.*[^|]\|([^|]|$)' "${headers[@]}" | grep -vE ':[0-9]+: */// \|.*\|$' || ((rows != shown)); then
    fail "tables of $rows rows in the headers have $shown in the reference; each row is a line"
fi

# Classes and records by their declaration at the start of a line. A class has operations, so its page shows a use.
classes=0
while read -r header kind name; do
    page=$(find "$pages" -name "$kind*_1_1$name.html" | grep -E "kivgles(_1_1(kit|window))?_1_1$name.html") ||
        fail "$kind $name of $header is not in the reference"
    if [[ $kind == class ]] && ! grep -q 'class="fragment"' "$page"; then
        fail "class $name of $header is without an example"
    fi
    classes=$((classes + 1))
done < <(grep -E '^(class|struct) [^;]*\{$' "${headers[@]}" |
    sed -E 's/__attribute__\(\(.*\)\)//; s/^([^:]*):(class|struct) ([A-Z_]+ )? *([A-Za-z]+).*/\1 \2 \4/')
echo "docs: $pages/index.html, $classes classes and records"
