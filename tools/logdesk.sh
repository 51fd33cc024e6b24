#!/bin/bash
# LogDesk.exe under Wine, with this system's paths: on the display, or without one for a screenshot.
#   logdesk.sh [OPTION...] [FOLDER | FILE | ADDRESS]    see logdesk.sh --help
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

WINE_GRAPHICS=x11
for word in "$@"; do
    case $word in
        --screenshot* | --help | -h | --version | '/?') WINE_GRAPHICS=null ;;
    esac
done
if [[ $WINE_GRAPHICS == x11 && -z ${DISPLAY-} ]]; then
    echo "logdesk.sh: there is no display to show a window on; --screenshot FILE.bmp makes a picture" >&2
    exit 2
fi
. "$root/tools/wine-env.sh"

# Paths are the word that belongs to no option, and the values of some.
arguments=()
option=
for word in "$@"; do
    case $option:$word in
        *: | --keep:* | --steps:* | :'/?' | *:http://* | *:https://* | *:clickhouse://*) arguments+=("$word") ;;
        :--open=http*://* | :--open=clickhouse://*) arguments+=("$word") ;;
        :--open=* | :--folder=* | :--screenshot=*) arguments+=("${word%%=*}=$(windows_path "${word#*=}")") ;;
        :-*) arguments+=("$word") ;;
        *) arguments+=("$(windows_path "$word")") ;;
    esac
    case $option:$word in
        :--open | :--folder | :--screenshot | :--keep | :--steps) option=$word ;;
        *) option= ;;
    esac
done
program=("$root/tools/run-wine.sh" "$root/build/windows/bin/LogDesk.exe" "${arguments[@]}")
if [[ $WINE_GRAPHICS == null ]]; then
    exec "${program[@]}"
fi
exec "$root/tools/with-wine.sh" "${program[@]}"
