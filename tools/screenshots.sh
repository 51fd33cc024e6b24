#!/bin/bash
# Makes the pictures in docs/screenshots from the sample session.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
"$root/tools/setup.sh"
"$root/tools/build.sh" windows LogDesk runtime_dlls

# A drive of its own, so that the title shows a plain folder.
. "$root/tools/wine-env.sh"
work=$(mktemp -d)
trap 'rm -f "$WINEPREFIX/dosdevices/l:"; rm -rf "$work"' EXIT
mkdir "$work/Logs"
ln -sfn "$work" "$WINEPREFIX/dosdevices/l:"

# picture NAME STEPS: of a fresh session.
picture() {
    "$root/tools/run-wine.sh" "$root/build/windows/bin/LogDesk.exe" --folder 'L:\Logs' \
        --screenshot "L:\\$1.bmp" --steps "size:760x420,sample,$2"
    convert "$work/$1.bmp" -strip -define png:compression-level=9 "$root/docs/screenshots/$1.png"
}
mkdir -p "$root/docs/screenshots"
picture opened home
picture unfolded home,next-fold,unfold-all,next-fold,unfold-all
picture found 'home,next-fold,unfold-all,next-fold,unfold-all,find:sql 2'
picture error home,next-error
