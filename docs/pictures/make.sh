#!/usr/bin/env bash
# Draws docs/poster.jpg, the README's picture, from poster.svg and the sample photograph.
# Needs rsvg-convert (librsvg2-bin) and convert (imagemagick).
set -euo pipefail
cd "$(dirname "$0")"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp poster.svg "$work"
convert ../../art/sample/veldara-sample.jpg -resize 1500x "$work/photo.jpg"
rsvg-convert "$work/poster.svg" --output "$work/poster.png"
convert "$work/poster.png" -strip -quality 88 ../poster.jpg
