# shellcheck shell=bash disable=SC2154
# How this project runs Wine; sourced by the scripts beside it, which set `root` first.
# Without X: windows are made by the null graphics driver. The prefix lies in the build folder.
WINEPREFIX=$root/build/wine
WINEARCH=win64
: "${WINEDEBUG:=-all}"
# With the debugger enabled a crashing program may answer 0, and its test would pass.
: "${WINEDLLOVERRIDES:=mscoree,mshtml=;winemenubuilder.exe,winedbg.exe=d}"
LANG=C.UTF-8 LC_ALL=C.UTF-8 # in the C locale names outside ASCII cannot be opened
export WINEPREFIX WINEARCH WINEDEBUG WINEDLLOVERRIDES LANG LC_ALL
unset DISPLAY

# Starts Wine when it is not running. Its services are started by the first program and keep that
# program's output open, for ever if that is a pipe somebody reads: so the first one writes nowhere.
# All of it ends by itself a minute after the last program, so that nobody's program is cut off.
warm_wine() {
    if wineserver -p60 </dev/null >/dev/null 2>&1; then
        wine cmd /c exit </dev/null >/dev/null 2>&1 || true
    fi
}
