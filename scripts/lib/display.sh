# shellcheck shell=bash
# A display of our own: an X server without a screen and a small window manager, so that windows get focus, titles and
# sizes as they would on a desk.

hasDisplay() {
    [[ -n ${DISPLAY:-} || -n ${WAYLAND_DISPLAY:-} ]]
}

# startVirtualDisplay DIRECTORY [WIDTHxHEIGHT]: exports DISPLAY; both programs end with the script. Their output goes to
# DIRECTORY.
startVirtualDisplay() {
    local directory=$1 size=${2:-1280x900} number
    mkdir -p "$directory"
    unset WAYLAND_DISPLAY XDG_SESSION_TYPE QT_QPA_PLATFORM
    : >"$directory/display-number"
    Xvfb -displayfd 3 -screen 0 "${size}x24" -nolisten tcp 3>"$directory/display-number" >"$directory/xvfb.log" 2>&1 &
    atExit stopProcess $!
    if ! waitUntil 20 test -s "$directory/display-number"; then
        cat "$directory/xvfb.log" >&2
        fail "the virtual display did not start"
    fi
    number=$(<"$directory/display-number")
    export DISPLAY=:$number
    openbox --sm-disable >"$directory/openbox.log" 2>&1 &
    atExit stopProcess $!
    # The folder may be gone with the script: what is in the logs is told now.
    if ! waitUntil 20 windowManagerRuns; then
        cat "$directory/xvfb.log" "$directory/openbox.log" >&2
        fail "the window manager did not start on $DISPLAY"
    fi
}

windowManagerRuns() {
    xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'
}
