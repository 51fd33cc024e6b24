#!/bin/bash
# Builds the examples of an installed tree as they lie there, or runs them under Wine: the windows of some would
# take the focus from other tests.
#   examples_test.sh build|run PREFIX WORK_FOLDER
set -euo pipefail
source=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
step=$1 prefix=$2 work=$3

if [[ $step == build ]]; then
    mkdir -p "$work"
    cmake -S "$prefix/share/doc/QmLog/examples" -B "$work/build" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" \
        -DCMAKE_TOOLCHAIN_FILE="$prefix/lib/cmake/QmLog/mingw-w64.cmake" \
        -DCMAKE_CXX_FLAGS='-Wall -Wextra -Wshadow -Wconversion -Werror' >"$work/configure.log"
    cmake --build "$work/build" >"$work/build.log" || { cat "$work/build.log"; exit 1; }
    exit
fi

export WINEPATH="Z:${prefix//\//\\}\\bin"
run() { "$source/../tools/run-wine.sh" "$@"; }

# A parent and its child take turns, as the guide shows.
rm -rf "$work/logs"
mkdir "$work/logs"
export QM_LOG_FOLDER="Z:${work//\//\\}\\logs\\"
run "$work/build/turns/turns.exe"
run "$prefix/bin/logtool.exe" cat --numbers |
    diff - <(sed -n '/^> turns$/,/^```$/{/^ /p}' "$source/../docs/guide.md")

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
        "[Z:${work//\//\\}\\sizes.csv]" Styles=48 SubItems=2 Sort=-1 Ascending=1 'Place=100 100 740 400')
[[ $(stat -c %s "$work/folder.bmp" "$work/sizes.bmp" | xargs) == "$((54 + 800 * 500 * 4)) $((54 + 640 * 300 * 4))" ]]

fails report 1 "$work/none.csv"
fails report 1 "$work/long.csv"
fails report 1 "$work/sizes.csv" --screenshot "$work/none/sizes.bmp"
fails report 1 "$work/sizes.csv" --layout "$work/none/layout.ini"
fails report 2
fails report 2 "$work/sizes.csv" --size big
