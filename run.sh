#!/bin/bash
# Writes real log files into a fresh session, shows the session and verifies it.
#   run.sh [FILE...]    without files: the machine's own logs
# Ends with the verification's code; 2 when a file cannot be read.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
logtool=$root/tools/logtool.sh
session=$root/build/session
logs=(Main Run Source SQL Service)

for file in "$@"; do
    if [[ ! -f $file || ! -r $file ]]; then
        echo "run.sh: cannot read $file" >&2
        exit 2
    fi
done

"$root/tools/setup.sh"
"$root/tools/build.sh" windows logtool runtime_dlls

files=("$@")
if [[ $# -eq 0 ]]; then
    for file in /var/log/{dpkg.log,apt/history.log,apt/term.log,alternatives.log,bootstrap.log}; do
        if [[ -s $file && -r $file ]]; then
            files+=("$file")
        fi
    done
fi
if [[ ${#files[@]} -eq 0 ]]; then
    echo "run.sh: this machine has no readable logs in /var/log; name some files" >&2
    exit 2
fi

rm -rf "$session"
mkdir -p "$session"
for i in "${!files[@]}"; do
    file=$(realpath -- "${files[i]}")
    log=${logs[i % ${#logs[@]}]}
    echo "$file -> $log"
    # Main tells what happens, a line a file, and the file's own log holds its lines in a block. A log's line
    # begins with a line feed. The block's header is its first line and comes by standard input as well: an
    # argument would lose what the Windows code page does not have.
    printf '\nReading %s, %s bytes, into %s' "$file" "$(wc -c <"$file")" "$log" | "$logtool" write Main
    { printf '%s\n' "$file"; cat -- "$file"; } | "$logtool" write "$log" --kind plain
done

printf '\nThe blocks (logtool tree):\n'
"$logtool" tree

printf '\nThe rows in the order they were written (logtool cat --numbers):\n'
rows=$root/build/session.rows
"$logtool" cat --numbers >"$rows"
count=$(wc -l <"$rows")
if ((count <= 20)); then
    cat "$rows"
else
    head -n 15 "$rows"
    echo "    ... $((count - 20)) rows ..."
    tail -n 5 "$rows"
fi | cut -c -160

printf '\nThe check of its files (logtool verify):\n'
verdict=0
"$logtool" verify || verdict=$?

printf '\nThe session lies in %s. To look again:\n    %s cat --numbers\n' "$session" "$logtool"
exit "$verdict"
