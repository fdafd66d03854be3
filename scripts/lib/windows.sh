# Sourced, after packages.sh, build.sh and display.sh, by scripts that build for 32-bit Windows and run under Wine.
# shellcheck shell=bash

# shellcheck disable=SC2034
windows_packages=(cmake ninja-build g++-mingw-w64-i686-posix python3-cryptography-vectors xz-utils wine wine32:i386
    fonts-wine xvfb)

kit_folder=$root/build/windows-kit
readonly kit_folder

# require_windows_packages PACKAGE...: like require_packages, but supports 32-bit packages such as wine32. Their
# libraries must have the same versions as the installed 64-bit ones, which may have to be downgraded.
require_windows_packages() {
    local missing
    mapfile -t missing < <(missing_packages "$@")
    ((${#missing[@]})) || return 0
    { may_install && add_32bit_packages && install_packages "${missing[@]}"; } ||
        install_older "${missing[@]}" ||
        fail "these packages are missing, please install them: ${missing[*]}"
}

add_32bit_packages() {
    dpkg --print-foreign-architectures | grep -qx i386 || as_root dpkg --add-architecture i386
}

as_root() {
    if ((EUID == 0)); then "$@"; else sudo "$@"; fi
}

# install_older PACKAGE...: installs packages and allows apt to downgrade installed ones to the main release.
install_older() {
    local release pin=$log_dir/pin
    release=$(main_release)
    [[ -n $release ]] && may_install && may_downgrade || return
    printf 'Package: *\nPin: release o=Debian,l=Debian,n=%s\nPin-Priority: 1001\n' "$release" >"$pin"
    say "Installing $*, downgrading installed libraries where necessary"
    apt_install --allow-downgrades -o Dir::Etc::Preferences="$pin" "$@" >>"$log_dir/packages.log" 2>&1
}

# may_downgrade: asks the user. The answer is yes on a build server (CI is set) and no without a terminal.
may_downgrade() {
    local answer
    [[ -z ${CI:-} ]] || return 0
    [[ -t 0 ]] || return 1
    read -r -p "Downgrade installed packages? [y/N] " answer
    [[ $answer == [yY]* ]]
}

# use_windows_kit [PATH]: sets SKYLUME_WINDOWS_KIT to the folder with Qt for Windows. Uses the given folder or archive,
# else the one in SKYLUME_WINDOWS_KIT, else an archive in ../shared/windows-kit, else a kit that is built now.
use_windows_kit() {
    local kit=${1:-${SKYLUME_WINDOWS_KIT:-}} shared=(../shared/windows-kit/*.tar.xz)
    if [[ -z $kit && -f ${shared[0]} ]]; then kit=${shared[0]}; fi
    if [[ -z $kit ]]; then
        [[ -f $kit_folder/toolchain-win32.cmake ]] || scripts/build-windows-kit
        kit=$kit_folder
    fi
    [[ ! -f $kit ]] || unpack_kit "$kit"
    [[ -d $kit ]] || kit=$kit_folder
    [[ -f $kit/toolchain-win32.cmake ]] || fail "not a Windows kit: $kit"
    SKYLUME_WINDOWS_KIT=$(realpath "$kit")
    export SKYLUME_WINDOWS_KIT
}

# unpack_kit ARCHIVE: unpacks the archive to $kit_folder unless that was done before.
unpack_kit() {
    local origin
    origin=$(stat --format='%n %s %Y' "$(realpath "$1")")
    if [[ -f $kit_folder/unpacked-from && $(<"$kit_folder/unpacked-from") == "$origin" ]]; then return; fi
    say "Unpacking $1"
    rm -rf "$kit_folder"
    mkdir -p "$kit_folder"
    tar -C "$kit_folder" --strip-components=1 -xf "$1"
    echo "$origin" >"$kit_folder/unpacked-from"
}

# build_for_windows: builds everything in build/windows. Deletes a build made with another kit.
build_for_windows() {
    local cache=build/windows/CMakeCache.txt
    if [[ -f $cache ]] && ! grep -qF "=$SKYLUME_WINDOWS_KIT/toolchain-win32.cmake" "$cache"; then
        rm -rf build/windows
    fi
    build_preset windows -DSKYLUME_BUILD_TESTS=ON -DSKYLUME_BUILD_BENCHMARKS=OFF
}

# start_wine FOLDER: sets the Wine prefix to the folder and starts a virtual display. Wine and the display are stopped
# when the script exits.
start_wine() {
    export WINEPREFIX=$1 WINEARCH=win32 WINEDEBUG=-all LC_ALL=C.UTF-8
    export WINEDLLOVERRIDES='mscoree,mshtml=;winemenubuilder.exe=d' # otherwise Wine offers to download them
    trap 'end_wine; end_background' EXIT
    start_display
}

# hold_desktop PROGRAM: keeps Wine's desktop process running with a program that never exits. Otherwise the desktop
# ends a second after its last user, and the next test that needs it starts it with the test's own output pipe. ctest
# then waits for that pipe until no other test uses the desktop, which may exceed the time limit of the test.
hold_desktop() {
    "$SKYLUME_WINDOWS_KIT/run-under-wine.sh" "$1" </dev/null >/dev/null 2>&1 &
}

end_wine() {
    [[ ! -d $WINEPREFIX ]] || wineserver --kill || true # not running
}

# make_prefix: initialises a new Wine prefix; run-under-wine.sh in the kit does this itself. "Managed=N" disables the
# use of a window manager: there is none, and Wine would wait two seconds for it at every window. Wine's fonts must be
# linked into the prefix.
make_prefix() {
    say "Preparing Wine"
    mkdir -p "$WINEPREFIX"
    env -u DISPLAY wineboot --init >"$scratch/wineboot.log" 2>&1 ||
        fail "Wine failed to start: $(<"$scratch/wineboot.log")"
    wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null 2>&1
    wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f >/dev/null 2>&1
    wineserver --wait
    ln -sf /usr/share/wine/fonts/*.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
}
