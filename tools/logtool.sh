#!/bin/bash
# logtool.exe under Wine, with this system's paths. The session in build/session unless --folder names another.
#   logtool.sh [--folder DIR] COMMAND ...
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

. "$root/tools/wine-env.sh"

QM_LOG_FOLDER=$(windows_path "$root/build/session")
export QM_LOG_FOLDER

# Paths are the values of two options, the files to write and the folder to verify.
arguments=()
command=
words=0 # behind the command, options left out
while (($# > 0)); do
    word=$1
    shift
    case $word in
        --folder | --cursor-file)
            arguments+=("$word")
            (($# > 0)) || break
            word=$(windows_path "$1")
            shift
            ;;
        --kind | --block)
            arguments+=("$word")
            (($# > 0)) || break
            word=$1
            shift
            ;;
        -*) ;;
        *)
            if [[ -z $command ]]; then
                command=$word
            else
                words=$((words + 1))
                if [[ $command == verify || $command == write && $words -gt 1 ]]; then
                    word=$(windows_path "$word")
                fi
            fi
            ;;
    esac
    arguments+=("$word")
done
exec "$root/tools/run-wine.sh" "$root/build/windows/bin/logtool.exe" "${arguments[@]}"
