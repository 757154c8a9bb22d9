# shellcheck shell=bash
# The simulated card and its radio environment.

# startSimulator BIN LOG [ARGUMENT …]: returns when the card is available. Prints the simulator's greeting, which explains
# how to join each network. The simulator ends with the script.
startSimulator() {
    local bin=$1 log=$2
    shift 2
    : >"$log" # is read before the simulator opens it
    "$bin/pellvane-sim" "$@" >"$log" 2>&1 &
    simulator_pid=$!
    atExit stopProcess "$simulator_pid"
    waitUntil 60 simulatorIsReadyOrGone "$log" || true
    if ! grep -qx ready "$log"; then
        cat "$log" >&2
        fail "the simulator did not start"
    fi
    grep -vx ready "$log" || true
}

simulatorIsReadyOrGone() {
    grep -qx ready "$1" || ! kill -0 "$simulator_pid" 2>/dev/null
}
