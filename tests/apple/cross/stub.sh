#!/bin/sh
# stub.sh <library.so> <stub.tbd>
# Writes the exports of a library of this machine as a text stub of a macOS library.
set -eu
name=$(basename "$2" .tbd)
{
    printf -- "--- !tapi-tbd\ntbd-version: 4\ntargets: [ x86_64-macos ]\n"
    printf "install-name: '/usr/local/lib/%s.dylib'\nexports:\n  - targets: [ x86_64-macos ]\n    symbols: [\n" "$name"
    nm -D --defined-only "$1" | awk 'NF == 3 { sub(/@.*/, "", $3); print "      \x27_" $3 "\x27," }' | sort -u
    printf "    ]\n...\n"
} >"$2"
