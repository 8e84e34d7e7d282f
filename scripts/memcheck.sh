#!/usr/bin/env bash
# memcheck.sh
# Runs the tests that need no GL under valgrind, which sees what the sanitizers do not: bytes used before they are set.
# Any finding is an error, and so is a byte that is not freed.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh tests valgrind

echo "memcheck: building"
cmake --preset debug -B build/memcheck
cmake --build build/memcheck --target BoundsCheckedTest LogTest ArithmeticTest SurfaceTest RacesTest

# PROGRAM TESTS
check() {
    echo "memcheck: $1 $2"
    DISPLAY='' valgrind --quiet --leak-check=full --errors-for-leak-kinds=definite,indirect,possible \
        --error-exitcode=1 "build/memcheck/tests/$1" --gtest_brief=1 --gtest_filter="$2"
}
check BoundsCheckedTest '*'
check LogTest '*'
check ArithmeticTest '*'
check SurfaceTest 'Conversions.*'
RACE_LIVES=1 check RacesTest 'Races.*'
echo "memcheck: no findings"
