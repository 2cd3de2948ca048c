# Shared by the scripts of this folder, which source it: moves to the top of the project, so that every script
# runs from any folder, and holds the few functions that more than one of them needs.
# shellcheck shell=bash

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$top" || exit 1

# say TEXT...: a heading for the next step, on standard error, so that results stay alone on standard output.
say() { printf '== %s\n' "$*" >&2; }

# fail TEXT...: the reason, then the end.
fail() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

# show_help: the comment at the head of the calling script, without its marks.
show_help() { sed -n '2,/^[^#]/s/^# \{0,1\}//p' "$0"; }

# configure_and_build PRESET [TARGET...]: configures again each time, which costs a second and follows every change
# of the preset.
configure_and_build() {
    local preset=$1
    shift
    say "Building ($preset)"
    cmake --preset "$preset" -Wno-dev --log-level=WARNING >/dev/null
    cmake --build --preset "$preset" --parallel "$(nproc)" ${1:+--target "$@"} >&2
}

# source_files [PATTERN...]: the C++ and Objective-C++ files of the project, new ones that are not yet in git too.
source_files() {
    local file
    git ls-files --cached --others --exclude-standard -- src tests demo bench |
        { grep -E "${1:-\.(h|cpp|mm)$}" || true; } | sort -u |
        while IFS= read -r file; do if [[ -f $file ]]; then printf '%s\n' "$file"; fi; done
}
