# Sourced by the scripts that try the package on a Debian 12 of its own.
# shellcheck shell=bash

# try_as_root PROGRAM ARGUMENT...: runs a program as root, as the first process of its own mount and PID namespaces,
# with a new empty folder as first argument, and exits with its status. Everything that it starts or mounts, and the
# folder, disappear when it ends or we are interrupted.
try_as_root() {
    local program=$1 status=0
    shift
    as_root=()
    if [[ $EUID -ne 0 ]]; then
        as_root=(sudo)
        sudo true # prompts while we have the terminal
    fi
    work=$(mktemp -d)
    child=
    trap finish_trial EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM
    chmod 755 "$work" # ordinary users run programs in it
    mkfifo "$work/caller"
    # In the background with `wait`, so that signals reach the traps immediately.
    "${as_root[@]}" unshare --mount --pid --fork --mount-proc --kill-child=KILL \
        "$program" "$work" "$@" <"$work/caller" &
    child=$!
    exec 4>"$work/caller"
    wait "$child" || status=$?
    child=
    exit "$status"
}

# Closing the pipe ends all processes in the namespace, and its mounts are not visible out here: rm only sees the
# folder itself.
finish_trial() {
    exec 4>&-
    if [[ -n $child ]]; then wait "$child" || true; fi
    "${as_root[@]}" rm -rf --one-file-system "$work"
}
