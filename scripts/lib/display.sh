# shellcheck shell=bash
# A virtual display with a window manager, so that windows get focus, titles and sizes as on a real one.

hasDisplay() {
    [[ -n ${DISPLAY:-} || -n ${WAYLAND_DISPLAY:-} ]]
}

# startVirtualDisplay DIRECTORY [WIDTHxHEIGHT]: starts X server and window manager, with logs in DIRECTORY, and exports
# DISPLAY. Both end with the script.
startVirtualDisplay() {
    local directory=$1 size=${2:-1280x900} number
    mkdir -p "$directory"
    unset WAYLAND_DISPLAY XDG_SESSION_TYPE QT_QPA_PLATFORM
    : >"$directory/display-number"
    Xvfb -displayfd 3 -screen 0 "${size}x24" -nolisten tcp 3>"$directory/display-number" >"$directory/xvfb.log" 2>&1 &
    atExit stopProcess $!
    if ! waitUntil 60 test -s "$directory/display-number"; then
        cat "$directory/xvfb.log" >&2
        fail "the virtual display did not start"
    fi
    number=$(<"$directory/display-number")
    export DISPLAY=:$number
    atExit stopWindowManager
    # Retries a window manager that starts too slowly on a busy machine, or that crashed.
    for _ in 1 2 3; do
        openbox --sm-disable >>"$directory/openbox.log" 2>&1 &
        window_manager=$!
        waitUntil 20 windowManagerRunsOrIsGone || true
        if windowManagerRuns; then
            return
        fi
        stopWindowManager
    done
    # The logs may be deleted when the script ends.
    cat "$directory/xvfb.log" "$directory/openbox.log" >&2
    fail "the window manager did not start on $DISPLAY"
}

window_manager=

stopWindowManager() {
    if [[ -n $window_manager ]]; then
        stopProcess "$window_manager"
        window_manager=
    fi
}

windowManagerRunsOrIsGone() {
    windowManagerRuns || ! kill -0 "$window_manager" 2>/dev/null
}

windowManagerRuns() {
    xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'
}
