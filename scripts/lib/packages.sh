# Sourced by scripts that need system packages. The names are those of Debian and its derivatives.
# shellcheck shell=bash

# The packages for each kind of work, used by the scripts that source this file.
# shellcheck disable=SC2034
{
    build_packages=(cmake ninja-build g++ qtbase5-dev libicu-dev libcanberra-dev
        modemmanager-dev network-manager-dev) # descriptions of D-Bus interfaces
    # Published test vectors; xmllint; a sound server; ModemManager and a bus for it; stand-ins for other services; a
    # display with a window manager and a notification area, and input; the font of stored pictures.
    test_packages=(python3-cryptography-vectors libxml2-utils pulseaudio pulseaudio-utils libcanberra-pulse
        modemmanager dbus python3-dbusmock xvfb openbox trayer xdotool fonts-dejavu-core)
    benchmark_packages=(libbenchmark-dev libglib2.0-dev libssl-dev libgcrypt20-dev nettle-dev libkf5coreaddons-dev
        libkf5xmlgui-dev qttools5-dev pkg-config python3 qt6-l10n-tools modemmanager dbus python3-dbusmock)
    screenshot_packages=(xvfb xdotool imagemagick)
    format_packages=(clang-format shellcheck libxml2-utils)
    tidy_packages=(clang-tidy)
}

# require_packages PACKAGE...: installs missing packages, or exits with an error that lists them.
require_packages() {
    local missing
    mapfile -t missing < <(missing_packages "$@")
    ((${#missing[@]})) || return 0
    install_packages "${missing[@]}" || fail "these packages are missing, please install them: ${missing[*]}"
}

# prefer_packages PACKAGE...: installs missing packages if possible; continues without them otherwise.
prefer_packages() {
    local missing
    mapfile -t missing < <(missing_packages "$@")
    ((${#missing[@]})) || return 0
    install_packages "${missing[@]}" || say "Continuing without ${missing[*]}"
}

# missing_packages PACKAGE...: prints the packages that are not installed, one per line; nothing if there is no dpkg.
missing_packages() {
    local package
    command -v dpkg-query >/dev/null || return 0
    for package; do
        dpkg-query -W -f='${db:Status-Status}\n' "$package" 2>/dev/null | grep -qx installed || echo "$package"
    done
}

# install_packages PACKAGE...: returns false if apt-get is unavailable, is not permitted or fails.
install_packages() {
    local log=$log_dir/packages.log release
    may_install || return 1
    mkdir -p "$log_dir"
    say "Installing $*"
    apt_get update >"$log" 2>&1 || true # some indexes may be unavailable; the installation fails if one was needed
    release=$(main_release)
    if [[ -n $release ]] && apt_install -t "$release" "$@" >>"$log" 2>&1; then return 0; fi
    if apt_install "$@" >>"$log" 2>&1; then return 0; fi
    echo "apt-get failed; its full output is in build/logs/packages.log:" >&2
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

# main_release: prints the code name of the Debian release; nothing on other systems. Packages are installed from the
# release itself if possible, not from its updates: the 32-bit packages that the Windows tests need must have the same
# versions as the 64-bit ones.
main_release() {
    (
        . /etc/os-release
        [[ ${ID:-} != debian ]] || echo "${VERSION_CODENAME:-}"
    )
}
