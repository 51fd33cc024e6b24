#!/bin/bash
# Drives LogDesk from outside, by the keys and the mouse of a virtual X display, and reads what it shows.
#   desk_test.sh BIN_FOLDER
# Exit code 77, "skipped", where there is no virtual display.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
bin=$1

if [[ -z ${DESK_TEST_RUNS-} ]]; then
    for tool in xvfb-run xdotool xclip; do
        command -v "$tool" >/dev/null || { echo "There is no $tool here"; exit 77; }
    done
    unset DISPLAY
    DESK_TEST_RUNS=1 WINE_GRAPHICS=x11 exec "$root/tools/with-wine.sh" "$0" "$@"
fi
. "$root/tools/wine-env.sh"

work=$(mktemp -d)
trap 'kill "${desk-}" 2>/dev/null || true; umount "$work/only-read" 2>/dev/null || true; rm -rf "$work"' EXIT
QM_PROFILE=$(windows_path "$work/Profile.ini")
export QM_PROFILE
session="$work/Größe 日志 Журнал"

fail() {
    echo "FAILED: $*"
    probe || true
    exit 1
}

logtool() { wine "$bin/logtool.exe" --folder "$(windows_path "$session")" "$@"; }
probe() { wine "$bin/desk_probe.exe" LogDeskFrame | tr -d '\r'; }

# until_true COMMAND...: tries it again and again, for so long that a busy machine gets there, too.
until_true() {
    local end=$((SECONDS + 30))
    until "$@"; do
        ((SECONDS < end)) || return 1
        sleep 0.05
    done
}

# until_shown PATTERN: waits until a line of the window's state matches.
is_shown() {
    shown=$(probe || true)
    grep -qE -- "$1" <<<"$shown"
}
until_shown() { until_true is_shown "$1" || fail "$1 is not shown"; }

# start OPTION...: LogDesk, in the foreground once this returns.
start() {
    wine "$bin/LogDesk.exe" "$@" </dev/null >"$work/output" 2>&1 &
    desk=$!
    until_shown "^title: .*LogDesk$"
    until_shown '^msctls_statusbar32 .* visible$' # the window itself, which has a title before it shows
}

# Presses Alt+F4, which is lost where the focus is with none; true once LogDesk has ended.
ends() {
    keys alt+F4
    for _ in {1..40}; do
        [[ -d /proc/$desk ]] || return 0
        sleep 0.05
    done
    refocus
    return 1
}

# LogDesk ends by Alt+F4 and answers 0.
leave() {
    local code=0
    until_true ends || fail "LogDesk does not end"
    wait "$desk" || code=$?
    ((code == 0)) || fail "LogDesk ended with $code"
}

keys() { xdotool key --delay 20 "$@"; }

# until_copied PATTERN: waits until Ctrl+C has brought such a text to the clipboard.
is_copied() {
    copied=$(xclip -o -selection clipboard 2>/dev/null || true)
    [[ $copied == $1 ]]
}
until_copied() {
    keys ctrl+c
    until_true is_copied "$1" || fail "copied: $copied"
}

is_nowhere() { [[ -z $(probe) ]]; }

gone() { ! xdotool search --onlyvisible --name "$1" >/dev/null; }

# Presses Enter in windows of this name; true once there is none.
dismissed() {
    gone "$1" && return
    keys Return
    return 1
}

# click X Y [BUTTON [CLASS]]: relative to the window of the class, the text window.
click() {
    local left top rest
    read -r left top rest < <(sed -n "s/^${4-QmTextCtrl} \([0-9 ]*\) visible$/\1/p" <<<"$shown")
    xdotool mousemove "$((left + $1))" "$((top + $2))" click "${3-1}"
}

# After a dialog: where nobody manages windows, now and then the focus is left to none. A click gives it back.
refocus() {
    is_shown . && click 30 10 1 msctls_statusbar32
}

