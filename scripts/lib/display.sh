# Sourced by scripts that show windows on a display of their own. They call make_scratch first.
# shellcheck shell=bash

# start_display: starts an X server without a screen and points DISPLAY to it.
start_display() {
    Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3>"$scratch/display" 2>"$scratch/display.log" &
    background+=($!)
    wait_until 10 test -s "$scratch/display" || fail "the virtual display did not start"
    DISPLAY=:$(<"$scratch/display")
    export DISPLAY QT_QPA_PLATFORM=xcb
    unset WAYLAND_DISPLAY
}

# visible_window PID: number of a visible window of that process; false when there is none.
visible_window() {
    xdotool search --all --onlyvisible --pid "$1" 2>/dev/null | grep -m 1 .
}

# wait_for_window SECONDS PID: as visible_window, as soon as there is one; false when the time is over or the process
# has ended.
wait_for_window() {
    wait_until "$1" eval "! kill -0 $2 2>/dev/null || visible_window $2 >/dev/null"
    visible_window "$2"
}

# capture_window WINDOW FILE: a picture of the window once it is painted, which is when it shows more than a few
# colours and two pictures in a row are alike. A window that never rests is taken as it is after 10 s.
capture_window() {
    local before='' now colours tries
    for ((tries = 0; tries < 20; tries++)); do
        import -silent -window "$1" "png:$2"
        now=$(identify -format '%# %k' "$2")
        colours=${now#* }
        ((colours < 8)) || [[ $now != "$before" ]] || return 0
        before=$now
        sleep 0.5
    done
    ((colours >= 8))
}
