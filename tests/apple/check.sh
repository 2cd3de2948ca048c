#!/bin/sh
# check.sh <compiler> <file of flags> <file of flags for the check> <sources...>
# Runs the compiler's checks on the sources in parallel, without output files.
set -eu
compiler=$1
flags=$2
check=$3
shift 3
if [ $# -eq 0 ]; then
    echo "no sources to check" >&2
    exit 1
fi
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
echo '#include <prefix.h>' >"$folder/prefix.h"
"$compiler" -x objective-c++-header "@$flags" "$folder/prefix.h" -o "$folder/prefix.pch"
printf '%s\0' "$@" |
    xargs -0 -n 1 -P "$(nproc)" "$compiler" -x objective-c++ "@$flags" "@$check" -include-pch "$folder/prefix.pch"
