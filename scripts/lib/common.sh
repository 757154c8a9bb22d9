# shellcheck shell=bash
# Shared by all scripts: the root of the tree, messages, builds, clean-up.

vantrel_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
export vantrel_root

say() {
    printf '%s\n' "$*"
}

fail() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

# build PRESET [TARGET …]: configures if necessary, then builds. Shows progress on a terminal; otherwise only the output of
# a failed build.
build() {
    local preset=$1
    shift
    local log=$vantrel_root/build/$preset.log targets=()
    if (($# > 0)); then
        targets=(--target "$@")
    fi
    mkdir -p "$vantrel_root/build"
    if [[ ! -f $vantrel_root/build/$preset/build.ninja ]]; then
        inRoot "$log" cmake --preset "$preset" || fail "configuring $preset failed"
    fi
    if [[ -t 1 ]]; then
        (cd "$vantrel_root" && cmake --build --preset "$preset" "${targets[@]}") || fail "building $preset failed"
    else
        inRoot "$log" cmake --build --preset "$preset" "${targets[@]}" || fail "building $preset failed"
    fi
}

# inRoot LOG COMMAND …: runs COMMAND in the root of the tree with its output in LOG, which is shown on failure.
inRoot() {
    local log=$1
    shift
    if ! (cd "$vantrel_root" && "$@") >"$log" 2>&1; then
        cat "$log" >&2
        return 1
    fi
}

# The programs find each other through sockets in the runtime directory. Creates a private one if the login did not.
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

# atExit COMMAND [ARGUMENT …]: runs COMMAND when the script ends for any reason, in reverse order of registration.
atExit() {
    vantrel_exit_commands+=("$(printf '%q ' "$@")")
    trap runExitCommands EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM HUP
}

runExitCommands() {
    local status=$? index
    trap - EXIT
    trap '' INT TERM HUP # a second signal must not cut the clean-up short
    for ((index = ${#vantrel_exit_commands[@]} - 1; index >= 0; --index)); do
        eval "${vantrel_exit_commands[index]}" || true
    done
    exit "$status"
}

# stopProcess PID: terminates a child and waits for it; a no-op after it has ended.
stopProcess() {
    kill "$1" 2>/dev/null || return 0
    wait "$1" 2>/dev/null || true
}

# waitUntil SECONDS COMMAND [ARGUMENT …]: repeats COMMAND every 0.1 s until it succeeds; fails after SECONDS.
waitUntil() {
    local deadline=$((SECONDS + $1))
    shift
    until "$@"; do
        ((SECONDS < deadline)) || return 1
        sleep 0.1
    done
}
