# Sourced by every script: where the tree is, where the caller was, and how output looks.
# shellcheck shell=bash

# Paths in the caller's arguments are relative to where the caller stands, ours to the root of the tree.
caller_dir=$PWD
script=$(realpath "$0")
cd "$(dirname "${BASH_SOURCE[0]}")/../.." || exit
root=$PWD
log_dir=$root/build/logs
readonly caller_dir script root log_dir

# say TEXT: announces the next step.
say() {
    if [[ -t 1 ]]; then printf '\033[1m==> %s\033[0m\n' "$1"; else printf '==> %s\n' "$1"; fi
}

# fail TEXT: ends the script with an error.
fail() {
    printf '%s: %s\n' "$(basename "$script")" "$1" >&2
    exit 1
}

# show_help: prints the comment at the head of the running script.
show_help() {
    sed -n '2,/^[^#]/{/^#/s/^# \{0,1\}//p}' "$script"
}

# need_value OPTION [VALUE]...: ends the script when nothing follows an option that needs a value.
need_value() {
    (($# > 1)) || fail "$1 needs a value, see --help"
}

# caller_path FILE: FILE as an absolute path, seen from where the caller stands.
caller_path() {
    (cd "$caller_dir" && realpath --canonicalize-missing "$1")
}

# wait_until SECONDS COMMAND...: runs the command every 0.1 s until it succeeds; false when the time is over.
wait_until() {
    local tries=$(($1 * 10))
    shift
    until "$@"; do
        ((tries-- > 0)) || return 1
        sleep 0.1
    done
}

# make_scratch: makes the folder $scratch, which end_background removes.
make_scratch() {
    scratch=$(mktemp -d)
    background=()
    trap end_background EXIT
}

# end_background: ends the processes listed in $background, the latest first, and removes $scratch.
end_background() {
    local i
    for ((i = ${#background[@]} - 1; i >= 0; i--)); do
        kill "${background[i]}" 2>/dev/null || continue
        wait "${background[i]}" 2>/dev/null || true
    done
    rm -rf "$scratch"
}
