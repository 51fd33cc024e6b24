#!/bin/bash
# Which lines of the product the Windows tests run; a summary by file.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
tools/setup.sh
tools/build.sh windows-coverage
find build/windows-coverage -name '*.gcda' -delete # counters add up over runs
tools/with-wine.sh ctest --preset windows-coverage --quiet || echo "Some tests failed" >&2
gcovr -r . --gcov-executable x86_64-w64-mingw32-gcov-posix \
    -f include/ -f logfiles/ -f platform/ -f host/ build/windows-coverage
