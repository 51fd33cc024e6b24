#!/bin/bash
# Runs a command, such as ctest, with Wine ready: makes the prefix on first use and warms Wine up.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
. "$root/tools/wine-env.sh"

quietly() { wine "$@" </dev/null >/dev/null 2>&1; }

if [[ ! -e $WINEPREFIX/.ready ]]; then
    echo "Making the Wine prefix in build/wine"
    rm -rf "$WINEPREFIX"
    mkdir -p "$WINEPREFIX"
    quietly wineboot -i
    # Wine does not look for its own fonts where Debian puts them.
    cp /usr/share/wine/fonts/* "$WINEPREFIX/drive_c/windows/Fonts/"
    quietly reg add 'HKCU\Software\Wine\Drivers' /v Graphics /t REG_SZ /d null /f
    wineserver -k || true
    wineserver -w || true
    touch "$WINEPREFIX/.ready"
fi

warm_wine
exec "$@"
