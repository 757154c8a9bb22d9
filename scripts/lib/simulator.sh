# shellcheck shell=bash
# The simulated card and its radio neighbourhood.

# startSimulator BIN LOG [ARGUMENT …]: returns when the card can be found. Prints what the simulator introduces itself
# with: how each network is joined. The simulator ends with the script.
startSimulator() {
    local bin=$1 log=$2
    shift 2
    : >"$log" # it is read before the simulator gets to open it
    "$bin/pellvane-sim" "$@" >"$log" 2>&1 &
    simulator_pid=$!
    atExit stopProcess "$simulator_pid"
    waitUntil 10 simulatorIsReadyOrGone "$log" || true
    if ! grep -qx ready "$log"; then
        cat "$log" >&2
        fail "the simulator did not start"
    fi
    grep -vx ready "$log" || true
}

simulatorIsReadyOrGone() {
    grep -qx ready "$1" || ! kill -0 "$simulator_pid" 2>/dev/null
}