echo "Opened: the session's rows, none deleted"
mkdir "$session"
printf 'Load the jobs\n' | logtool write Main
printf 'first job\nsecond job\nthird job' | logtool write Run --block 'The jobs'
printf 'the depot does not answer' | logtool write Main --kind error --block 'Copy failed'
listing() { find "$session" -printf '%f %s %t\n' | sort; }
before=$(listing)
start "$(windows_path "$session")"
until_shown '^title: Z:.*\\Größe 日志 Журнал - LogDesk$'
until_shown '^pane: 7 rows'

echo "All logs: blocks fold, the time of one block is shown, each log has its tab, and the place stays"
keys ctrl+Home Down space
until_shown '^pane: 4 rows'
keys space alt+Down
until_shown '^pane: Row 6: Main, number 6$'
keys Up
until_shown '^pane: Row 5: Run, number 5$'
keys Up
until_shown '^pane: Row 4: Run, number 4$'
keys ctrl+b
until_shown '^pane: 4 rows'
until_shown '^pane: Row 3: Run, number 4$'
keys ctrl+b
until_shown '^pane: 7 rows'
keys alt+3 alt+2
until_shown '^pane: 4 rows'
until_shown '^pane: Row 3: Run, number 4$'
keys alt+shift+Down
until_shown '^pane: Row 6: Main, number 6$'
keys alt+1
until_shown '^pane: Row 2: Main, number 6$'
until_shown '^pane: 3 rows'

echo "Keys: the caret's row unfolds and folds, the error is found"
keys ctrl+Home space
until_shown '^pane: 7 rows'
keys space
until_shown '^pane: 3 rows'
keys alt+Down
until_shown '^pane: Row 2: Main, number 6$'
keys Up # which would go into the menu bar had Alt opened it
until_shown '^pane: Row 1: '

echo "Mouse: a click on the fold mark unfolds"
click 46 7
until_shown '^pane: 7 rows'

echo "A text is found where it is folded away, in small letters as it was typed; F3 goes on and round"
keys ctrl+Home space
until_shown '^pane: 3 rows'
keys ctrl+f
xdotool type --delay 20 'JOB'
keys F3 F3
until_shown '^pane: Row 2: Run, number 2$'
keys F3 F3 F3
until_shown '^pane: Row 5: Run, number 5$'
keys F3
until_shown '^pane: Row 1: Main, number 1$'
keys Escape

echo "The find bar takes its keys for itself; the text is found in an unfolded row"
keys ctrl+Home ctrl+f
xdotool type --delay 20 'third job'
keys Return
until_shown '^pane: Row 5: Run, number 5$'
keys Escape

echo "The selection as text, through the clipboard"
until_copied 'third job'
keys ctrl+a
until_copied '*'$'Load the jobs\nThe jobs\nfirst job\nsecond job\nthird job''*Copy failed*'

echo "As an excerpt, whose lines lead back to their rows"
keys ctrl+Home Down Down ctrl+shift+c
until_true is_copied $'  Run     #2    The jobs\n  Run     #3    first job' || fail "copied: $copied"
keys ctrl+End ctrl+g
until_true xdotool search --name '^Go To$' >/dev/null || fail "no dialog"
keys ctrl+v Return
until_shown '^pane: Row 2: Run, number 2$'
refocus

echo "Messages: each row is one, and leads to its row and back"
until_shown '^pane: 7 messages$'
keys F6
until_shown '^pane: Rows:7'
keys Home Down Down ctrl+Return
until_shown '^pane: Row 3: Run, number 3$'
keys Down ctrl+Return
until_shown '^pane: Rows:7 . Selected:1 . Current:3$'
keys Home alt+Down
until_shown '^pane: Rows:7 . Selected:1 . Current:5$'
keys shift+F6
until_shown '^pane: Following paused$' # at a row that was gone to
keys ctrl+End
until_shown '^pane: Following$'

[[ $(listing) == "$before" ]] || fail "looking has changed the folder"

echo "Another program writes: the rows come, and the last one into view"
printf '%s\n' {1..60} | logtool write Main
until_shown '^pane: 67 rows'

