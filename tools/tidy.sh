#!/bin/bash
# Static checks, as .clang-tidy says, of the product's sources or of the ones named. Builds nothing: it needs only the
# list of compile commands, without precompiled headers, which are another compiler's.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
if ! output=$(cmake --preset windows -B build/tidy -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON -DCMAKE_UNITY_BUILD=OFF 2>&1); then
    printf '%s\n' "$output" >&2
    exit 1
fi

if [[ $# -eq 0 ]]; then
    mapfile -t sources < <(git ls-files -- '*.cpp' ':!tests/') # tests take minutes and find little
    set -- "${sources[@]}"
fi
printf '%s\0' "$@" | xargs -0 -P "$(nproc)" -n 1 clang-tidy --quiet -p build/tidy \
    2> >(grep -v 'warnings\? generated' >&2)
