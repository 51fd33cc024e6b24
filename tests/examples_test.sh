#!/bin/bash
# Builds the examples of an installed tree as they lie there, runs them under Wine, where the windows of some would
# take the focus from other tests, or edits a CSV file by the keys of a virtual X display.
#   examples_test.sh build|run|edit PREFIX WORK_FOLDER
# Exit code 77, "skipped", where there is no virtual display.
set -euo pipefail
source=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
step=$1 prefix=$2 work=$3

if [[ $step == build ]]; then
    mkdir -p "$work/spdlog"
    ln -sfn /usr/include/spdlog /usr/include/fmt "$work/spdlog"
    cmake -S "$prefix/share/doc/QmLog/examples" -B "$work/build" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" -DSPDLOG_INCLUDE="$work/spdlog" \
        -DCMAKE_TOOLCHAIN_FILE="$prefix/lib/cmake/QmLog/mingw-w64.cmake" \
        -DCMAKE_CXX_FLAGS='-Wall -Wextra -Wshadow -Wconversion -Werror' \
        -DCMAKE_C_FLAGS='-Wall -Wextra -Wshadow -Wconversion -Wpedantic -Werror' >"$work/configure.log"
    cmake --build "$work/build" >"$work/build.log" || { cat "$work/build.log"; exit 1; }
    exit
fi

if [[ $step == edit && -z ${EXAMPLES_EDIT-} ]]; then
    for tool in xvfb-run xdotool; do
        command -v "$tool" >/dev/null || { echo "There is no $tool here"; exit 77; }
    done
    unset DISPLAY
    EXAMPLES_EDIT=1 WINE_GRAPHICS=x11 exec "$source/../tools/with-wine.sh" "$0" "$@"
fi

export WINEPATH="Z:${prefix//\//\\}\\bin"
run() { "$source/../tools/run-wine.sh" "$@"; }

