#!/usr/bin/env bash
#
# Runs a program for Windows: wine.sh PROGRAM ARGUMENT...
#
# The toolchain file names it as the way to run what was built. with-wine.sh starts the server of
# Wine.

build=$(readlink -f -- "${BASH_SOURCE[0]%/*}/../../build")

export WINEPREFIX="${WINEPREFIX:-$build/windows/wine}"
export WINEPATH="Z:$build/windows-packages/prefix/bin${WINEPATH:+;$WINEPATH}"
export WINEDEBUG="${WINEDEBUG:--all}"
# The debugger would take a crash for its own affair, and sometimes the program would then end with
# success. The other two would only offer to install themselves.
export WINEDLLOVERRIDES="winedbg.exe=;mscoree=;mshtml="
# The encoding of arguments on their way from Linux.
export LC_ALL=C.UTF-8

exec /usr/lib/wine/wine64 "$@"
