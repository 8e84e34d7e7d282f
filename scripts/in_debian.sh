#!/usr/bin/env bash
# in_debian.sh SUITE COMMAND [ARGUMENT]...
# Runs the command in a fresh clone of the last commit, inside a minimal Debian of that suite (bookworm, trixie, ...)
# that sees nothing of this machine's packages, and exits with its status. Needs root or sudo.
# The minimal system is kept for the next time, and so are the packages that were fetched, in $KIVGLES_DEBIAN_CACHE
# (~/.cache/kivgles unless said otherwise); each run gets a copy of its own. Runs in one suite follow one another. The
# mirror is the one that this machine's apt uses.
set -euo pipefail

fail() {
    echo "in_debian: $*" >&2
    exit 1
}

if (($# < 2)); then
    echo "usage: ${0##*/} SUITE COMMAND [ARGUMENT]..." >&2
    exit 2
fi
suite=$1
shift
cd "$(dirname "${BASH_SOURCE[0]}")/.."

home=~ # known where HOME is not
cache=$(realpath -m "${KIVGLES_DEBIAN_CACHE:-${XDG_CACHE_HOME:-$home/.cache}/kivgles}")
if ((EUID != 0)); then
    command -v sudo >/dev/null || fail "run this as root, or install sudo"
    exec sudo KIVGLES_DEBIAN_CACHE="$cache" "$PWD/scripts/in_debian.sh" "$suite" "$@"
fi

scripts/setup.sh debootstrap git

[[ $suite =~ ^[a-z]+$ && -e /usr/share/debootstrap/scripts/$suite ]] || fail "there is no Debian suite '$suite'"
# shellcheck disable=SC2016  # the variables are apt's
mirror=$(apt-get indextargets --format '$(ORIGIN) $(REPO_URI)' 'Created-By: Packages' |
    awk '$1 == "Debian" && !/security/ { print $2; exit }')
[[ -n $mirror ]] || fail "this machine's apt has no mirror of Debian"

mkdir -p "$cache"
exec {lock}>"$cache/$suite.lock"
flock --nonblock "$lock" || { echo "in_debian: waiting for another run in $suite" && flock "$lock"; }
rm -rf --one-file-system "$cache/$suite".run.* # of a run that was killed
system=$(mktemp -d "$cache/$suite.run.XXXXXX")
inner=

# What runs inside dies with the process that waits for it here, shortly after, and what is mounted inside is gone then.
clean_up() {
    if [[ -n $inner ]]; then
        kill -KILL "$inner" || true
        wait "$inner" || true
    fi 2>/dev/null
    rm -rf --one-file-system "$system" 2>/dev/null || { sleep 2 && rm -rf --one-file-system "$system"; }
}
trap clean_up EXIT
trap 'exit 130' INT
trap 'exit 143' TERM HUP

# contained COMMAND...: with processes and mounts of its own, which end with this script however it ends; waits in a way
# that a signal interrupts.
contained() {
    setpriv --pdeathsig KILL \
        unshare --mount --propagation private --pid --fork --kill-child --mount-proc "$@" </dev/null &
    inner=$!
    local status=0
    wait "$inner" || status=$?
    inner=
    return "$status"
}

base=$cache/$suite
if [[ ! -e $base ]]; then
    echo "in_debian: making a minimal $suite"
    contained debootstrap --variant=minbase "$suite" "$system/base" "$mirror" >"$system/log" 2>&1 ||
        fail "debootstrap could not make $suite: $(tail -n 1 "$system/log")"
    mv "$system/base" "$base"
fi

mkdir -p "$cache/$suite.packages/partial"
cp -a "$base" "$system/tree"
cp /etc/resolv.conf "$system/tree/etc/"
# It is thrown away: nothing waits for the disk.
echo force-unsafe-io >"$system/tree/etc/dpkg/dpkg.cfg.d/unsafe-io"
git clone -q --no-hardlinks . "$system/tree/srv/kivgles" 2>"$system/log" ||
    fail "git could not clone $PWD: $(head -n 1 "$system/log")"

# shellcheck disable=SC2016  # the variables are the inner shell's
contained bash -c '
    set -euo pipefail
    root=$1 packages=$2
    shift 2
    mount -t proc proc "$root/proc"
    mount --rbind /dev "$root/dev"
    mount --bind "$packages" "$root/var/cache/apt/archives"
    exec env --ignore-environment HOME=/root LANG=C.UTF-8 PATH=/usr/sbin:/usr/bin:/sbin:/bin \
        chroot "$root" bash -c "cd /srv/kivgles && exec \"\$@\"" in_debian "$@"
' in_debian "$system/tree" "$cache/$suite.packages" "$@"
