#!/usr/bin/env bash
# links.sh
# Checks what the Markdown pages promise: each link of the project's own leads to a file, and to a heading if it names
# one; each picture of docs/images is shown, and together they stay small; code that is said to be a source's (an HTML
# comment with its path stands above the block) is in it, line by line; no line is too wide to read.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
export LC_ALL=C.UTF-8 # a column is a character
width=120
pictures_kb=600

failures=0
complain() {
    echo "links: $*" >&2
    failures=$((failures + 1))
}

# without_code PAGE: the page, with empty lines in place of its code blocks.
without_code() { awk '/^ *```/ { code = !code; print ""; next } { print code ? "" : $0 }' "$1"; }

# anchors PAGE: what its headings are called in a link, a number behind those that come again.
anchors() {
    without_code "$1" | sed -nE 's/^#{1,6} +//p' |
        sed -E 's/\[([^]]*)\]\([^)]*\)/\1/g; s/[^[:alnum:] _-]//g; s/ /-/g' |
        tr '[:upper:]' '[:lower:]' | awk '{ print seen[$0]++ ? $0 "-" seen[$0] - 1 : $0 }'
}

# links PAGE: line number and target of each link and picture.
links() {
    without_code "$1" | awk '{
        while (match($0, /\]\([^() ]+\)/)) {
            print FNR, substr($0, RSTART + 2, RLENGTH - 3)
            $0 = substr($0, RSTART + RLENGTH)
        }
    }'
}

check_link() { # PAGE LINE TARGET
    local file=${3%%#*} anchor=
    [[ $3 != *://* && $3 != mailto:* ]] || return 0
    [[ $3 != *'#'* ]] || anchor=${3#*'#'}
    if [[ $file ]]; then
        file=$(realpath -m --relative-to=. "$(dirname "$1")/$file")
    else
        file=$1
    fi
    shown[$file]=1
    if [[ ! -e $file ]]; then
        complain "$1:$2: there is no $file"
    elif [[ $anchor ]] && ! grep -Fqx -- "$anchor" <<<"$(anchors "$file")"; then
        complain "$1:$2: $file has no heading #$anchor"
    fi
}

check_quotes() { # PAGE
    local source line block
    while read -r line source; do
        block=$(tail -n "+$((line + 1))" "$1" | awk '/^```/ { fences++; next } fences == 1')
        if [[ ! -e $source ]]; then
            complain "$1:$line: there is no $source"
        elif [[ -z $block || $(<"$source") != *"$block"* ]]; then
            complain "$1:$line: the code is not that of $source"
        fi
    done < <(sed -nE '/^<!-- [^ ]+ -->$/ { =; s/^<!-- ([^ ]+) -->$/\1/p }' "$1" | paste -d ' ' - -)
}

declare -A shown=()
mapfile -t pages < <(git ls-files --cached --others --exclude-standard -- '*.md')
for page in "${pages[@]}"; do
    while read -r line target; do
        check_link "$page" "$line" "$target"
    done < <(links "$page")
    check_quotes "$page"
    line=0
    while IFS= read -r text; do
        line=$((line + 1))
        ((${#text} <= width)) || complain "$page:$line: wider than $width columns"
    done <"$page"
done

for picture in docs/images/*; do
    [[ ${shown[$picture]:-} ]] || complain "$picture is shown nowhere"
done
kb=$(($(cat docs/images/* | wc -c) / 1024))
((kb <= pictures_kb)) || complain "docs/images has $kb KB, more than $pictures_kb"

((failures == 0)) || exit 1
echo "links: ${#pages[@]} pages, ${#shown[@]} files and pages linked, $kb KB of pictures"
