# shellcheck shell=bash
# Sourced by the scripts beside it: strict mode, the source root as the working folder, and headings.

set -euo pipefail
cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.."

heading() {
    printf '\n== %s ==\n' "$*"
}

# For scripts that take no arguments: one that is given is a mistake, and ignoring it would hide that.
expect_no_arguments() {
    if (($#)); then
        echo "usage: scripts/$(basename -- "$0"), without arguments" >&2
        exit 2
    fi
}

# Files of the given name patterns, zero-terminated and sorted, without what builds made. Fails when there are none. Needs
# no git, so that an unpacked archive will do.
find_sources() {
    local names=() pattern
    for pattern in "$@"; do
        names+=(-o -name "$pattern")
    done
    find . \( -path ./.git -o -path ./build -o -name node_modules \) -prune -o -type f \( "${names[@]:1}" \) -print0 | sort -z |
        { grep -z . || { echo "No files are named ${names[*]:1}." >&2 && false; }; }
}
