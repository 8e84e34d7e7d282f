#!/usr/bin/env bash
# consume.sh WORK_FOLDER [OPTION OF CMAKE]...
# Builds the project outside and runs its programs, which end with their input, or with their window. It finds a library
# that the system has unless the options name another one.
set -euo pipefail
work=$1
shift

rm -rf "$work"
cmake -S "$(dirname "${BASH_SOURCE[0]}")" -B "$work" -G Ninja "$@"
cmake --build "$work"
for program in "$work"/minimal-*; do
    "$program" </dev/null
done
for program in "$work"/hello-*; do
    "$program" &
    while kill -0 $! 2>/dev/null; do
        xkill -id "$(xwininfo -name hello | grep -om1 '0x[0-9a-f]*')" &>/dev/null || sleep 0.2
    done
    wait $!
done
