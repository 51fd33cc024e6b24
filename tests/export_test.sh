#!/bin/bash
# What logtool exports, as other programs read it: whole, while it is killed again and again, and by a syslog server.
#   export_test.sh LOGTOOL_EXE
set -euo pipefail
export LOGTOOL_EXE=$1
tests=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
work=$(mktemp -d)
server=
trap '[[ -z $server ]] || kill "$server" 2>/dev/null; rm -rf "$work"' EXIT
cd "$work"

# Becomes the program, so that a kill of it in the background is one of the program.
become_export() { exec "$tests/../tools/logtool.sh" --folder session export --session S --machine M "$@"; }
logtool_export() { (become_export "$@"); }
python() { python3 -X utf8 "$tests/export/$1.py" "${@:2}"; }

python make_session session 400 >rows
for format in jsonl csv syslog; do
    logtool_export --format $format --output out.$format
    python check_rows rows $format out.$format
done
logtool_export --format trace >trace
python check_trace trace >slices
[[ $(cat slices) == '359 41' ]]

# Followed and killed while the session grows. A file that was never interrupted is the same but for the order of rows
# whose text came late.
kills=5
[[ -z ${QM_TEST_LONG:-} ]] || kills=20
for format in jsonl trace; do
    rm -rf session
    python make_session session $((kills * 60)) 0.025 >rows &
    writer=$!
    follow=(--format $format --output followed --cursor-file cursor)
    rm -f followed cursor
    until [[ -s session/Log.DAT ]]; do sleep 0.01; done
    for ((kill = 0; kill < kills; ++kill)); do
        become_export "${follow[@]}" --follow &
        sleep 0.$((5 + RANDOM % 5))
        kill -9 $! && wait $! 2>/dev/null || true
        [[ $format != trace || ! -s followed ]] || python check_trace followed cut >/dev/null
    done
    wait "$writer"
    logtool_export "${follow[@]}"
    if [[ $format == jsonl ]]; then
        logtool_export --format jsonl | cmp - <(sort -t: -k5n followed) || python check_rows rows jsonl followed
    else
        logtool_export --format trace >trace
        [[ $(python check_trace followed) == "$(python check_trace trace)" ]]
    fi
done
[[ -z ${QM_TEST_LONG:-} ]] || echo "figure: export_test: $((2 * kills)) kills"

# A syslog server's file equals the export.
if ! command -v rsyslogd >/dev/null &&
    ! { [[ $EUID -eq 0 ]] && apt-get -qq install -y --no-install-recommends rsyslog; } >/dev/null 2>&1; then
    echo "the part with a syslog server is skipped: the package rsyslog cannot be had"
    exit 0
fi
while port=$((20000 + RANDOM % 12000)) && (exec 3<>"/dev/tcp/127.0.0.1/$port") 2>/dev/null; do :; done
cat >rsyslog.conf <<END
global(workDirectory="$work" maxMessageSize="2m")
module(load="imtcp" maxFrameSize="2000000")
template(name="raw" type="string" string="%rawmsg%\n")
input(type="imtcp" address="127.0.0.1" port="$port" ruleset="kept")
ruleset(name="kept") { action(type="omfile" file="$work/received" template="raw") }
END
: >told
become_export --format syslog --to-tcp "127.0.0.1:$port" 2>told & # before there is anybody
sender=$!
until grep -q 'trying again' told; do sleep 0.05; done
rsyslogd -n -f rsyslog.conf -i "$work/rsyslog.pid" 2>server.log &
server=$!
until (exec 3<>"/dev/tcp/127.0.0.1/$port") 2>/dev/null; do
    kill -0 $server || { cat server.log; exit 1; }
    sleep 0.05
done
wait $sender
logtool_export --format syslog >syslog
for ((i = 0; i < 100; ++i)); do
    ! cmp -s syslog received || exit 0
    sleep 0.1
done
cmp syslog received
