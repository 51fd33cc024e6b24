#!/bin/bash
# Runs the fuzzers of tests/fuzz on what is stored and on what they think of.
#   fuzz.sh [--merge] [SECONDS [NAME...]]   SECONDS for each of them, 40 by default; NAME as in tests/fuzz/corpus
# QM_TEST_SEED is the seed. What fails is told with the file that repeats it, kept in build/fuzz. With --merge what they
# found goes into the stored corpus: forty small files that do not reach the same code.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
merge=0
if [[ ${1-} == --merge ]]; then
    merge=1
    shift
fi
seconds=${1-40}
shift || true
names=("$@")
((${#names[@]})) || mapfile -t names < <(ls tests/fuzz/corpus)
seed=${QM_TEST_SEED-$((RANDOM % 32768 + 1))}
tools/build.sh native-fuzz fuzzers
work=build/fuzz
mkdir -p "$work"

# fuzz NAME
fuzz() {
    local name=$1 program log=$work/$1.log
    program=build/native-fuzz/bin/fuzz_$(sed -E 's/(^|_)(.)/\u\2/g' <<<"$name")
    mkdir -p "$work/$name"
    if ! "$program" -seed="$seed" -max_total_time="$seconds" -timeout=20 -rss_limit_mb=2048 -max_len=4096 \
        -artifact_prefix="$work/$name-" -print_final_stats=1 "$work/$name" "tests/fuzz/corpus/$name" >"$log" 2>&1; then
        tail -n 40 "$log"
        echo "fuzz.sh: $name failed; QM_TEST_SEED=$seed repeats it"
        return 1
    fi
    local runs edges
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
    edges=$(sed -nE 's/.* cov: ([0-9]+) .*/\1/p' "$log" | tail -n 1)
    echo "figure: fuzz.$name: $runs runs, $edges edges"
    if ((merge)); then
        rm -rf "$work/merged" && mkdir "$work/merged"
        "$program" -merge=1 -max_len=4096 "$work/merged" "tests/fuzz/corpus/$name" "$work/$name" >>"$log" 2>&1
        rm -f "tests/fuzz/corpus/$name"/*
        # Any forty of them: the stored corpus stays small.
        find "$work/merged" -type f -size -2k | sort | head -n 40 | xargs cp -t "tests/fuzz/corpus/$name"
    fi
}

failed=0
running=0
for name in "${names[@]}"; do
    fuzz "$name" &
    if ((++running == $(nproc) || merge)); then
        wait -n || failed=1
        running=$((running - 1))
    fi
done
while ((running-- > 0)); do
    wait -n || failed=1
done
exit "$failed"
