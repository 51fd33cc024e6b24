#!/bin/bash
# LogDesk.exe under Wine, with this system's paths: on the display, or without one for a screenshot.
#   logdesk.sh [OPTION...]    see logdesk.sh --help
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

if [[ $* == *--screenshot* || $* == *--help* ]]; then
    WINE_GRAPHICS=null
elif [[ -n ${DISPLAY-} ]]; then
    WINE_GRAPHICS=x11
else
    echo "logdesk.sh: there is no display to show a window on; --screenshot FILE.bmp makes a picture" >&2
    exit 2
fi
. "$root/tools/wine-env.sh"

arguments=()
while (($# > 0)); do
    arguments+=("$1")
    if [[ $1 == --open || $1 == --folder || $1 == --screenshot ]] && (($# > 1)); then
        arguments+=("$(windows_path "$2")")
        shift
    fi
    shift
done
program=("$root/tools/run-wine.sh" "$root/build/windows/bin/LogDesk.exe" "${arguments[@]}")
if [[ $WINE_GRAPHICS == null ]]; then
    exec "${program[@]}"
fi
exec "$root/tools/with-wine.sh" "${program[@]}"
