#!/usr/bin/env bash
# Makes veldara.ico, the icon that Windows shows for the program file, out of the two SVG icons.
# Needs rsvg-convert (librsvg2-bin) and icotool (icoutils).
set -euo pipefail
cd "$(dirname "$0")"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
for size in 16 20 24; do
  rsvg-convert --width $size --height $size icon_small.svg --output "$work/$size.png"
done
for size in 32 40 48 64 128 256; do
  rsvg-convert --width $size --height $size icon.svg --output "$work/$size.png"
done
icotool --create --output veldara.ico "$work"/{16,20,24,32,40,48,64,128}.png --raw "$work/256.png"