echo "Following pauses while scrolled up, unless the menu says otherwise, by mouse and keys"
until_shown '^pane: Following$'
click 100 100 4
until_shown '^pane: Following paused$'
click 15 -12 1 ToolbarWindow32
keys Right Right Right Right p
until_shown '^pane: Following$'
click 100 100 4
until_shown '^pane: Following$'

until_shown '^pane: 67 messages$'

echo "The tool bar: its buttons act on the pane with the focus, and it goes"
keys ctrl+Home
until_shown '^pane: Row 1: '
click 147 12 1 ToolbarWindow32
until_shown '^pane: Row 6: Main, number 6$'
keys alt+v t
until_shown '^ToolbarWindow32 .* hidden$'

echo "Zoom, colours: by keys and menu, whose access keys work in the dark; as the system's change; remembered"
themes='HKCU\Software\Microsoft\Windows\CurrentVersion\Themes\Personalize'
system_colours() {
    wine reg add "$themes" /f /v AppsUseLightTheme /t REG_DWORD /d "$1" >/dev/null
    wine "$bin/desk_probe.exe" LogDeskFrame settings
}
keys ctrl+equal ctrl+equal ctrl+equal ctrl+minus
until_shown '^bar: light$'
system_colours 0
until_shown '^bar: dark$'
keys alt+v g
until_shown '^bar: light$'
system_colours 1
keys alt+v d
until_shown '^bar: dark$'

echo "The watch: the latest error, which Enter opens and Delete takes away"
until_shown '^pane: 2 errors$'
until_shown '^QmLogWatch .* visible$'
keys F6 F6 Return
until_true xdotool search --name '^Log Message$' >/dev/null || fail "no message"
keys Escape
until_true gone '^Log Message$' || fail "the message stays"
refocus
keys Delete
until_shown '^pane: No errors$'
until_shown '^QmLogWatch .* hidden$'

leave
grep -q '^Zoom=2' "$work/Profile.ini" || fail "the zoom is not remembered"
grep -q '^Colours=2' "$work/Profile.ini" || fail "the colours are not remembered"
sed -i '/^Zoom=/d; /^Colours=/d' "$work/Profile.ini"
grep -q '^ToolBar=0' "$work/Profile.ini" || fail "the tool bar is not remembered"
sed -i 's/^ToolBar=0/ToolBar=1/' "$work/Profile.ini"
grep -q '^FollowPauses=0' "$work/Profile.ini" || fail "the option is not remembered"
sed -i 's/^FollowPauses=0/FollowPauses=1/' "$work/Profile.ini"

echo "A file: the caret on its log's first row, on its tab"
start "$(windows_path "$session/Run.ROW")"
until_shown '^pane: Row 1: Run, number 2$'
until_shown '^pane: Not following$'
leave

echo "A folder looked at in every way, and one that nobody can write into: nothing changes"
only_read=$work/only-read
mkdir "$only_read"
may_mount=
mount -t tmpfs tmpfs "$only_read" 2>/dev/null && may_mount=1
find "$session" -maxdepth 1 -type f -exec cp -p {} "$only_read" \;
mkdir "$only_read/SQL.ROW" # cannot be read
listing_of() { find "$1" -printf '%P %s %t %m\n' | sort; }
for writable in yes no; do
    if [[ $writable == no ]]; then
        chmod -R a-w "$only_read"
        [[ -z $may_mount ]] || mount -o remount,ro "$only_read"
    fi
    before=$(listing_of "$only_read")
    start "$(windows_path "$only_read")"
    until_shown '^pane: 67 rows'
    keys ctrl+Home ctrl+b alt+1 space Return alt+Down ctrl+Down ctrl+Next ctrl+Return shift+F6 ctrl+a ctrl+c alt+1 alt+5
    until_shown '^pane: 67 messages$'
    leave
    [[ $(listing_of "$only_read") == "$before" ]] || fail "looking has changed the folder"
done
[[ -z $may_mount ]] || umount "$only_read"
rm -rf "$only_read"

