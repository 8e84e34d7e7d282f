#!/usr/bin/env bash
# coverage.sh [ARGUMENT OF CTEST]...
# Builds the preset "coverage", runs all tests and measures how much of src/ they reach. Fails below 95 % of the
# branches. The report, line by line, is build/coverage/report/index.html.
#
# Left out of the count are the branches that the compiler adds: those that leave a function by an exception, and
# those without a source line.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh tests gcovr

# Counts of former runs do not go into this one.
mkdir -p build/coverage
find build/coverage -name '*.gcda' -delete
scripts/test.sh --all coverage "$@"

mkdir -p build/coverage/report
gcovr --root . --object-directory build/coverage --filter src/ \
    --exclude-throw-branches --exclude-unreachable-branches \
    --txt --branches --html-details build/coverage/report/index.html \
    --print-summary --fail-under-branch 95
echo "coverage: build/coverage/report/index.html"
