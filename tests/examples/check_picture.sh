#!/usr/bin/env bash
# check_picture.sh USER KEPT RESULTS COMMAND [ARGUMENT]...
# Runs an example and compares its picture with the file KEPT. The example shows it in the top-left corner of the
# screen, in a window of its own name, until its standard input ends or USER (tests/window/user.cpp) closes that and
# presses q; or, told so by --output, it writes it to RESULTS-actual.png. Wants an X server of its own.
set -euo pipefail
user=$1 kept=$2 log=$3.log actual=$3-actual.png difference=$3-difference.png
shift 3
name=$(basename "$1")
size=$(identify -format '%wx%h' "$kept")
rm -f "$actual"

# Each pixel is the same with the GL that made the kept pictures, and Debian 12's versions of what writes texts. With
# others each square of 20 pixels has the same ink and colours, within a twelfth: glyphs differ at their edges.
is_as_kept() {
    local allowed=0 look=()
    if grep 'GL Version = ' "$log" | grep -qv 'Mesa 22\.3\.6$'; then
        allowed=$((65535 / 12)) look=(-filter box -resize 5%)
    fi
    greatest=$(convert "$kept" "$actual" "${look[@]}" miff:- | compare -metric PAE miff:- "$difference" 2>&1 | grep -oE '^[0-9]+' || true)
    [[ $greatest && $(identify -format '%wx%h' "$actual") == "$size" ]] && ((greatest <= allowed))
}

exec {input}> >("$@" 2>"$log")
example=$!
until is_as_kept || ((SECONDS > 60)) || ! kill -0 "$example" 2>/dev/null; do
    [[ " $* " == *" --output "* ]] || import -silent -window root -crop "$size+0+0" +repage "$actual"
done
exec {input}>&-
while kill -0 "$example" 2>/dev/null; do
    "$user" "$name" 2>/dev/null || sleep 0.2 # it may be gone, with its input
done
exit_code=0
wait "$example" || exit_code=$?

if ! is_as_kept || ((exit_code != 0)); then
    cat "$log" >&2
    echo "$name: the exit code is $exit_code, the greatest difference $greatest of 65535; look at $actual and" \
        "$difference. If the picture is as it should be, accept it: cp $actual $kept" >&2
    exit 1
fi
