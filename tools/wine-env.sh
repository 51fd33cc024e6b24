# shellcheck shell=bash disable=SC2154
# How this project runs Wine; sourced by the scripts beside it, which set `root` first.
# WINE_GRAPHICS says where windows go, each with a prefix of its own in the build folder:
#   null     nowhere: they are made by the null graphics driver, without X; the usual case
#   x11      to the X display
#   palette  to a virtual X display of 256 colours
: "${WINE_GRAPHICS:=null}"
case $WINE_GRAPHICS in
    null)
        WINEPREFIX=$root/build/wine
        unset DISPLAY
        ;;
    x11 | palette) WINEPREFIX=$root/build/wine-$WINE_GRAPHICS ;;
    *)
        echo "WINE_GRAPHICS is null, x11 or palette, not $WINE_GRAPHICS" >&2
        exit 2
        ;;
esac
WINEARCH=win64
: "${WINEDEBUG:=-all}"
# With the debugger enabled a crashing program may answer 0, and its test would pass.
: "${WINEDLLOVERRIDES:=mscoree,mshtml=;winemenubuilder.exe,winedbg.exe=d}"
LANG=C.UTF-8 LC_ALL=C.UTF-8 # in the C locale names outside ASCII cannot be opened
export WINE_GRAPHICS WINEPREFIX WINEARCH WINEDEBUG WINEDLLOVERRIDES LANG LC_ALL

# Starts Wine when it is not running. Its services are started by the first program and keep that
# program's output open, for ever if that is a pipe somebody reads: so the first one writes nowhere.
# All of it ends by itself a minute after the last program, so that nobody's program is cut off.
warm_wine() {
    if wineserver -p60 </dev/null >/dev/null 2>&1; then
        wine cmd /c exit </dev/null >/dev/null 2>&1 || true
    fi
}

# A path of this system as Windows programs take it.
windows_path() {
    local path
    path=$(realpath -m -- "$1")
    printf '%s' "Z:${path//\//\\}"
}
