#!/bin/bash
# Which lines of the product the tests of both presets run; a summary by file.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
tools/setup.sh

# The product's folders: all that have sources, but for those that only use it.
filters=()
for folder in $(git ls-files -- '*.cpp' '*.h' | cut -d/ -f1 | sort -u); do
    [[ $folder == @(bench|examples|tests) ]] || filters+=(-f "$folder/")
done

# count PRESET GCOV COMMAND...: builds, runs the tests, and leaves the counts in build/PRESET.json.
count() {
    local preset=$1 gcov=$2
    shift 2
    tools/build.sh "$preset"
    find "build/$preset" -name '*.gcda' -delete # counters add up over runs
    "$@" ctest --preset "$preset" --quiet || echo "$preset: some tests failed" >&2
    gcovr -r . --gcov-executable "$gcov" "${filters[@]}" \
        --json "build/$preset.json" "build/$preset"
}
count native-coverage 'llvm-cov gcov' env
count windows-coverage x86_64-w64-mingw32-gcov-posix tools/with-wine.sh
gcovr -r . -a build/native-coverage.json -a build/windows-coverage.json
