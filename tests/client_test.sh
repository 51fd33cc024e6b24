#!/bin/bash
# Installs a build to a fresh prefix, builds the client, the programs of README and guide and the examples against it,
# and runs all but the guide's under Wine. The README's session must look as it shows.
#   client_test.sh BUILD_FOLDER WORK_FOLDER TOOLCHAIN_FILE
# The client's objects are kept, so that an unchanged installation is not compiled again.
set -euo pipefail
source=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build=$1 work=$2 toolchain=$3

rm -rf "$work/prefix" "$work/logs"
mkdir -p "$work/logs"
cmake --install "$build" --prefix "$work/prefix" >"$work/install.log"
readme=$source/../README.md

# program_of DOCUMENT NAME: the C++ program in a document, as a source file that changes only with it.
program_of() {
    sed -n '/^```cpp$/,/^```$/{/^```/!p}' "$1" >"$work/$2.cpp.new"
    cmp -s "$work/$2.cpp.new" "$work/$2.cpp" || mv "$work/$2.cpp.new" "$work/$2.cpp"
}
program_of "$readme" readme
program_of "$source/../docs/guide.md" guide
cmake -S "$source/client" -B "$work/build" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$toolchain" \
    -DCMAKE_BUILD_TYPE=RelWithDebInfo -DREADME_PROGRAM="$work/readme.cpp" -DGUIDE_PROGRAM="$work/guide.cpp" \
    -DQmLog_DIR="$work/prefix/lib/cmake/QmLog" >"$work/configure.log"
cmake --build "$work/build"

export WINEPATH="Z:${work//\//\\}\\prefix\\bin"
export QM_LOG_FOLDER="Z:${work//\//\\}\\logs\\"
run() { "$source/../tools/run-wine.sh" "$@"; }
run "$work/build/client.exe"
run "$work/prefix/bin/logtool.exe" verify

export QM_LOG_FOLDER="Z:${work//\//\\}\\readme_logs"
rm -rf "$work/readme_logs"
run "$work/build/readme.exe"
{ run "$work/prefix/bin/logtool.exe" cat --numbers; echo; } | diff - <(sed -n '/^```text$/,/^```$/{/^```/!p}' "$readme")

# Run again, the program goes on in lines of its own, and its blocks leave no blank row.
run "$work/build/readme.exe"
[[ $({ run "$work/prefix/bin/logtool.exe" cat; echo; } | wc -l) == 14 ]]
run "$work/prefix/bin/logtool.exe" verify | grep -qx '2 logs, 14 rows: no damage'

# A parent and its child take turns.
rm -rf "$work/readme_logs"
run "$work/build/turns/turns.exe"
{ run "$work/prefix/bin/logtool.exe" cat --numbers; echo; } |
    diff - <(sed -n '/^> turns$/,/^```$/{/^ /p}' "$source/../docs/guide.md")

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

# What a layout says of columns, order and view is taken, and written again with what has been seen since.
report() { run "$work/build/report/report.exe" "$@"; }
printf '[Folders]\r\nSubItems=4\r\nColumns=2 130  9 9  0 222\r\nSort=2\r\nAscending=0\r\nStyles=8\r\n' >"$work/layout.ini"
report "$source" --layout "$work/layout.ini" --screenshot "$work/folder.bmp"
report "$work/sizes.csv" --layout "$work/layout.ini" --screenshot "$work/sizes.bmp" --size 640x300
tr -d '\r' <"$work/layout.ini" | sed -n 's/ *$//; /^\[/p; /^\(SubItems\|Columns=2\|Sort\|Ascending\|Styles\|Place\)/p' |
    diff - <(printf '%s\n' '[Folders]' 'SubItems=4' 'Columns=2 130  0 222' Sort=2 Ascending=0 Styles=8 'Place=100 100 900 600' \
        "[Z:${work//\//\\}\\sizes.csv]" Styles=48 SubItems=2 Sort=-1 Ascending=1 'Place=100 100 740 400')
[[ $(stat -c %s "$work/folder.bmp" "$work/sizes.bmp" | xargs) == "$((54 + 800 * 500 * 4)) $((54 + 640 * 300 * 4))" ]]

# report_fails CODE WORD...: with a reason.
report_fails() {
    code=0
    report "${@:2}" 2>"$work/report.err" || code=$?
    [[ $code == "$1" ]] && grep -q '^report: ' "$work/report.err"
}
report_fails 1 "$work/none.csv"
report_fails 1 "$work/long.csv"
report_fails 1 "$work/sizes.csv" --screenshot "$work/none/sizes.bmp"
report_fails 1 "$work/sizes.csv" --layout "$work/none/layout.ini"
report_fails 2
report_fails 2 "$work/sizes.csv" --size big
