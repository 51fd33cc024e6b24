#!/bin/bash
# logtool as a user calls it, through tools/logtool.sh: paths of this system, pipes that close, a disk that is full,
# another process that writes.
#   logtool_test.sh LOGTOOL_EXE
set -euo pipefail
export LOGTOOL_EXE=$1
tool=$(cd "$(dirname "${BASH_SOURCE[0]}")/../tools" && pwd)/logtool.sh
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

# expect WANTED IS: two texts that must be equal.
expect() { [[ $1 == "$2" ]] || { printf 'expected: %s\nbut it is: %s\n' "$1" "$2"; exit 1; }; }
logtool() { "$tool" --folder=logs "$@"; }

echo first >-x
echo second >'a b'
logtool write Main -- -x 'a b'
echo third | logtool write Main -
expect $'first\nsecond\nthird' "$(logtool cat)"
expect '1 log, 3 rows: no damage' "$("$tool" verify -- logs)"

seq 100000 | logtool write Run
codes=$(logtool cat --log Run 2>messages | head -n 1 >shown; echo "${PIPESTATUS[0]}")
expect '0 1 ' "$codes $(cat shown) $(cat messages)"
codes=$(logtool cat --log Run 2>messages >/dev/full; echo $?)
expect '2 logtool: output: cannot be written: Disk full.' "$codes $(tr -d '\r' <messages)"

mkfifo pipe
logtool write Run <pipe &
exec 3>pipe
echo begun >&3
until grep -q begun logs/Run.LOG; do sleep 0.05; done
echo fourth | logtool write Main 2>messages 3>&- & # or it would keep the pipe open, which it waits for
until grep -q 'waiting for a process that writes in .*logs.* and has Log.DAT open' messages; do sleep 0.05; done
exec 3>&-
wait
expect fourth "$(logtool tail -n 1)"
