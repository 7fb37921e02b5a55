#!/usr/bin/env bash
# Draws the pictures of the stock workspaces with ImageMagick. They are kept in the tree, so that no build needs it.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
suite=../../Suite/Workspaces

# thumbnail FILE BACKGROUND BARCOLOUR RECTANGLES: a window with a drawing in it, and its bars.
thumbnail() {
    convert -size 192x144 "xc:$2" -fill "$3" -draw "$4" -fill white -stroke '#888888' -draw 'rectangle 64,36 150,126' \
        -fill none -stroke '#d05030' -strokewidth 3 -draw 'bezier 72,112 92,32 122,132 142,52' -strip -quality 80 "$1"
}

# icon FILE SHAPE: 16 pixels square, in one colour.
icon() {
    convert -size 16x16 xc:none -fill '#d05030' -draw "$2" -strip "ICO:$1"
}

thumbnail sources/_default/thumbnail.jpg '#3a3f47' '#5b6470' \
    'rectangle 0,0 192,22 rectangle 0,26 20,144 rectangle 164,26 192,144'
thumbnail sources/Light/thumbnail.jpg '#d8dbe0' '#9aa3b0' 'rectangle 0,0 192,12 rectangle 0,16 14,144'
thumbnail 'sources/Default(TM)/thumbnail.jpg' '#3a3f47' '#4f7fa8' 'rectangle 0,0 40,144'
thumbnail sources/Touch/thumbnail.jpg '#3a3f47' '#4fa87f' 'rectangle 0,104 56,144 rectangle 0,56 56,96 rectangle 0,8 56,48'
cp sources/_default/thumbnail.jpg "$suite/_default.jpg"
thumbnail "$suite/user_workspace.jpg" '#4a4458' '#7a6f98' 'rectangle 0,0 192,16 rectangle 0,20 18,144'

for workspace in _default Light 'Default(TM)' Touch; do
    icon "sources/$workspace/icons/curve.ico" 'bezier 1,14 4,0 12,16 15,2'
    icon "sources/$workspace/icons/page.ico" 'polygon 3,1 10,1 13,4 13,15 3,15'
done
