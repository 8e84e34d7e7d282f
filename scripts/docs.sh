#!/usr/bin/env bash
# docs.sh
# Installs what is missing and writes the reference of the public headers to build/docs/index.html. Anything that
# a client can see and that is not described in full is an error.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/setup.sh

KIVGLES_VERSION=$(sed -n 's/^ *VERSION \([0-9.]*\)$/\1/p' CMakeLists.txt)
export KIVGLES_VERSION
mkdir -p build/docs
doxygen docs/Doxyfile
echo "docs: build/docs/index.html"
