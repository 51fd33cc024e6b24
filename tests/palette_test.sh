#!/bin/bash
# Runs the tests of displays with a palette, on a virtual X display of 256 colours.
#   palette_test.sh TEST_PROGRAM
# Exit code 77, "skipped", where there is no virtual display.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

command -v xvfb-run >/dev/null || { echo "There is no xvfb-run here"; exit 77; }
unset DISPLAY
WINE_GRAPHICS=palette exec "$root/tools/with-wine.sh" "$root/tools/run-wine.sh" "$1" --gtest_brief=1 --gtest_filter='Palette.*'
