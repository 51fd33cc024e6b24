#!/bin/bash
# Installs a build to a fresh prefix, builds the client and the programs of README and guide against it, and runs the
# first two under Wine. The README's session must look as it shows.
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