if [[ $step == edit ]]; then
    edited=$work/edited
    rm -rf "$edited"
    mkdir "$edited"
    file=$edited/table.csv
    trap 'kill "${report-}" 2>/dev/null || true' EXIT

    fail() {
        echo "FAILED: $*"
        xdotool search --onlyvisible --name 'report' | while read -r window; do xdotool getwindowname "$window"; done
        exit 1
    }
    until_true() {
        local end=$((SECONDS + 30))
        until "$@"; do
            ((SECONDS < end)) || return 1
            sleep 0.05
        done
    }
    keys() { xdotool key --delay 40 "$@"; }
    has_window() { xdotool search --onlyvisible --name "$1" >/dev/null; }
    is_gone() { ! has_window "$1"; }
    until_changed() { until_true has_window '^[*].*csv - report$' || fail "line ${BASH_LINENO[0]}: nothing has changed"; }
    until_unchanged() { until_true has_window '^Z.*csv - report$' || fail "line ${BASH_LINENO[0]}: something has changed"; }
    # ask KEYS ANSWER: presses keys upon which the program asks or says something, and answers. They are lost while no
    # window has the focus, as between two questions.
    ask() {
        local end=$((SECONDS + 30)) look
        until has_window '^report$'; do
            ((SECONDS < end)) || fail "line ${BASH_LINENO[0]}: nothing is asked"
            xdotool search --onlyvisible --name 'csv - report$' windowfocus || true
            keys "$1"
            for look in {1..40}; do
                has_window '^report$' && break
                sleep 0.05
            done
        done
        keys "$2"
        until_true is_gone '^report$' || fail "line ${BASH_LINENO[0]}: the question stays"
    }
    # holds TEXT: what the file has to be; no other file is left beside it.
    holds() {
        diff <(printf "$1") "$file" || fail "line ${BASH_LINENO[0]}: the file differs"
        [[ $(ls "$edited") == table.csv ]] || fail "line ${BASH_LINENO[0]}: $(ls "$edited")"
    }
    start() {
        run "$work/build/report/report.exe" "Z:${file//\//\\}" --layout "Z:${work//\//\\}\\edit.ini" </dev/null >"$work/edit.out" 2>&1 &
        report=$!
        until_unchanged
        sleep 1 # until it has the focus, which cannot be seen
    }
    rm -f "$work/edit.ini"

    # Two cells, one with lines, an inserted row, and all else byte for byte; line ends and quotes as they were.
    head='\xEF\xBB\xBFname;size;kind\r\n'
    printf "$head"'"a ""b"" ";9;x\n"two\r\nlines";10;y\r\n\r\nlast;1' >"$file"
    start
    keys Right 1 2 Return Escape # which goes on below
    until_changed
    keys ctrl+s
    until_unchanged
    holds "$head"'"a ""b"" ";12;x\n"two\r\nlines";10;y\r\n\r\nlast;1'
    keys Left F2 ctrl+Home Delete Delete ctrl+Return b Return
    until_changed
    keys ctrl+z
    until_unchanged
    keys ctrl+y
    until_changed
    keys Insert n semicolon Return z Return Escape ctrl+s # z goes into the row below, which was empty
    until_unchanged
    holds "$head"'"a ""b"" ";12;x\n"\r\nbo\r\nlines";10;y\r\n"n;";;\r\nz\r\nlast;1'
    keys Home shift+End Delete
    until_changed
    keys ctrl+s
    until_unchanged
    holds "$head"
    keys ctrl+z ctrl+z ctrl+z ctrl+z ctrl+z ctrl+z
    until_changed
    keys ctrl+s
    until_unchanged
    holds "$head"'"a ""b"" ";9;x\n"two\r\nlines";10;y\r\n\r\nlast;1'

    # A read-only file stays as it is; so does one that another program has changed, unless the user wants it.
    chmod 444 "$file"
    keys Home F2 5 Return Escape
    ask ctrl+s Return
    chmod 644 "$file"
    holds "$head"'"a ""b"" ";9;x\n"two\r\nlines";10;y\r\n\r\nlast;1'
    printf 'a\nother\n' >"$file"
    ask ctrl+s n
    holds 'a\nother\n'
    ask alt+F4 Escape
    ask ctrl+s y
    until_unchanged
    holds "$head"'"a ""b"" ";5;x\n"two\r\nlines";10;y\r\n\r\nlast;1'
    keys ctrl+z
    ask alt+F4 y
    wait "$report" || fail "report has ended with $?"
    holds "$head"'"a ""b"" ";9;x\n"two\r\nlines";10;y\r\n\r\nlast;1'

    # A choice, by keys that are none of the menu's.
    printf 'a\ny\nx\nx\nx\ny\ny\n' >"$file"
    start
    keys F2 alt+Down Up Return Escape
    until_changed
    ask alt+F4 y
    wait "$report" || fail "report has ended with $?"
    holds 'a\nx\nx\nx\nx\ny\ny\n'

    # A file in the code page: its rows decide, and where they are ASCII the others.
    printf 'a\nM\xFCller\nx\n\xFC\n' >"$file"
    start
    keys F2 End udiaeresis Return End udiaeresis Return Escape
    until_changed
    ask alt+F4 y
    wait "$report" || fail "report has ended with $?"
    holds 'a\nM\xFCller\xFC\nx\xFC\n\xFC\n'

    # On a full disk, of 64 KiB here.
    rows=$(printf '%010000d\n' {1..8})
    printf 'a\n%s\n' "$rows" >"$file"
    trap '' XFSZ
    ulimit -f 64
    start
    keys F2 1 Return Escape
    until_changed
    ask ctrl+s Return
    holds "a\n$rows\n"
    ask alt+F4 n
    wait "$report" || fail "report has ended with $?"
    exit
fi

# A parent and its child take turns, as the guide shows.
rm -rf "$work/logs"
mkdir "$work/logs"
export QM_LOG_FOLDER="Z:${work//\//\\}\\logs\\"
run "$work/build/turns/turns.exe"
run "$prefix/bin/logtool.exe" cat --numbers |
    diff - <(sed -n '/^> turns$/,/^```$/{/^ /p}' "$source/../docs/guide.md")

# What spdlog is told, with an error in a block.
rm -rf "$work/spdlog_logs"
mkdir "$work/spdlog_logs"
QM_LOG_FOLDER="Z:${work//\//\\}\\spdlog_logs\\" run "$work/build/spdlog_sink/spdlog_sink.exe"
diff <(printf '%s\n' Started '12 jobs, 1 of them disabled' 'Job 3 failed' '[info] Done') <(cat "$work/spdlog_logs/Main.LOG"; echo)

# A C program; a line that is longer than its buffer becomes two.
rm -rf "$work/c_logs"
mkdir "$work/c_logs"
long=$(printf '%05000d' 7)
printf 'one\r\n\n%s\nlast' "$long" >"$work/c_log.txt"
QM_LOG_FOLDER="Z:${work//\//\\}\\c_logs\\" run "$work/build/c_log/c_log.exe" "$work/c_log.txt" none.txt | tr -d '\r' >"$work/c_log.out"
diff <(printf '%5d %*s%s\n' 1 0 '' Started 2 2 '' "$work/c_log.txt" 3 2 '' one 4 2 '' "${long:0:4095}" \
    5 2 '' "${long:4095}" 6 2 '' last 7 2 '' none.txt 8 2 '' 'cannot be opened'; echo) <(cat "$work/c_log.out"; echo)

