#!/bin/bash
# Installs a build to a fresh prefix, builds the client against it and runs the client under Wine.
#   client_test.sh BUILD_FOLDER WORK_FOLDER TOOLCHAIN_FILE
# The client's objects are kept, so that an unchanged installation is not compiled again.
set -euo pipefail
source=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build=$1 work=$2 toolchain=$3

rm -rf "$work/prefix" "$work/logs"
mkdir -p "$work/logs"
cmake --install "$build" --prefix "$work/prefix" >"$work/install.log"
cmake -S "$source/client" -B "$work/build" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$toolchain" \
    -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQmLog_DIR="$work/prefix/lib/cmake/QmLog" >"$work/configure.log"
cmake --build "$work/build"

export WINEPATH="Z:${work//\//\\}\\prefix\\bin"
export QM_LOG_FOLDER="Z:${work//\//\\}\\logs\\"
"$source/../tools/run-wine.sh" "$work/build/client.exe"
if [[ -e $work/prefix/bin/logtool.exe ]]; then
    "$source/../tools/run-wine.sh" "$work/prefix/bin/logtool.exe" verify
fi
