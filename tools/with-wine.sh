#!/bin/bash
# Runs a command, such as ctest, with Wine ready: makes the prefix on first use and warms Wine up.
# With WINE_GRAPHICS=x11 or palette and no display the command gets a virtual one, and Wine ends with it.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
. "$root/tools/wine-env.sh"

quietly() { wine "$@" </dev/null >/dev/null 2>&1; }

if [[ ! -e $WINEPREFIX/.ready ]]; then
    echo "Making the Wine prefix in build/${WINEPREFIX##*/}"
    rm -rf "$WINEPREFIX"
    mkdir -p "$WINEPREFIX"
    if [[ -e $root/build/wine/.ready ]]; then
        # Its disk is made of links to the same files; the system's are never written again.
        cp -al "$root/build/wine/drive_c" "$WINEPREFIX"
        cp -a "$root"/build/wine/{dosdevices,.update-timestamp,*.reg} "$WINEPREFIX"
        sed -i '/^"Graphics"="null"$/d' "$WINEPREFIX/user.reg"
    else
        DISPLAY='' quietly wineboot -i
        # Wine does not look for its own fonts where Debian puts them.
        cp /usr/share/wine/fonts/* "$WINEPREFIX/drive_c/windows/Fonts/"
        if [[ $WINE_GRAPHICS == null ]]; then
            quietly reg add 'HKCU\Software\Wine\Drivers' /v Graphics /t REG_SZ /d null /f
        fi
        wineserver -k || true
        wineserver -w || true
    fi
    touch "$WINEPREFIX/.ready"
fi

if [[ $WINE_GRAPHICS != null ]]; then
    if [[ -z ${DISPLAY-} ]]; then
        depth=24
        [[ $WINE_GRAPHICS != palette ]] || depth=8
        # With a file of ours: when xvfb-run cannot delete one of its own, it fails and leaves its server running.
        authority=$(mktemp)
        trap 'rm -f "$authority"' EXIT
        WITH_WINE_DISPLAY=virtual xvfb-run -a -f "$authority" -s "-screen 0 1024x768x$depth" "$0" "$@"
        exit
    fi
    # Where nothing manages windows, Wine must not wait for a manager: closing one would take two seconds.
    managed=Y
    if [[ ${WITH_WINE_DISPLAY-} == virtual ]]; then
        managed=N
        wineserver -k || true # it would remember the display that it saw last
        trap 'wineserver -k || true' EXIT
    fi
    warm_wine
    quietly reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /t REG_SZ /d "$managed" /f
else
    warm_wine
    # The desktop starts with the first window and ends with the last one, a second each time that a test
    # would wait for: this window keeps it. The second program makes a window too, and once it has ended the
    # desktop is there; started by the command, it would keep the command's output open.
    wine notepad </dev/null >/dev/null 2>&1 &
    trap "kill $! 2>/dev/null || true" EXIT
    quietly rundll32 user32.dll,MessageBeep || true
fi
"$@"
