#!/usr/bin/env bash
# format.sh [--check]
# Formats every C++ source of the project; with --check changes nothing, and fails if a source would change.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh

action=(-i)
if [[ ${1:-} == --check ]]; then
    action=(--dry-run -Werror)
fi

# Tracked files and new ones, but not those deleted.
git ls-files -z --cached --others --exclude-standard -- '*.h' '*.cpp' |
    while IFS= read -r -d '' source; do
        [[ ! -e $source ]] || printf '%s\0' "$source"
    done |
    xargs -0 clang-format "${action[@]}"
echo "format: done"
