#!/usr/bin/env bash
# check_picture.sh KEPT FILE RESULTS COMMAND [ARGUMENT]...
# Runs an example and compares its picture with the file KEPT. The example writes it to FILE or, if that is "", shows
# it in the top-left corner of the screen until its standard input ends; there it is looked at until it is the kept
# one. Wants an X server of its own. A picture that differs is left in files whose names begin with RESULTS.
set -euo pipefail
kept=$1 file=$2 results=$3
shift 3
log=$results.log actual=$results-actual.png difference=$results-difference.png
size=$(identify -format '%wx%h' "$kept")
rm -f "$file" "$actual"

# Each pixel is the same with the GL that made the kept pictures, within 2 of 255 with another.
is_as_kept() {
    local allowed=0
    if grep 'GL Version = ' "$log" | grep -qv 'Mesa 22\.3\.6$'; then
        allowed=$((2 * 257))
    fi
    greatest=$(compare -metric PAE "$kept" "$actual" "$difference" 2>&1 | grep -oE '^[0-9]+' || true)
    [[ $greatest && $(identify -format '%wx%h' "$actual") == "$size" ]] && ((greatest <= allowed))
}

exit_code=0
if [[ $file ]]; then
    "$@" 2>"$log" || exit_code=$?
    cp "$file" "$actual" || true
else
    exec {input}> >("$@" 2>"$log")
    example=$!
    until
        import -silent -window root -crop "$size+0+0" +repage "$actual"
        is_as_kept || ((SECONDS > 60)) || ! kill -0 "$example" 2>/dev/null
    do
        :
    done
    exec {input}>&-
    wait "$example" || exit_code=$?
fi

if is_as_kept && ((exit_code == 0)); then
    echo "$results: as kept, the greatest difference is $greatest of 65535"
    exit
fi
cat "$log" >&2
echo "$results: the exit code is $exit_code, the greatest difference $greatest of 65535; look at $actual and" \
    "$difference. If the picture is as it should be, accept it: cp $actual $kept" >&2
exit 1
