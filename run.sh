#!/bin/bash
# Writes real log files into a fresh session, verifies it and shows it in LogDesk: in a window, or without a display
# as pictures in build/screenshots.
#   run.sh [FILE...]    without files: the machine's own logs
# Ends with the verification's code; 2 when a file cannot be read.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
logtool=$root/tools/logtool.sh
session=$root/build/session
logdesk=$root/tools/logdesk.sh
pictures=$root/build/screenshots
logs=(Run Source SQL Service)

for file in "$@"; do
    if [[ ! -f $file || ! -r $file ]]; then
        echo "run.sh: cannot read $file" >&2
        exit 2
    fi
done

"$root/tools/setup.sh"
"$root/tools/build.sh" windows logtool LogDesk runtime_dlls

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

# Copies a file's lines into a log. Main tells what happens, and in an error block which lines tell of errors.
# A block's header is its first line and comes by standard input as well: an argument would lose what the Windows code
# page does not have.
copy_file() {
    local file=$1 log=$2 count found
    local errors='(^|[^-_A-Za-z])(errors?|fatal|fail(s|ed|ure)?|denied)($|[^-_A-Za-z])'
    printf 'Reading %s, %s bytes, into %s' "$file" "$(wc -c <"$file")" "$log" | "$logtool" write Main
    { printf '%s\n' "$file"; cat -- "$file"; } | "$logtool" write "$log" --kind plain

    count=$(grep -aciE "$errors" -- "$file" || true)
    if ((count > 0)); then
        found=$(grep -aniE -m 5 "$errors" -- "$file" | tr -d '\0')
        printf 'Errors in %s, on %d lines; the first are\n%s' "$file" "$count" "$found" |
            "$logtool" write Main --kind error
    fi
}

# picture NAME STEPS: what LogDesk shows after the steps.
picture() {
    "$logdesk" "$session" --screenshot "$pictures/$1.bmp" --steps "size:900x600,$2"
    convert "$pictures/$1.bmp" "$pictures/$1.png"
    rm "$pictures/$1.bmp"
    echo "    $pictures/$1.png"
}

rm -rf "$session"
mkdir -p "$session"
for i in "${!files[@]}"; do
    file=$(realpath -- "${files[i]}")
    log=${logs[i % ${#logs[@]}]}
    echo "$file -> $log"
    copy_file "$file" "$log"
done
printf 'Read %d files' "${#files[@]}" | "$logtool" write Main # rows after Main's last could not be unfolded

printf '\nThe blocks (logtool tree):\n'
"$logtool" tree

printf '\nThe check of its files (logtool verify):\n'
verdict=0
"$logtool" verify || verdict=$?

if [[ -n ${DISPLAY-} ]]; then
    printf '\nLogDesk shows it; close its window to go on.\n'
    "$logdesk" "$session"
else
    printf '\nThere is no display; what LogDesk shows stands in\n'
    rm -rf "$pictures"
    mkdir -p "$pictures"
    picture opened home
    picture unfolded tab:1,home,next-fold,unfold-all
    picture error home,next-error
fi

printf '\nThe session lies in %s. To look again:\n' "$session"
printf '    %s cat --numbers\n    %s %s\n' "$logtool" "$logdesk" "$session"
exit "$verdict"
