#!/bin/bash
# Makes the bitmaps of resources/ from the pictures drawn as text beside them.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../resources"
for picture in *.xpm; do
    convert "$picture" -type truecolor "BMP3:${picture%.xpm}.bmp"
done
