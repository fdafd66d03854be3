# Sourced by scripts that need packages of the system. Names are those of Debian and its relatives.
# shellcheck shell=bash

# What each kind of work needs. Used by the scripts that source this file.
# shellcheck disable=SC2034
{
    build_packages=(cmake ninja-build g++ qtbase5-dev libicu-dev)
    test_packages=(python3-cryptography-vectors) # published test vectors
    benchmark_packages=(libbenchmark-dev libglib2.0-dev libssl-dev libgcrypt20-dev nettle-dev libkf5coreaddons-dev
        pkg-config python3 qt6-l10n-tools)
    screenshot_packages=(xvfb xdotool imagemagick)
    format_packages=(clang-format shellcheck libxml2-utils)
    tidy_packages=(clang-tidy)
}

# require_packages PACKAGE...: installs those that are missing, or ends the script with their names.
require_packages() {
    local missing
    mapfile -t missing < <(missing_packages "$@")
    ((${#missing[@]})) || return 0
    install_packages "${missing[@]}" || fail "these packages are missing, please install them: ${missing[*]}"
}

# prefer_packages PACKAGE...: installs those that are missing if that is possible; the work goes on without them.
prefer_packages() {
    local missing
    mapfile -t missing < <(missing_packages "$@")
    ((${#missing[@]})) || return 0
    install_packages "${missing[@]}" || say "Going on without ${missing[*]}"
}

# missing_packages PACKAGE...: those that are not installed, one a line; none where there is no dpkg to ask.
missing_packages() {
    local package
    command -v dpkg-query >/dev/null || return 0
    for package; do
        dpkg-query -W -f='${db:Status-Status}\n' "$package" 2>/dev/null | grep -qx installed || echo "$package"
    done
}

# install_packages PACKAGE...: false when apt-get is not there, not allowed or not successful.
install_packages() {
    local log=$log_dir/packages.log release
    may_install || return 1
    mkdir -p "$log_dir"
    say "Installing $*"
    apt_get update >"$log" 2>&1 || true # an index that could not be fetched is no loss if the others suffice
    release=$(main_release)
    if [[ -n $release ]] && apt_install -t "$release" "$@" >>"$log" 2>&1; then return 0; fi
    if apt_install "$@" >>"$log" 2>&1; then return 0; fi
    echo "apt-get failed; the whole of what it said is in build/logs/packages.log:" >&2
    sed -n '/^[EW]:/{s#[a-z]*://[^ ]*#(a mirror)#g;s# *\[IP: [^]]*\]##g;p}' "$log" | tail -n 5 >&2
    return 1
}

apt_install() {
    apt_get install --no-install-recommends "$@"
}

may_install() {
    command -v apt-get >/dev/null && { ((EUID == 0)) || command -v sudo >/dev/null; }
}

apt_get() {
    local as_root=()
    ((EUID == 0)) || as_root=(sudo)
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -y -o DPkg::Lock::Timeout=300 "$@"
}

# main_release: the code name of Debian's release; nothing elsewhere. Packages come from the release itself where
# they can, not from its updates: the 32-bit twins that the Windows tests need must have the same version.
main_release() {
    (
        . /etc/os-release
        [[ ${ID:-} != debian ]] || echo "${VERSION_CODENAME:-}"
    )
}
