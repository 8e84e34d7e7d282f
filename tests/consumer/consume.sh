#!/usr/bin/env bash
# consume.sh WORK_FOLDER [OPTION OF CMAKE]...
# Builds the project outside and runs its programs, which end with their input. It finds a library that the system has
# unless the options name another one.
set -euo pipefail
work=$1
shift

rm -rf "$work"
cmake -S "$(dirname "${BASH_SOURCE[0]}")" -B "$work" -G Ninja "$@"
cmake --build "$work"
for program in "$work"/{minimal,hello}-*; do
    "$program" </dev/null
done
