#!/usr/bin/env bash
# Makes the same posters with the Linux and the Windows program: every file is the same, byte for byte,
# and so is the plan but for the separators in paths.
#
#   same_tiles.sh LINUX_PROGRAM WINDOWS_COMMAND...
set -euo pipefail

linux="$1"
shift
windows=("$@")
[[ -x "$linux" ]] || {
  echo "same_tiles: build the release preset first, $linux is not there" >&2
  exit 1
}
seeds="$(cd "$(dirname "${BASH_SOURCE[0]}")/../../fuzz/corpus" && pwd)"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
cd "$work"

convert "$VELDARA_SAMPLE" -resize 1200x900! -quality 92 small.jpg
convert small.jpg -resize 300x200! tiny.bmp
convert small.jpg -compress LZW strips.tif
convert small.jpg -define tiff:tile-geometry=128x128 -compress Zip -depth 16 deep.tif
convert small.jpg -colorspace CMYK -quality 90 press.jpg
convert small.jpg -interlace Plane -colorspace Gray grey.jpg
convert small.jpg -alpha set -channel A -evaluate set 60% transparent.tif
# A library for every kind, and one that is loaded when it is needed.
convert small.jpg small.png
convert small.jpg -depth 16 -interlace PNG -alpha set -channel A -evaluate set 60% deep.png
cwebp -quiet -q 85 small.jpg -o lossy.webp
cwebp -quiet -lossless -resize 400 300 small.jpg -o lossless.webp
heif-enc -q 80 small.jpg -o phone.heic >/dev/null 2>&1
avifenc --speed 8 --depth 10 small.jpg web.avif >/dev/null
cp "$seeds/fuzz_heic/grid" grid.heic
cp small.jpg $'\xc3\x9cberblick \xe7\x85\xa7\xe7\x89\x87.jpg'

compared=0
failed=0
same() {
  local name="$1"
  shift
  "$linux" --quiet --yes "$@" --out "linux-$name" --base t
  "${windows[@]}" --quiet --yes "$@" --out "windows-$name" --base t
  if ! diff -rq "linux-$name" "windows-$name"; then
    failed=1
  fi
  compared=$((compared + $(ls "linux-$name" | wc -l)))
}

same photo --wide 3 --high 2 "$VELDARA_SAMPLE"
for photo in small.png deep.png lossy.webp lossless.webp phone.heic grid.heic web.avif; do
  same "$photo" --wide 3 "$photo"
done
same turned-heic --rotate ccw --format tif phone.heic
for photo in small.jpg strips.tif deep.tif press.jpg grey.jpg transparent.tif; do
  for format in jpg tif bmp; do
    same "$photo-$format" --format "$format" "$photo"
  done
done
same turned --rotate cw --rotate-tiles --zoom 33 --pan 20,170 small.jpg
# So few pixels are enlarged before the border is added.
same enlarged --clip 3,4,3,2 --wide 1 --high 1 --paper 'Photo 8" x 10"' tiny.bmp
same clipped --clip 16,0,7,1 --units mm --format tif strips.tif
same alphabet $'\xc3\x9cberblick \xe7\x85\xa7\xe7\x89\x87.jpg'

# The test image has texts in it.
for kind in bmp tif jpg; do
  "$linux" --quiet --yes --test-target "linux.$kind"
  "${windows[@]}" --quiet --yes --test-target "windows.$kind"
  cmp "linux.$kind" "windows.$kind" || failed=1
  compared=$((compared + 1))
done

"$linux" --plan --zoom 12 --rotate-tiles small.jpg >linux.json
"${windows[@]}" --plan --zoom 12 --rotate-tiles small.jpg | tr -d '\r' >windows.json
python3 - <<'PYTHON' || failed=1
import json
plans = [json.load(open(f"{system}.json", encoding="utf-8")) for system in ("linux", "windows")]
for plan in plans:
    plan["photo"]["file"] = None
    for tile in plan["tiles"]:
        tile["file"] = tile["file"].replace("\\", "/").rsplit("/", 1)[-1]
if plans[0] != plans[1]:
    raise SystemExit(f"the plans differ:\n{plans[0]}\n{plans[1]}")
PYTHON

echo "same_tiles: $compared files compared"
((compared > 60)) || { echo "same_tiles: too few files were made" >&2; failed=1; }
exit "$failed"