listed=$(listing)
echo "Several windows: of the same session beside each other, of another one in its place; numbers in groups"
start "$(windows_path "$session")"
first=$(sed -n 's/^QmTextCtrl \([0-9]*\) .*/\1/p' <<<"$shown")
keys ctrl+n
is_beside() { is_shown '^QmTextCtrl ' && [[ $(sed -n 's/^QmTextCtrl \([0-9]*\) .*/\1/p' <<<"$shown") -gt $first ]]; }
until_true is_beside || fail "no second window"
until_shown '^msctls_statusbar32 .* visible$'
keys alt+F4
until_true is_shown "^QmTextCtrl $first " || fail "the second window stays"
refocus
keys alt+f w
read -r left top right bottom < <(sed -n 's/^msctls_statusbar32 \([0-9 ]*\) visible$/\1/p' <<<"$shown")
xdotool mousemove "$((right - 3))" "$((bottom + 2))" mousedown 1 mousemove "$((left + 20))" 20 mouseup 1
is_least() {
    is_shown . || return 1
    read -r left top right bottom < <(sed -n 's/^msctls_statusbar32 \([0-9 ]*\) visible$/\1/p' <<<"$shown")
    ((right - left < 880 && right - left > 600 && bottom < 600)) &&
        [[ $(awk '/^(QmTextCtrl|QmReportCtrl) / { print ($5 - $3 > 25) }' <<<"$shown") == $'1\n1' ]]
}
until_true is_least || fail "not the least size"
leave
for word in Width Height; do sed -i "s/^$word=.*/$word=0/" "$work/Profile.ini"; done # back to the first size
mkdir "$work/long"
printf '%s\n' {1..1200} | wine "$bin/logtool.exe" --folder "$(windows_path "$work/long")" write Main
wine reg add 'HKCU\Control Panel\International' /f /v sThousand /d "'" >/dev/null
start "$(windows_path "$work/long")"
until_shown "^pane: 1'200 rows$" # as the system's settings have it
until_shown "^pane: 1'200 messages$"
wine reg delete 'HKCU\Control Panel\International' /f /v sThousand >/dev/null
keys alt+f Down Down Down Down Down Down Down Down Return # the session before this one
until_shown '^title: .*Журнал - LogDesk$'
until_shown '^msctls_statusbar32 .* visible$'
until_true is_shown "^QmTextCtrl $first " || fail "not in the place of the other"
until_true test ! -d "/proc/$desk" || fail "the other window stays"
keys alt+f w
keys alt+F4
until_true is_nowhere || fail "the window stays"
grep -q '^OpenHere=0' "$work/Profile.ini" || fail "the option is not remembered"

echo "Go To: numbers, rows of logs and shown rows; errors in place; the last one is offered"
dialog() { wine "$bin/desk_probe.exe" '#32770' | tr -d '\r'; }
is_in_dialog() { dialog | grep -qE -- "$1"; }
until_in_dialog() { until_true is_in_dialog "$1" || { dialog; fail "$1 is not in the dialog"; }; }
start "$(windows_path "$session")"
until_shown '^pane: 67 rows'
keys ctrl+g
until_in_dialog '^title: Go To$'
xdotool type --delay 20 'SQL 1'
keys Return
until_in_dialog '^text: SQL has 0 rows$'
xdotool type --delay 20 '99999'
keys Return
until_in_dialog '^text: No row of the logs has the number 99999$'
xdotool type --delay 20 '#4'
keys Return
until_shown '^pane: Row 4: Run, number 4$'
until_true gone '^Go To$' || fail "the dialog stays"
refocus
keys F6 ctrl+g
until_in_dialog '^text: #4$'
xdotool type --delay 20 'row 60'
keys Return
until_shown '^pane: Row 60: Main, number 60$'
until_true gone '^Go To$' || fail "the dialog stays"

