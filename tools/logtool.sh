#!/bin/bash
# logtool.exe under Wine, with this system's paths. The session in build/session unless --folder names another.
#   logtool.sh [--folder DIR] COMMAND ...
# LOGTOOL_EXE names another program than the one in build/windows.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

. "$root/tools/wine-env.sh"

QM_LOG_FOLDER=$(windows_path "$root/build/session")
export QM_LOG_FOLDER

arguments=()
command=
words=0 # after the command, options left out

# Paths are the values of some options, the files to write or read and the folder to verify. "-" is the standard input.
add_word() {
    local word=$1
    if [[ -z $command ]]; then
        command=$word
    else
        words=$((words + 1))
        if [[ $word != - && ($command == @(verify|messages) || $command == write && $words -gt 1) ]]; then
            word=$(windows_path "$word")
        fi
    fi
    arguments+=("$word")
}

while (($# > 0)); do
    word=$1
    shift
    case $word in
        --folder | --cursor-file | --save | --output)
            arguments+=("$word" ${1+"$(windows_path "$1")"})
            shift $(($# > 0))
            ;;
        --folder=?* | --cursor-file=?* | --save=?* | --output=?*) arguments+=("${word%%=*}=$(windows_path "${word#*=}")") ;;
        --kind | --block | --log | --grep | --from | --to | --after | --depth | -[ABn] | \
            --to-tcp | --machine | --format | --fields | --contain | --not-contain | --level | --sort)
            arguments+=("$word" ${1+"$1"})
            shift $(($# > 0))
            ;;
        --session) # followed by a name for "ship" only
            arguments+=("$word")
            if [[ $command == ship && $# -gt 0 ]]; then
                arguments+=("$1")
                shift
            fi
            ;;
        --)
            arguments+=(--)
            while (($# > 0)); do
                add_word "$1"
                shift
            done
            ;;
        -?*) arguments+=("$word") ;;
        *) add_word "$word" ;;
    esac
done
exec "$root/tools/run-wine.sh" "${LOGTOOL_EXE:-$root/build/windows/bin/logtool.exe}" "${arguments[@]}"
