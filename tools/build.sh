#!/bin/bash
# Builds a preset, or some targets of it; silent unless it fails. Configures only what is not configured.
#   build.sh PRESET [TARGET...]
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
preset=$1
shift

fail() {
    cat "$log"
    echo "$preset: $1"
    exit 1
}

mkdir -p build
log=build/$preset.build.log
if [[ ! -e build/$preset/build.ninja ]]; then
    cmake --preset "$preset" >"$log" 2>&1 || fail "cannot be configured"
fi
cmake --build --preset "$preset" ${1+--target "$@"} >"$log" 2>&1 || fail "does not build"
