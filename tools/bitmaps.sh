#!/bin/bash
# Makes the bitmaps and icons of resources/ from the pictures drawn as text beside them. An icon has two: of 16 and of
# 32 pixels.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../resources"
for picture in *.xpm; do
    convert "$picture" -type truecolor "BMP3:${picture%.xpm}.bmp"
done
cd icons
for picture in *16.xpm; do
    name=${picture%16.xpm}
    convert "${name}32.xpm" "$picture" "$name.ico"
done
