#!/usr/bin/env bash
#
# Runs a command whose children may be programs for Windows: with-wine.sh COMMAND ARGUMENT...
#
# One server of Wine serves them all. Without it each program would need seconds for one of its own.

set -euo pipefail

here=$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")
build=$(readlink -f -- "$here/../..")/build/windows
readonly here build

readonly WINE=/usr/lib/wine/wine64 SERVER=/usr/lib/wine/wineserver64
export WINEPREFIX=$build/wine

say()
{
    printf 'windows: %s\n' "$*" >&2
}

# The server, the folder that stands for a Windows of its own, and the services of that Windows,
# which wineboot starts each time. All are detached: what starts within ctest, or within a script that
# a test is, holds on to its pipes, and would be waited for.
start_wine()
{
    local stamp arguments=()
    mkdir -p "$WINEPREFIX"
    WINEDEBUG=-all setsid -w "$SERVER" -p </dev/null >"$build/wineserver.log" 2>&1
    stamp=$("$WINE" --version)
    if [[ ! -f $WINEPREFIX/.done || $(<"$WINEPREFIX/.done") != "$stamp" ]]; then
        say "making a Windows for Wine (some seconds)"
        arguments=(--init)
    fi
    if ! setsid -w "$here/wine.sh" wineboot "${arguments[@]}" </dev/null \
        >"$build/wineboot.log" 2>&1; then
        cat "$build/wineboot.log" >&2
        say "wineboot failed"
        exit 1
    fi
    printf '%s\n' "$stamp" >"$WINEPREFIX/.done"
}

stop_wine()
{
    "$SERVER" -k || true
}

trap stop_wine EXIT
start_wine
"$@"
