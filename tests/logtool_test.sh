#!/bin/bash
# logtool as a user calls it, through tools/logtool.sh: paths of this system, pipes that close, a disk that is full,
# another process that writes.
#   logtool_test.sh LOGTOOL_EXE
set -euo pipefail
export LOGTOOL_EXE=$1
tool=$(cd "$(dirname "${BASH_SOURCE[0]}")/../tools" && pwd)/logtool.sh
work=$(mktemp -d --suffix=" Größe 日志")
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

# Messages, told apart from a text, come back from CSV, JSON and a saved file as other programs read them.
{
    printf '2026-11-22 10:00:%02d,5 INFO [pump] "started", step %d\n' 1 1 2 2 3 3
    printf '2026-11-22 10:00:04,5 ERROR [valve] gr\xc3\xb6\xc3\x9fe, \xe6\x97\xa5\n  at close\n\n  at main\n'
} >app.log
cat >read.py <<'PYTHON'
import csv, io, json, sqlite3, subprocess, sys
told = lambda *options: subprocess.run([*sys.argv[1:], "messages", *options], stdout=subprocess.PIPE, check=True).stdout
fields = ["timestamp", "level", "topic", "body", "source-line"]
wanted = [[f"2026-11-22 10:00:0{n},5", "INFO", "pump", f'"started", step {n}', str(n)] for n in (1, 2, 3)]
wanted.append(["2026-11-22 10:00:04,5", "ERROR", "valve", "größe, 日\r\n  at close\r\n\r\n  at main", "4"])
text = told("app.log", "--csv", "--fields", ",".join(fields)).decode()
assert list(csv.reader(io.StringIO(text, newline=""))) == [fields] + wanted, text
lines = [json.loads(line) for line in told("app.log", "--json", "--fields", "all").decode().splitlines()]
assert [[str(line[field]) for field in fields] for line in lines] == wanted, lines
told("app.log", "--level", "error", "--save", "saved.zemalog")
rows = sqlite3.connect("saved.zemalog").execute("select timestamp, level, topic, body, source_line from messages")
assert rows.fetchall() == [(wanted[3][0], 4, "valve", wanted[3][3], 4)]
again = json.loads(told("saved.zemalog", "--json", "--fields", "all"))
assert {**again, "source": ""} == lines[3], again
PYTHON
python3 read.py "$tool"

# A log that is followed is rotated: nothing is missed and nothing comes twice.
echo '2026-11-22 10:00:01 INFO one' >live.log
"$tool" messages -f live.log --fields body >followed 2>told &
until grep -q one followed; do sleep 0.05; done
echo '2026-11-22 10:00:02 INFO two' >>live.log
mv live.log live.log.1
echo '2026-11-22 10:00:03 INFO three' >live.log
until grep -q three followed; do sleep 0.05; done
kill $!
expect $'one\ntwo\nthree' "$(cat followed)"

# Names in any language, of folders, logs and files; a text is found in UTF-8 and in the code page.
mkdir 'Größe 日志'
printf 'gr\xf6\xdfe\nМосква 😀\ngröße\n' >日志.txt
"$tool" --folder 'Größe 日志' write Журнал 日志.txt
[[ -e 'Größe 日志/Журнал.LOG' ]]
expect 2 "$("$tool" --folder 'Größe 日志' cat --grep größe -c | tr -d '\r')"
expect 'Москва 😀' "$("$tool" --folder 'Größe 日志' cat --log Журнал --grep 'М.*а .$' -E)"
expect 3 "$("$tool" messages 日志.txt | grep -c .)"

# A path that is longer than the system's narrow calls take.
long=$(printf 'long folder %.0s' {1..15})
mkdir -p "$long/$long"
mv 日志.txt "$long/$long"
expect 3 "$("$tool" messages "$long/$long/日志.txt" | grep -c .)"
