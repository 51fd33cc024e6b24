#!/bin/bash
# Builds both presets and runs all their tests. The last line is "N passed, N failed".
#   --long   the long versions of tests, within 30 minutes in all; prints what they have done
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

limit= # seconds
case "$*" in
    '') ;;
    --long) export QM_TEST_LONG=1 limit=1800 ;;
    *) echo "usage: ./test.sh [--long]" >&2; exit 2 ;;
esac

passed=0
failed=0

# A number of the result file's head line, "tests", "failures", ...
result() { sed -n "/<testsuite/,/>/s/.*\\b$2=\"\\([0-9]*\\)\".*/\\1/p" "$1" | head -n 1; }

run_tests() {
    local preset=$1 results=$PWD/build/$1.results.xml log=build/$1.test.log ok=1
    shift
    rm -f "$results"
    local bound=()
    if [[ $limit ]]; then
        local left=$((limit > SECONDS ? limit - SECONDS : 1))
        bound=(--stop-time "$(date -d "+$left seconds" +%H:%M:%S)")
    fi
    "$@" ctest --preset "$preset" ${bound[@]+"${bound[@]}"} --output-junit "$results" >"$log" 2>&1 </dev/null || ok=0
    if [[ $limit ]] && ((SECONDS >= limit - 2)); then
        ok=0
        echo "$preset: not all tests have run within $((limit / 60)) minutes" >>"$log"
    fi

    local ran=0 bad=0 skipped=0
    if [[ -e $results ]]; then
        bad=$(result "$results" failures)
        skipped=$(($(result "$results" skipped) + $(result "$results" disabled)))
        ran=$(($(result "$results" tests) - bad - skipped))
    fi
    if ((!ok)); then
        grep -Ev '^ *(Start +[0-9]+:|[0-9]+/[0-9]+ Test .* Passed )' "$log" || true
        ((bad > 0)) || bad=1 # the tests could not even be listed
    fi
    passed=$((passed + ran))
    failed=$((failed + bad))
    echo "$preset: $ran passed, $bad failed, $skipped skipped"
}

tools/setup.sh
native=1
tools/build.sh native || native=0
tools/build.sh windows & # while the native tests run
windows=$!
if ((native)); then
    run_tests native
else
    failed=$((failed + 1))
fi
fuzzers=
if [[ $limit ]]; then
    tools/fuzz.sh 30 >build/fuzz.test.log 2>&1 & # they need no window
    fuzzers=$!
fi
if wait "$windows"; then
    run_tests windows tools/with-wine.sh
else
    failed=$((failed + 1))
fi

if [[ $fuzzers ]]; then
    if wait "$fuzzers"; then
        passed=$((passed + 1))
    else
        cat build/fuzz.test.log
        failed=$((failed + 1))
    fi
fi

if [[ $limit ]]; then
    logs=(build/{native,windows}/Testing/Temporary/LastTest.log build/fuzz.test.log)
    echo 'Figures:'
    cat "${logs[@]}" 2>/dev/null | tr -d '\r' | sed -n 's/^figure: /  /p' | LC_ALL=C sort
    echo "  the whole run: $SECONDS seconds"
fi
echo "$passed passed, $failed failed"
((failed == 0 && passed > 0))
