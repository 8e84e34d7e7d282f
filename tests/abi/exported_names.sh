#!/usr/bin/env bash
# exported_names.sh LIBRARY
# Prints what the shared library exports, as C++ names, one a line; the same for every C++ library it is built with.
set -euo pipefail

llvm-nm --dynamic --defined-only --just-symbol-name --demangle "$1" |
    sed -E 's/std::__[a-z0-9]+::/std::/g; s/> >/>>/g; s/@.*//' | LC_ALL=C sort
