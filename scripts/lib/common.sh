# shellcheck shell=bash
# What every script shares: where the tree is, how to speak, how to build.

vantrel_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
export vantrel_root

say() {
    printf '%s\n' "$*"
}

fail() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

# build PRESET [TARGET …]: configures where that was never done or a CMake file asks for it, then builds. On a terminal
# the builder shows how far it is; elsewhere it is heard only when it fails.
build() {
    local preset=$1
    shift
    local log=$vantrel_root/build/$preset.log targets=()
    if (($# > 0)); then
        targets=(--target "$@")
    fi
    mkdir -p "$vantrel_root/build"
    if [[ ! -f $vantrel_root/build/$preset/build.ninja ]]; then
        inRoot "$log" cmake --preset "$preset" || fail "the configuration of $preset failed"
    fi
    if [[ -t 1 ]]; then
        (cd "$vantrel_root" && cmake --build --preset "$preset" "${targets[@]}") || fail "the build of $preset failed"
    else
        inRoot "$log" cmake --build --preset "$preset" "${targets[@]}" || fail "the build of $preset failed"
    fi
}

# inRoot LOG COMMAND …: runs it in the tree's root with its output in LOG, which is shown when it fails.
inRoot() {
    local log=$1
    shift
    if ! (cd "$vantrel_root" && "$@") >"$log" 2>&1; then
        cat "$log" >&2
        return 1
    fi
}

# A runtime directory is where the services that a user starts are found. Where a login did not set one up, a private
# one stands in for it.
ensureRuntimeDirectory() {
    if [[ -n ${XDG_RUNTIME_DIR:-} && -d ${XDG_RUNTIME_DIR:-} ]]; then
        return
    fi
    XDG_RUNTIME_DIR=$(mktemp -d "${TMPDIR:-/tmp}/vantrel-runtime-XXXXXX")
    chmod 0700 "$XDG_RUNTIME_DIR"
    export XDG_RUNTIME_DIR
    atExit rm -rf "$XDG_RUNTIME_DIR"
}

vantrel_exit_commands=()

# atExit COMMAND [ARGUMENT …]: run when the script ends, however it ends; the last one registered runs first.
atExit() {
    vantrel_exit_commands+=("$(printf '%q ' "$@")")
    trap runExitCommands EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM HUP
}

runExitCommands() {
    local status=$? index
    trap - EXIT INT TERM HUP
    for ((index = ${#vantrel_exit_commands[@]} - 1; index >= 0; --index)); do
        eval "${vantrel_exit_commands[index]}" || true
    done
    exit "$status"
}

# stopProcess PID: asks a child to end and waits for it; harmless when it has ended.
stopProcess() {
    kill "$1" 2>/dev/null || return 0
    wait "$1" 2>/dev/null || true
}

# waitUntil SECONDS COMMAND [ARGUMENT …]: asks every tenth of a second; false when the time is up.
waitUntil() {
    local deadline=$((SECONDS + $1))
    shift
    until "$@"; do
        ((SECONDS < deadline)) || return 1
        sleep 0.1
    done
}