echo "Bookmarks: set, gone to, listed, removed; kept for the session, but not in its folder"
refocus
keys ctrl+F2 ctrl+g
until_in_dialog '^title: Go To$'
xdotool type --delay 20 'run 2'
keys Return
until_shown ': Run, number 3$'
until_true gone '^Go To$' || fail "the dialog stays"
refocus
keys ctrl+F2 F2
until_shown ': Main, number 60$'
keys F2
until_shown ': Run, number 3$'
keys shift+F2
until_shown ': Main, number 60$'
leave
[[ $(listing) == "$listed" ]] || fail "bookmarks have changed the folder"
start "$(windows_path "$session")"
until_shown '^pane: 67 rows'
keys ctrl+Home F2
until_shown ': Run, number 3$'
keys alt+i k
until_in_dialog '^item: 3  Run: first job *$'
until_in_dialog '^item: 60  Main: 53 *$'
keys alt+r Return
until_shown ': Main, number 60$'
until_true gone '^Bookmarks$' || fail "the dialog stays"
refocus
keys F2
until_shown ': Main, number 60$' # the only one
leave
start "$(windows_path "$work/long")"
until_shown '^pane: 1,200 rows$'
keys ctrl+Home
click 4 24 # where the second row has its bookmark
keys F2
until_shown '^pane: Row 2: '
printf 'another\nsession' | wine "$bin/logtool.exe" --folder "$(windows_path "$work/new")" write Main
cp "$work/new/"{Log.DAT,Main.LOG,Main.ROW} "$work/long" # which begins in the same folder
until_shown '^pane: 2 rows$'
is_forgotten() {
    keys ctrl+Home F2
    sleep 0.3
    is_shown '^pane: Row 1: '
}
until_true is_forgotten || fail "a bookmark of the earlier session"
leave

echo "A text log: its messages, filtered, sorted, followed and never changed"
text_log=$work/приложение.txt
printf '2026-03-01 10:00:01 INFO [main] work 1%s\n' "$(printf ' and more%.0s' {1..40})" >"$text_log"
for i in {2..9}; do
    printf '2026-03-01 10:00:0%d INFO [main] work %d\n' "$i" "$i"
done >>"$text_log"
printf '2026-03-01 10:00:10 ERROR [main] broken\n' >>"$text_log"
before=$(cat "$text_log")
start "$(windows_path "$text_log")"
until_shown '^title: Z:.*\\приложение.txt - LogDesk$'
until_shown '^pane: Rows:10$'
keys Up # from the last message, which is followed
until_shown '^pane: Rows:10 . Selected:1 . Current:8$'
keys alt+m y
until_shown '^pane: 1 of 10, filtered$'
keys alt+m t
until_shown '^pane: 10 messages$'
read -r left top _ < <(sed -n 's/^SysHeader32 \([0-9 ]*\) visible$/\1/p' <<<"$shown")
keys Home
xdotool mousemove "$((left + 170))" "$((top + 26))" click 3 # the level in the first row
keys i
until_true xdotool search --name '^Edit Filter$' >/dev/null || fail "no dialog"
keys Return
until_shown '^pane: 9 of 10, filtered$'
filters_go() {
    refocus
    keys alt+m t
    sleep 0.5
    is_shown '^pane: 10 messages$'
}
until_true filters_go || fail "the filter stays"
keys Home alt+Down
until_shown '^pane: Rows:10 . Selected:1 . Current:9$'
xdotool mousemove "$((left + 430))" "$((top + 26))" # the body in the first row, which is cut off
until_true xdotool search --onlyvisible --name '^work 1 and more' >/dev/null || fail "no tip"
xdotool click 1
until_shown '^pane: Rows:10 . Selected:1$' # through the tip
gone '^work 1 and more' || fail "the tip stays"
keys alt+Down
until_shown '^pane: Rows:10 . Selected:1 . Current:9$'
for place in 9 0; do # the highest level last, then first: the row of the message, which stays focused
    xdotool mousemove "$((left + 230 - 5 * place))" "$((top + 8))" click 1 # apart, or it would be a double click
    until_shown "^pane: Rows:10 . Selected:1$([[ $place == 0 ]] || echo " . Current:$place")$"
