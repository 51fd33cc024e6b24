#!/bin/bash
# logtool.exe under Wine, with this system's paths. The session in build/session unless --folder names another.
#   logtool.sh [--folder DIR] COMMAND ...
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

windows_path() {
    local path
    path=$(realpath -m -- "$1")
    printf '%s' "Z:${path//\//\\}"
}

folder=$root/build/session
if [[ ${1-} == --folder && $# -ge 2 ]]; then
    folder=$2
    shift 2
fi

arguments=(--folder "$(windows_path "$folder")")
command=${1-}
[[ $# -eq 0 ]] || { arguments+=("$1"); shift; }
case $command in
    write)
        [[ $# -eq 0 ]] || { arguments+=("$1"); shift; } # the log
        while [[ $# -gt 0 ]]; do
            case $1 in
                --kind | --block) arguments+=("${@:1:2}"); shift ;;
                -*) arguments+=("$1") ;;
                *) arguments+=("$(windows_path "$1")") ;;
            esac
            [[ $# -eq 0 ]] || shift
        done
        ;;
    verify)
        [[ $# -eq 0 ]] || { arguments+=("$(windows_path "$1")"); shift; }
        ;;
esac
exec "$root/tools/run-wine.sh" "$root/build/windows/bin/logtool.exe" "${arguments[@]}" "$@"
