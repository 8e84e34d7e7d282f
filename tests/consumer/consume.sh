#!/usr/bin/env bash
# consume.sh WORK_FOLDER [OPTION OF CMAKE]...
# Builds the project outside and runs its programs, which end with their input, or when a user closes their window. It
# finds a library that the system has unless the options name another one.
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
        "$work/user" hello 2>/dev/null || sleep 0.2 # a window that is just being made does not hear of it
    done
    wait $!
done
