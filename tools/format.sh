#!/bin/bash
# Formats the sources; --check only tells which need it.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

mapfile -t -d '' listed < <(git ls-files -z --cached --others --exclude-standard -- '*.h' '*.hpp' '*.c' '*.cpp')
files=()
for file in "${listed[@]}"; do
    [[ ! -e $file ]] || files+=("$file") # deleted, but not committed yet
done
if [[ ${#files[@]} -eq 0 ]]; then
    echo "No sources are listed: is this a git work tree?" >&2
    exit 1
fi

if [[ ${1-} != --check ]]; then
    clang-format -i "${files[@]}"
elif ! report=$(clang-format --dry-run --Werror "${files[@]}" 2>&1); then
    echo "Not formatted (tools/format.sh does it):"
    sed -n 's/^\([^:]*\):[0-9]*:[0-9]*: error:.*/    \1/p' <<<"$report" | sort -u
    exit 1
fi
