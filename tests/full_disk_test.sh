#!/bin/bash
# Runs the tests of a full disk under Wine, where the disk is
#   - a limit on the size of files, on any machine and for any user;
#   - a small file system of its own, where this user may mount one.
# A name space of ours would not do for mounting: Wine's server, already running, opens the files.
#   full_disk_test.sh TEST_PROGRAM
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
. "$root/tools/wine-env.sh"
warm_wine # outside the limits below

work=$(mktemp -d)
trap 'umount "$work/disk" 2>/dev/null || true; rm -rf "$work"' EXIT
mkdir "$work/files" "$work/disk"

# run FOLDER TEST
run() {
    QM_TEST_FOLDER="Z:${1//\//\\}\\" wine "$program" --gtest_brief=1 --gtest_filter="WindowsFullDiskTest.$2"
}
program=$1

echo "Files of at most 64 KiB"
(
    trap '' XFSZ # so that writing beyond fails instead of ending the process
    ulimit -f 64
    run "$work/files" WritersAnswerFalseAndKeepTheIndexWhole
)
run "$work/files" WritingGoesOnOnceThereIsSpace

if mount -t tmpfs -o size=256k tmpfs "$work/disk" 2>/dev/null; then
    echo "A file system of 256 KiB"
    head -c 65536 /dev/zero >"$work/disk/Filler"
    run "$work/disk" WritersAnswerFalseAndKeepTheIndexWhole
    run "$work/disk" WritingGoesOnOnceThereIsSpace
else
    echo "This user may not mount a file system: the limit alone has to do"
fi
