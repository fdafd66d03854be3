# Sourced by every script: changes to the root of the repository and defines helper functions.
# shellcheck shell=bash

# Paths in command-line arguments are relative to the caller's folder; see caller_path.
caller_dir=$PWD
script=$(realpath "$0")
cd "$(dirname "${BASH_SOURCE[0]}")/../.." || exit
root=$PWD
log_dir=$root/build/logs
readonly caller_dir script root log_dir

# say TEXT: prints a progress message.
say() {
    if [[ -t 1 ]]; then printf '\033[1m==> %s\033[0m\n' "$1"; else printf '==> %s\n' "$1"; fi
}

# fail TEXT: prints an error message and exits with status 1.
fail() {
    printf '%s: %s\n' "$(basename "$script")" "$1" >&2
    exit 1
}

# show_help: prints the comment at the start of the running script.
show_help() {
    sed -n '2,/^[^#]/{/^#/s/^# \{0,1\}//p}' "$script"
}

# need_value OPTION [VALUE]...: exits with an error if the option has no value.
need_value() {
    (($# > 1)) || fail "$1 needs a value, see --help"
}

# caller_path FILE: prints the absolute path of FILE, which is relative to the caller's folder.
caller_path() {
    (cd "$caller_dir" && realpath --canonicalize-missing "$1")
}

# wait_until SECONDS COMMAND...: runs the command every 0.1 s until it succeeds. Returns false on timeout.
wait_until() {
    local tries=$(($1 * 10))
    shift
    until "$@"; do
        ((tries-- > 0)) || return 1
        sleep 0.1
    done
}

# make_scratch: creates the temporary folder $scratch. When the script exits, end_background is called.
make_scratch() {
    scratch=$(mktemp -d)
    background=()
    trap end_background EXIT
}

# end_background: terminates the processes listed in $background, the latest first, and deletes $scratch.
end_background() {
    local i
    for ((i = ${#background[@]} - 1; i >= 0; i--)); do
        kill "${background[i]}" 2>/dev/null || continue
        wait "${background[i]}" 2>/dev/null || true
    done
    rm -rf "$scratch"
}
