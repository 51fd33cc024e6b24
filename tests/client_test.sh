#!/bin/bash
# Installs a build to a fresh prefix, builds the client and the README's program against it and runs both under
# Wine. The program's session must look as the README shows it.
#   client_test.sh BUILD_FOLDER WORK_FOLDER TOOLCHAIN_FILE
# The client's objects are kept, so that an unchanged installation is not compiled again.
set -euo pipefail
source=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build=$1 work=$2 toolchain=$3

rm -rf "$work/prefix" "$work/logs"
mkdir -p "$work/logs"
cmake --install "$build" --prefix "$work/prefix" >"$work/install.log"
readme=$source/../README.md
sed -n '/^```cpp$/,/^```$/{/^```/!p}' "$readme" >"$work/readme.cpp.new"
cmp -s "$work/readme.cpp.new" "$work/readme.cpp" || mv "$work/readme.cpp.new" "$work/readme.cpp"
cmake -S "$source/client" -B "$work/build" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$toolchain" \
    -DCMAKE_BUILD_TYPE=RelWithDebInfo -DREADME_PROGRAM="$work/readme.cpp" \
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
