#!/usr/bin/env bash
# Draws the manual's figures (help/img/) from help/figures/ and the program's own pictures, at twice
# their size on the page so that they are sharp when printed.
# Needs rsvg-convert (librsvg2-bin) and convert (imagemagick).
set -euo pipefail
cd "$(dirname "$0")"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp figures/*.svg "$work"
convert ../art/sample/veldara-sample.jpg -resize 1152x "$work/photo.jpg"
for pad in arrow_pad arrow_pad_right; do
  rsvg-convert --width 512 "../art/pictures/$pad.svg" --output "$work/$pad.png"
done
draw() { # NAME EXTENSION
  rsvg-convert --zoom 2 "$work/$1.svg" --output "$work/$1.out.png"
  convert "$work/$1.out.png" -strip -quality 88 "img/$1.$2"
}
for name in photo_to_poster rotate_tiles numbering overlap; do draw $name jpg; done
for name in arrow_pad test_target viewing_distance; do draw $name png; done
