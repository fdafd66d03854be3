# Sourced by scripts that show windows on a virtual display. Call make_scratch first.
# shellcheck shell=bash

# start_display: starts a virtual X server and sets DISPLAY.
start_display() {
    Xvfb -displayfd 3 -screen 0 1280x800x24 -wr -nolisten tcp 3>"$scratch/display" 2>"$scratch/display.log" &
    background+=($!)
    wait_until 10 test -s "$scratch/display" || fail "the virtual display did not start"
    DISPLAY=:$(<"$scratch/display")
    export DISPLAY QT_QPA_PLATFORM=xcb
    unset WAYLAND_DISPLAY
}

# visible_window PID: prints the identifier of a visible window of the process. Returns false if there is none.
visible_window() {
    xdotool search --all --onlyvisible --pid "$1" 2>/dev/null | grep -m 1 .
}

# wait_for_window SECONDS PID: waits for a visible window and prints its identifier. Returns false on timeout or if the
# process has exited.
wait_for_window() {
    wait_until "$1" eval "! kill -0 $2 2>/dev/null || visible_window $2 >/dev/null"
    visible_window "$2"
}

# capture_window WINDOW FILE: saves a screenshot of the window once it is painted, that is, once it has at least eight
# colours and two consecutive screenshots are equal. A window that keeps changing is captured after 10 s. Returns false
# if the window remains blank.
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
