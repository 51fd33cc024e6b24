#!/bin/bash
# Static checks of all sources, or of the ones named, as .clang-tidy says.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
tools/build.sh windows # the list of compile commands; a source that is not in it is read like its neighbours
if [[ $# -eq 0 ]]; then
    mapfile -t sources < <(git ls-files -- '*.cpp')
    set -- "${sources[@]}"
fi
printf '%s\0' "$@" | xargs -0 -P "$(nproc)" -n 1 clang-tidy --quiet -p build/windows 2> >(grep -v 'warnings generated' >&2)
