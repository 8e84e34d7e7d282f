#!/usr/bin/env bash
# with_xvfb.sh COMMAND [ARGUMENT]...
# Runs the command with a virtual X server of its own as its display ($SERVER_PID is its process), and exits with the
# command's status.
set -euo pipefail

if (($# == 0)); then
    echo "usage: ${0##*/} COMMAND [ARGUMENT]..." >&2
    exit 2
fi

log=$(mktemp)

# The server picks a free display number and writes it to the pipe when it is ready for clients.
# -noreset: it stays as it is when its last client leaves. --pdeathsig: it goes even if this script is killed.
exec {number_pipe}< <(
    exec setpriv --pdeathsig TERM \
        Xvfb -displayfd 1 -noreset -nolisten tcp -screen 0 1920x1200x24 2>"$log"
)
server=$!
stop_server() {
    kill "$server" 2>/dev/null || true
    wait "$server" 2>/dev/null || true
    rm -f "$log"
}
trap stop_server EXIT

if ! read -r -t 60 number <&"$number_pipe"; then
    echo "${0##*/}: the virtual X server did not start" >&2
    cat "$log" >&2
    exit 1
fi
DISPLAY=:$number SERVER_PID=$server "$@"
