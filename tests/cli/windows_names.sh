#!/usr/bin/env bash
# Names that Windows would take for a device, for a part of another file, or would change: the program
# refuses them with a sentence and writes nothing.
#
#   windows_names.sh WINDOWS_COMMAND...
set -euo pipefail

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
cd "$work"
convert -size 120x90 gradient: photo.bmp

failed=0
refused() {
  local said="$1" status=0
  shift
  "${windows[@]}" --quiet --yes "$@" photo.bmp >out.txt 2>&1 || status=$?
  if [[ "$status" != 1 ]] || ! grep -qF -- "$said" out.txt; then
    echo "windows_names: $*: ended with $status and said: $(cat out.txt)" >&2
    failed=1
  fi
  rm -f out.txt
  if [[ "$(ls -A)" != photo.bmp ]]; then
    echo "windows_names: $*: left $(ls -A)" >&2
    failed=1
  fi
}
windows=("$@")

dropped="ends with a blank or a dot, which Windows drops"
device="is the name of a device in Windows"
refused "The folder name \"tiles.\" $dropped" --out "tiles."
refused "The folder name \"tiles \" $dropped" --out "tiles "
refused "The folder name \"NUL\" $device" --out NUL
refused "The folder name \"com1.tiles\" $device" --out 'C:\com1.tiles'
refused "The folder name \"a:b\" has the character :" --out "./a:b"
refused "which Windows allows in no file name" --base "x:y"
refused "is the name of a device in Windows" --base "con." --out .
refused "The file name \"con.pdf\" $device" --pdf con.pdf
refused "The file name \"x.pdf.\" $dropped" --pdf x.pdf.
exit "$failed"
