#!/bin/sh
# usage: run-under-wine.sh PROGRAM.EXE [ARGUMENT]...
#
# Runs a program under Wine with the libraries and Qt plugins of the kit that contains this file. Used by ctest.
#
#   WINEPREFIX   the Wine prefix, created if it does not exist (default: ~/.wine-skylume)
#   DISPLAY      the display to use; if it is unset, programs run one at a time, each on its own virtual display
#   WINEQT_...   passed to the program as QT_...; Wine hides variables whose names begin with QT_
set -eu

kit=$(dirname "$(readlink -f "$0")")
: "${WINEPREFIX:=$HOME/.wine-skylume}"
: "${WINEDEBUG:=-all}"
export WINEPREFIX WINEDEBUG WINEARCH=win32
export WINEDLLOVERRIDES='mscoree,mshtml=;winemenubuilder.exe=d' # otherwise Wine offers to download them
export WINEPATH="Z:$kit/bin${WINEPATH:+;$WINEPATH}"
export WINEQT_PLUGIN_PATH="Z:$kit/plugins${WINEQT_PLUGIN_PATH:+;$WINEQT_PLUGIN_PATH}"
export WINEQT_FORCE_STDERR_LOGGING="${WINEQT_FORCE_STDERR_LOGGING:-1}" # Qt does not detect a console under Wine

# Initialises the Wine prefix. "Managed=N" disables the use of a window manager: there is none, and Wine would wait two
# seconds for it at every window. "ShowCrashDialog=0" ends a crashed program without a dialog. Wine's fonts must be
# linked into the prefix.
make_prefix() {
    mkdir -p "$WINEPREFIX"
    env -u DISPLAY wineboot --init
    wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f
    wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f
    wineserver --wait
    ln -sf /usr/share/wine/fonts/*.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
    cp "$kit/alsa-null.conf" "$WINEPREFIX/" # ALSA cannot read paths with spaces, which the kit's path may contain
    : >"$WINEPREFIX/.kit-ready"
}

mkdir -p "$(dirname "$WINEPREFIX")"
exec 9>"$WINEPREFIX.lock"
if [ ! -e "$WINEPREFIX/.kit-ready" ]; then
    flock 9
    [ -e "$WINEPREFIX/.kit-ready" ] || make_prefix </dev/null >/dev/null 2>&1 9>&-
    flock -u 9
fi

# Without a sound device, use ALSA's null device.
if [ -z "${PULSE_SERVER-}${ALSA_CONFIG_PATH-}" ] && ! ls /dev/snd/pcm*p >/dev/null 2>&1; then
    export ALSA_CONFIG_PATH="$WINEPREFIX/alsa-null.conf"
fi

# Wine's server processes must not keep the program's output open after it exits, so they are started first, with their
# output redirected. On a virtual display the script waits for them, because the display ends with the script.
if [ -n "${DISPLAY-}" ]; then
    wine rundll32.exe user32.dll,GetDesktopWindow </dev/null >/dev/null 2>&1 9>&-
    exec wine "$@" 9>&-
fi
flock 9
# shellcheck disable=SC2016
exec xvfb-run -a sh -c 'wine "$@" && status=0 || status=$?; wineserver --wait; exit $status' sh "$@" 9>&-
