#!/usr/bin/env bash
# check_picture.sh KEPT RESULTS COMMAND [ARGUMENT]...
# Runs an example and compares its picture with the file KEPT. The example shows it in the top-left corner of the
# screen until its standard input ends or, told so by --output, writes it to RESULTS-actual.png. Wants an X server of
# its own.
set -euo pipefail
kept=$1 log=$2.log actual=$2-actual.png difference=$2-difference.png
shift 2
size=$(identify -format '%wx%h' "$kept")
rm -f "$actual"

# Each pixel is the same with the GL that made the kept pictures, within 2 of 255 with another.
is_as_kept() {
    local allowed=0
    if grep 'GL Version = ' "$log" | grep -qv 'Mesa 22\.3\.6$'; then
        allowed=$((2 * 257))
    fi
    greatest=$(compare -metric PAE "$kept" "$actual" "$difference" 2>&1 | grep -oE '^[0-9]+' || true)
    [[ $greatest && $(identify -format '%wx%h' "$actual") == "$size" ]] && ((greatest <= allowed))
}

exec {input}> >("$@" 2>"$log")
example=$!
until is_as_kept || ((SECONDS > 60)) || ! kill -0 "$example" 2>/dev/null; do
    if [[ " $* " != *" --output "* ]]; then
        import -silent -window root -crop "$size+0+0" +repage "$actual"
    fi
done
exec {input}>&-
exit_code=0
wait "$example" || exit_code=$?

if ! is_as_kept || ((exit_code != 0)); then
    cat "$log" >&2
    echo "$1: the exit code is $exit_code, the greatest difference $greatest of 65535; look at $actual and" \
        "$difference. If the picture is as it should be, accept it: cp $actual $kept" >&2
    exit 1
fi
