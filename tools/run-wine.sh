#!/bin/bash
# Runs one Windows program; CMake calls this for the programs it built.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
. "$root/tools/wine-env.sh"
warm_wine
exec wine "$@"
