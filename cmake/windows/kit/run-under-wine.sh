#!/bin/sh
# usage: run-under-wine.sh PROGRAM.EXE [ARGUMENT]...
#
# Runs a program under Wine with the libraries and Qt plugins of the kit that this file lies in; ctest uses it.
#
#   WINEPREFIX   Wine's folder, made when it is not there (default: ~/.wine-skylume)
#   DISPLAY      where windows go; while it is unset each program gets a display of its own, one at a time
#   WINEQT_...   what the program shall see as QT_...: Wine hides variables with that name
set -eu

kit=$(dirname "$(readlink -f "$0")")
: "${WINEPREFIX:=$HOME/.wine-skylume}"
: "${WINEDEBUG:=-all}"
export WINEPREFIX WINEDEBUG WINEARCH=win32
export WINEDLLOVERRIDES='mscoree,mshtml=;winemenubuilder.exe=d' # else Wine offers to download them
export WINEPATH="Z:$kit/bin${WINEPATH:+;$WINEPATH}"
export WINEQT_PLUGIN_PATH="Z:$kit/plugins${WINEQT_PLUGIN_PATH:+;$WINEQT_PLUGIN_PATH}"
export WINEQT_FORCE_STDERR_LOGGING="${WINEQT_FORCE_STDERR_LOGGING:-1}" # Qt sees no console under Wine

# Without a window manager Wine waits two seconds for every window, unless it is told that there is none. A program
# that crashes ends, no dialog waits for a click. Wine's own fonts have to be put where it looks for them.
make_prefix() {
    mkdir -p "$WINEPREFIX"
    env -u DISPLAY wineboot --init
    wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f
    wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f
    wineserver --wait
    ln -sf /usr/share/wine/fonts/*.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
    cp "$kit/alsa-null.conf" "$WINEPREFIX/" # ALSA cannot read names with a blank, as the kit's may be
    : >"$WINEPREFIX/.kit-ready"
}

mkdir -p "$(dirname "$WINEPREFIX")"
exec 9>"$WINEPREFIX.lock"
if [ ! -e "$WINEPREFIX/.kit-ready" ]; then
    flock 9
    [ -e "$WINEPREFIX/.kit-ready" ] || make_prefix </dev/null >/dev/null 2>&1 9>&-
    flock -u 9
fi

# Sounds need a device; ALSA has one that plays nowhere.
if [ -z "${PULSE_SERVER-}${ALSA_CONFIG_PATH-}" ] && ! ls /dev/snd/pcm*p >/dev/null 2>&1; then
    export ALSA_CONFIG_PATH="$WINEPREFIX/alsa-null.conf"
fi

# Wine's own processes must not keep the program's output open after its end, so they are started before it. On a
# display of its own it has to wait for them: they would outlive the display.
if [ -n "${DISPLAY-}" ]; then
    wine rundll32.exe user32.dll,GetDesktopWindow </dev/null >/dev/null 2>&1 9>&-
    exec wine "$@" 9>&-
fi
flock 9
# shellcheck disable=SC2016
exec xvfb-run -a sh -c 'wine "$@" && status=0 || status=$?; wineserver --wait; exit $status' sh "$@" 9>&-
