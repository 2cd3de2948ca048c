# Sourced by the scripts of this folder: changes to the top of the project, so that every script runs from any folder,
# and defines shared functions. shellcheck shell=bash

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$top" || exit 1

# say TEXT...: prints a heading for the next step to standard error; standard output carries only results.
say() { printf '== %s\n' "$*" >&2; }

# fail TEXT...: prints the reason and exits.
fail() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

is_mac() { [[ $(uname) == Darwin ]]; }

# debian_only: fails on a Mac with a hint; for what is about Debian or its virtual displays.
debian_only() {
    if is_mac; then fail "needs Debian; docs/packaging-macos.md describes packages for a Mac"; fi
}

# show_help: prints the comment at the top of the calling script.
show_help() { sed -n '2,/^[^#]/s/^# \{0,1\}//p' "$0"; }

# configure_and_build PRESET [TARGET...]: reconfigures each time, which takes a second and picks up changes of the
# preset.
configure_and_build() {
    local preset=$1
    shift
    say "Building ($preset)"
    cmake --preset "$preset" -Wno-dev --log-level=WARNING >/dev/null
    cmake --build --preset "$preset" --parallel "$(nproc)" ${1:+--target "$@"} >&2
}

# source_files [PATTERN...]: the C++ and Objective-C++ files of the project, including untracked ones.
source_files() {
    local file
    git ls-files --cached --others --exclude-standard -- src tests demo bench fuzz |
        { grep -E "${1:-\.(h|cpp|mm)$}" || true; } | sort -u |
        while IFS= read -r file; do if [[ -f $file ]]; then printf '%s\n' "$file"; fi; done
}
