#!/bin/bash
# Static checks, as .clang-tidy says, of the product's sources or of the ones named.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
tools/build.sh windows # for its list of compile commands

if [[ $# -eq 0 ]]; then
    mapfile -t sources < <(git ls-files -- '*.cpp' ':!tests/') # tests take minutes and find little
    set -- "${sources[@]}"
fi
printf '%s\0' "$@" | xargs -0 -P "$(nproc)" -n 1 clang-tidy --quiet -p build/windows \
    2> >(grep -v 'warnings\? generated' >&2)
