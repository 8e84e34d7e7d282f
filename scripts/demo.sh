#!/usr/bin/env bash
# demo.sh [OPTION OF osd_demo]...
# Installs what is missing, builds the demo and runs it, in a window on the display if there is one and under a
# virtual X server otherwise. The demo says where its picture is: osd.png, or what --output names.
set -euo pipefail
root=$(realpath "$(dirname "${BASH_SOURCE[0]}")/..")

"$root/scripts/setup.sh" demo

echo "demo: building"
(
    cd "$root"
    cmake --preset release -B build/demo -DKIVGLES_BUILD_KIT=OFF -DKIVGLES_BUILD_TESTS=OFF
    cmake --build build/demo --target osd_demo
)

# What is an error, not GL's version or a framebuffer that is complete. Set empty it lets every line through.
export ANDROID_LOG_TAGS="${ANDROID_LOG_TAGS-EGLManager:s FBOManager:s *:e}"

demo=("$root/build/demo/examples/osd_demo/osd_demo" "$@")
if xdpyinfo >/dev/null 2>&1; then
    echo "demo: running on display $DISPLAY"
    exec "${demo[@]}"
else
    echo "demo: no display, running under a virtual X server"
    exec "$root/scripts/with_xvfb.sh" "${demo[@]}"
fi
