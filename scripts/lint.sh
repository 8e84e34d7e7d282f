#!/usr/bin/env bash
# lint.sh
# Checks the sources and headers of library, kit and window with clang-tidy (what .clang-tidy names) and cppcheck. Any
# finding is an error.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh

echo "lint: cppcheck"
options=(
    "--enable=warning,style,performance,portability"
    --std=c++17 --quiet --error-exitcode=1
    # What GL, FreeType and the standard library are is not looked up.
    --suppress=missingIncludeSystem
    # All handlers of commands take them alike.
    --suppress=constParameter:src/drawthread/GLDrawThread.cpp
    # It does not see that glGetShaderiv writes through the pointer.
    --suppress=knownConditionTrueFalse:src/gl/ShaderProgram.cpp
)
cppcheck "${options[@]}" -j "$(nproc)" -Iinclude -Isrc -Iplatform/include include src platform/src
cppcheck "${options[@]}" --suppress=noExplicitConstructor:kit/include/kivgles/kit/Geometry.h \
    -j "$(nproc)" -Iinclude -Ikit/include -Ikit/src kit
cppcheck "${options[@]}" -j "$(nproc)" -Iinclude -Iwindow/include window

echo "lint: clang-tidy"
cmake --preset debug >/dev/null
log=$(mktemp)
trap 'rm -f "$log"' EXIT
if ! run-clang-tidy -quiet -p build/debug -j "$(nproc)" "^$PWD/(src|platform/src|kit/src|window/src)/" >"$log" 2>&1; then
    cat "$log" >&2
    exit 1
fi
echo "lint: no findings"
