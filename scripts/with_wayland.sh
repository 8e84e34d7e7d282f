#!/usr/bin/env bash
# with_wayland.sh sway|weston COMMAND [ARGUMENT]...
# Runs the command with a Wayland compositor of its own, which draws 800 by 600 pixels in memory, as its display
# ($SERVER_PID is its process), and exits with the command's status. On sway every window floats, without a
# frame, from the top-left corner on.
set -euo pipefail

if (($# < 2)); then
    echo "usage: ${0##*/} sway|weston COMMAND [ARGUMENT]..." >&2
    exit 2
fi
compositor=$1
shift

run=$(mktemp -d)
user=()
if ((EUID == 0)); then # whom sway refuses
    chown nobody "$run"
    user=(--reuid=nobody --regid=nogroup --clear-groups)
fi

# run_compositor COMMAND [ARGUMENT]...: in this process. --pdeathsig: it goes even if this script is killed.
run_compositor() {
    cd "$run"
    exec setpriv "${user[@]}" --pdeathsig TERM env -u DISPLAY -u WAYLAND_DISPLAY HOME="$run" XDG_RUNTIME_DIR="$run" \
        "$@" >"$run/log" 2>&1
}
case $compositor in
    sway)
        cat >"$run/config" <<'CONFIG'
xwayland disable
output HEADLESS-1 resolution 800x600 position 0,0
output HEADLESS-1 background #204060 solid_color
for_window [title=".*"] floating enable, border none, move absolute position 0 0
CONFIG
        run_compositor WLR_BACKENDS=headless WLR_LIBINPUT_NO_DEVICES=1 WLR_RENDERER=pixman \
            sway --config "$run/config" &
        ;;
    weston)
        options=(--backend=headless-backend.so --use-pixman)
        if weston --help | grep -q -e --renderer=; then
            options=(--backend=headless --renderer=pixman)
        fi
        run_compositor weston "${options[@]}" --width=800 --height=600 --idle-time=0 --socket=wayland-1 --no-config &
        ;;
    *) echo "${0##*/}: no such compositor: $compositor" >&2 && exit 2 ;;
esac
server=$!
stop_server() {
    kill "$server" 2>/dev/null || true
    wait "$server" 2>/dev/null || true
    rm -rf "$run"
}
trap stop_server EXIT

socket() { find "$run" -type s -name "$1" -print -quit; }
until [[ -n $(socket 'wayland-?') ]]; do
    if ((SECONDS > 60)) || ! kill -0 "$server" 2>/dev/null; then
        echo "${0##*/}: $compositor did not start" >&2
        cat "$run/log" >&2
        exit 1
    fi
    sleep 0.1
done
XDG_RUNTIME_DIR=$run WAYLAND_DISPLAY=$(basename "$(socket 'wayland-?')") SWAYSOCK=$(socket 'sway-ipc.*') \
    SERVER_PID=$server "$@"
