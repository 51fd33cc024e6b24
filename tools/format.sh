#!/bin/bash
# Formats the sources; --check only tells which are not formatted.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
action=(-i)
[[ ${1-} == --check ]] && action=(--dry-run --Werror)
git ls-files -z --cached --others --exclude-standard -- '*.h' '*.cpp' |
    while IFS= read -r -d '' file; do [[ ! -e $file ]] || printf '%s\0' "$file"; done |
    xargs -0 -r clang-format "${action[@]}"