done
keys alt+Down alt+Up
until_shown '^notice: There is no error before this message$'
[[ $(cat "$text_log") == "$before" ]] || fail "looking has changed the file"
printf '2026-03-01 10:00:11 INFO [main] again\n' >>"$text_log"
until_shown '^pane: 11 messages$'
keys Delete
until_shown '^pane: 0 messages, 11 cleared$'
leave
start
keys alt+f 1
until_shown '^title: Z:.*\\приложение.txt - LogDesk$'
keys alt+f s
until_shown '^title: .*Logs - LogDesk$'
keys ctrl+o
until_true xdotool search --name '^Open$' >/dev/null || fail "no dialog"
printf '%s' "$(windows_path "$text_log")" | xclip -i -selection clipboard # keys are those of one keyboard
keys ctrl+v
keys Return
until_shown '^title: Z:.*\\приложение.txt - LogDesk$'
rm "$text_log"
leave
start
keys alt+f 1
until_shown '^notice: .*приложение.txt: no such file'
leave
grep -q 'приложение.txt' "$work/Profile.ini" && fail "a file that is gone is remembered"

echo "The errors of a text log: found, and exported in three forms that other programs read back"
text_log=$work/hostile.txt
number=0
for text in 'a, "b"' ']]> <&> =1+1' $'tab\there \x01' $'gr\xc3\xb6\xc3\x9fe' $'two\n  lines'; do
    printf '2026-03-01 10:00:0%d ERROR [main] %s\n' "$((++number))" "$text"
done >"$text_log"
printf '2026-03-01 10:00:06 INFO [main] left out\n' >>"$text_log"
start "$(windows_path "$text_log")"
until_shown '^pane: Rows:6$'
keys Up alt+m y
until_shown '^pane: 5 of 6, filtered$'
keys Home ctrl+f
until_true xdotool search --name '^Find$' >/dev/null || fail "no window to find"
xdotool type --delay 20 'LINES'
keys Return
until_shown '^pane: Rows:5 . Selected:1 . Current:4$'
keys Escape
refocus
for form in txt csv xml; do
    keys ctrl+a alt+e
    until_true xdotool search --name '^Export file$' >/dev/null || fail "no dialog"
    xdotool type --delay 10 "$(windows_path "$work/messages.$form")"
    keys Return
    until_true test -e "$work/messages.$form" || fail "nothing is exported as $form"
done
until_true xdotool search --onlyvisible --name '^Export file$' >/dev/null || fail "what was replaced is not told"
until_true dismissed '^Export file$' || fail "the notice stays"
refocus
until_copied '*ERROR*two*lines'
keys alt+f a
until_true xdotool search --name '^Save messages$' >/dev/null || fail "no dialog"
xdotool type --delay 10 "$(windows_path "$work/kept")"
keys Return
until_shown '^notice: 6 messages are saved in Z:.*kept.zemalog$'
refocus
leave
[[ $(wine "$bin/logtool.exe" messages "$(windows_path "$work/kept.zemalog")" | wc -l) == 7 ]] || fail "not all is saved"
xmllint --noout "$work/messages.xml"
python3 - "$work/messages" <<'PYTHON'
import csv, sys
from xml.etree import ElementTree

texts = ['a, "b"', "]]> <&> =1+1", "tab\there \x01", "größe", "two\r\n  lines"]
wanted = [[f"2026-03-01 10:00:0{n}", "ERROR", "main", text] for n, text in enumerate(texts, 1)]
rows = list(csv.reader(open(sys.argv[1] + ".csv", encoding="utf-8-sig", newline="")))
assert rows == wanted, (rows, wanted)
messages = ElementTree.parse(sys.argv[1] + ".xml").getroot()
assert messages.attrib == {"fields": "Timestamp Level Topic Body"}, messages.attrib
rows = [[field.text for field in message] for message in messages]
assert rows == [[field.replace("\x01", "\ufffd") for field in row] for row in wanted], rows
text = open(sys.argv[1] + ".txt", encoding="utf-8", newline="").read()
assert text == "".join("\t".join(row) + "\n" for row in wanted), text
PYTHON

