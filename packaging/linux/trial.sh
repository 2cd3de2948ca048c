# Sourced by the programs that try the package as root on a Debian 12 of their own; they set `work`, an empty folder.
# shellcheck shell=bash disable=SC2034,SC2154

# first_process ARGUMENT...: called with the script's own arguments before anything else. The first process of a PID
# namespace takes all others with it. It exits when the work is done or the caller, who keeps our input open, is gone.
first_process() {
    local ended=0
    [[ $$ -eq 1 ]] || return 0
    exec 3<&0
    { cat <&3 >/dev/null; exit 130; } &
    "$0" "$@" 3<&- </dev/null &
    wait -n || ended=$?
    exit "$ended"
}

suite=bookworm
failures=0
status=0
export DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8

# check TEXT FUNCTION...: runs the function up to the first failing command and reports the result, with its output if
# it failed. Never call it in a condition, where `set -e` has no effect.
check() {
    local text=$1
    shift
    set +e
    (set -euo pipefail; "$@") >"$work/log" 2>&1
    status=$?
    set -e
    if [[ $status -eq 0 ]]; then
        printf 'ok      %s\n' "$text"
    else
        failures=$((failures + 1))
        printf 'FAILED  %s (status %s)\n' "$text" "$status"
        sed 's/^/        | /' "$work/log"
    fi
}
# needed TEXT FUNCTION...: the same for a step that all others depend on.
needed() {
    check "$@"
    [[ $status -eq 0 ]] || { echo "Given up: nothing further can be tried"; exit 1; }
}
# no COMMAND...: fails if the command succeeds; `!` would not trigger `set -e`.
no() { if "$@"; then return 1; fi; }
# await COMMAND...: retries for up to 30 seconds.
await() {
    local tries
    for ((tries = 0; tries < 300; ++tries)); do
        if "$@"; then return 0; fi
        sleep 0.1
    done
    echo "waited in vain: $*"
    return 1
}

# in_root FOLDER COMMAND...: runs in the system of that folder as root, with a clean environment.
in_root() {
    chroot "$1" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive "${@:2}"
}

# The mirrors of this machine, one line each: address, suite.
mirrors() {
    # shellcheck disable=SC2016
    apt-get indextargets --format '$(REPO_URI) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' |
        awk -v suite="$suite" '$3 == "main" && ($2 == suite || index($2, suite "-") == 1) { print $1, $2 }' | sort -u
}
# make_system FOLDER [OPTION...]: a minimal Debian 12, with options for debootstrap.
make_system() {
    local mirror
    mirror=$(mirrors | awk -v suite="$suite" '$2 == suite { print $1; exit }')
    [[ -n $mirror ]] || { echo "apt of this machine knows no mirror of Debian 12 ($suite)"; return 1; }
    debootstrap --variant=minbase "${@:2}" "$suite" "$1" "$mirror"
}
# update_system FOLDER: brings it up to date; from then on its apt works like that of this machine.
update_system() {
    mirrors | while read -r mirror release; do echo "deb $mirror $release main"; done >"$1/etc/apt/sources.list"
    # Such as a proxy.
    apt-config dump | { grep '^Acquire::https\?::' || true; } >"$1/etc/apt/apt.conf.d/90machine"
    cp -L /etc/resolv.conf "$1/etc/resolv.conf"
    printf '#!/bin/sh\nexit 101\n' >"$1/usr/sbin/policy-rc.d" # no services are started on installation
    chmod 755 "$1/usr/sbin/policy-rc.d"
    in_root "$1" apt-get update -q
    in_root "$1" apt-get dist-upgrade -q -y
}
# mount_devices FOLDER
mount_devices() {
    local name
    mount -t proc proc "$1/proc"
    mount -t tmpfs -o mode=755 devices "$1/dev"
    for name in null zero full random urandom; do
        touch "$1/dev/$name"
        mount --bind "/dev/$name" "$1/dev/$name"
    done
    ln -s /proc/self/fd "$1/dev/fd"
    mkdir "$1/dev/shm"
    mount -t tmpfs -o mode=1777 shared "$1/dev/shm"
}