# A host's own service tells its viewer what is new, and of all messages in another order.
run "$work/build/messages/messages.exe" | tr -d '\r' | diff - <(printf '%s\n' \
    '08:00  Info     Pump 1 started' '08:07  Error    Pump 2 does not start' '08:09  Warning  Level above 2.10 m' \
    '-- 3 messages' '08:07  Error    Pump 2 does not start' '08:09  Warning  Level above 2.10 m' \
    '08:00  Info     Pump 1 started')

# Quotes, what may stand between them, a short line, and bytes that a cell cannot hold.
printf '\xEF\xBB\xBFname;size\r\n"a ""b""; c";9\r\n"two\r\nlines";10\r\nbell\x07\x01;1e1\r\nnone\r\n' >"$work/sizes.csv"
csvsort() { run "$work/build/csvsort/csvsort.exe" "$@"; }
csvsort "$work/sizes.csv" size --number --desc |
    diff - <(printf 'name\tsize\ntwo lines\t10\nbell  \t1e1\na "b"; c\t9\nnone\t\n')
csvsort "$work/sizes.csv" 1 | diff - <(printf 'name\tsize\na "b"; c\t9\nbell  \t1e1\nnone\t\ntwo lines\t10\n')

printf 'a,b\n1,2\n1,2,3\n' >"$work/long.csv"
code=0
csvsort "$work/long.csv" 2>"$work/csvsort.err" || code=$?
[[ $code == 1 && $(tr -d '\r' <"$work/csvsort.err") == "csvsort: $work/long.csv: too long: row 2" ]]

# fails PROGRAM CODE WORD...: in one line that begins with the program's name.
fails() {
    code=0
    run "$work/build/$1/$1.exe" "${@:3}" 2>"$work/fails.err" || code=$?
    [[ $code == "$2" && $(wc -l <"$work/fails.err") == 1 && $(<"$work/fails.err") == "$1: "* ]]
}
fails csvsort 2
fails csvsort 2 "$work/sizes.csv" name --number --date
fails csvsort 2 "$work/sizes.csv" --desc
fails csvsort 2 "$work/sizes.csv" 3
fails gallery 1 "$work/none/gallery.bmp"
fails gallery 2 --size 1x1
fails turns 2 --childs

# What a layout says of columns, order and view is taken, and written again with what has been seen since.
report() { run "$work/build/report/report.exe" "$@"; }
printf '[Folders]\r\nSubItems=4\r\nColumns=2 130  9 9  0 222\r\nSort=2\r\nAscending=0\r\nStyles=8\r\n' >"$work/layout.ini"
report "$source" --layout "$work/layout.ini" --screenshot "$work/folder.bmp"
report "$work/sizes.csv" --layout "$work/layout.ini" --screenshot "$work/sizes.bmp" --size 640x300
tr -d '\r' <"$work/layout.ini" | sed -n 's/ *$//; /^\[/p; /^\(SubItems\|Columns=2\|Sort\|Ascending\|Styles\|Place\)/p' |
    diff - <(printf '%s\n' '[Folders]' 'SubItems=4' 'Columns=2 130  0 222' Sort=2 Ascending=0 Styles=8 'Place=100 100 900 600' \
        "[Z:${work//\//\\}\\sizes.csv]" Styles=4144 SubItems=2 Sort=-1 Ascending=1 'Place=100 100 740 400')
[[ $(stat -c %s "$work/folder.bmp" "$work/sizes.bmp" | xargs) == "$((54 + 800 * 500 * 4)) $((54 + 640 * 300 * 4))" ]]

fails report 1 "$work/none.csv"
report "$work/long.csv" --screenshot "$work/long.bmp"
printf 'a,b\n1,"2\n' >"$work/open.csv"
fails report 1 "$work/open.csv"
printf '\xFF\xFEa\0,\0b\0' >"$work/utf16.csv"
fails report 1 "$work/utf16.csv"
fails report 1 "$work/sizes.csv" --screenshot "$work/none/sizes.bmp"
fails report 1 "$work/sizes.csv" --layout "$work/none/layout.ini"
fails report 2
fails report 2 "$work/sizes.csv" --size big