echo "Logs that are not shown are told of, as soon as they come"
QM_LOG_FOLDER=$(windows_path "$work/other") start
until_shown '^notice: There are no logs in Z:.*other yet'
session=$work/other
printf 'compiling' | logtool write Build
until_shown '^notice: Build is among the messages only'
printf 'first\nsecond' | logtool write SQL
until_shown '^pane: 2 rows'
keys alt+1
until_shown '^notice: Main has no rows, .* SQL \(2 rows\)'
printf 'main' | logtool write Main
until_shown '^notice: Not in this view, because they are older than the first row of Main: 2 rows of SQL'

echo "What lies behind Main's last row: told by the status bar, which leads there, as a key does"
printf 'third' | logtool write SQL
until_shown '^pane: Session opened. 1 row after Main'
click 110 10 1 msctls_statusbar32
until_shown '^pane: Row 4: SQL, number '
keys alt+1
until_shown '^pane: Row 1: Main, '
keys ctrl+m
until_shown '^pane: Row 4: SQL, number '
python3 - >"$session/Log.TIM" <<'PYTHON'
import struct, sys

for number, time in (1, 2), (2, 1):
    words = (number, time, 0, number - 1 | 1 << 16)
    check = 0x811C9DC5
    for word in words:
        check = (check ^ word) * 0x01000193 & 0xFFFFFFFF
    sys.stdout.buffer.write(struct.pack("<5I", *words, check))
PYTHON
until_shown '^The clock was set back at number 2: '
rm -r "$session"
until_shown '^notice: Z:.*other is not there, or cannot be read'
leave
session="$work/Größe 日志 Журнал"


echo "Expand All that ends early says so"
mkdir "$work/early"
python3 - "$work/early" <<'PYTHON'
import struct, sys

logs = {"Main": [1, 502], "Source": [], "Run": [], "SQL": []}
for number in range(500):
    logs[["Source", "Run", "SQL", "Source", "SQL"][number % 5]].append(number + 2)
for log, numbers in logs.items():
    with open(f"{sys.argv[1]}/{log}.LOG", "w") as text, open(f"{sys.argv[1]}/{log}.ROW", "wb") as rows:
        text.write("x\n" * len(numbers))
        for row, number in enumerate(numbers):
            rows.write(struct.pack("<IB3xIB3xI", 2 * row, 0, 0, 1, number))
open(f"{sys.argv[1]}/Log.DAT", "wb").write(struct.pack("<IB3x", 502, 0))
PYTHON
start "$(windows_path "$work/early")"
until_shown '^pane: 502 messages$'
keys alt+1 ctrl+Home Return
until_shown '^pane: "Expand All" has ended early: up to [0-9,]* rows may be folded$'
keys space
until_shown '^pane: 2 rows$'
until_shown '^pane: Session opened'
leave

echo "A new session; the earlier one is kept, and another LogDesk does not delete it"
start --start "$(windows_path "$session")" --keep 1
until_shown '^pane: Session started$'
keys ctrl+Home F2 Down # no bookmark of the earlier session
until_shown '^pane: Row 2: '
! grep -q '^notice: No row' <<<"$shown" || fail "a bookmark of the earlier session"
cmp <(cat "$session"/Session*/Main.LOG | head -c 13) <(printf 'Load the jobs') || fail "the session is not kept"
printf 'written meanwhile' | logtool write Service
wine "$bin/LogDesk.exe" --start "$(windows_path "$session")" --screenshot "$(windows_path "$work/a.bmp")"
[[ $(logtool cat --log Service) == 'written meanwhile' ]] || fail "the session was started again"
leave

echo "While a program is writing, no session is started and nothing deleted"
mkfifo "$work/pipe"
logtool write Service <"$work/pipe" &
writer=$!
exec 3>"$work/pipe"
printf '\nstill writing' >&3
until_true grep -q 'still writing' "$session/Service.LOG"
start --start "$(windows_path "$session")" --keep 1 3>&- # or it would keep the pipe open
until_shown '^title: .* \(no session started\) - LogDesk$'
exec 3>&-
wait "$writer" || fail "writing has failed"
grep -q 'still writing' "$session/Service.LOG" || fail "the log was deleted"
leave
