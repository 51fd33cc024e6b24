#!/bin/bash
# Makes the bitmaps and icons of resources/ and LogDesk from the pictures drawn as text beside them. An icon has two: of
# 16 and of 32 pixels.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../resources"
for picture in *.xpm; do
    convert "$picture" -type truecolor "BMP3:${picture%.xpm}.bmp"
done
for picture in icons/*16.xpm ../host/logdesk/icons/*16.xpm; do
    name=${picture%16.xpm}
    convert "${name}32.xpm" "$picture" "$name.ico"
done
