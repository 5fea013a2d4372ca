#!/usr/bin/env bash
# Starts the real program in the display at hand with a photo to open, waits until its main window
# shows the photo, asks for the manual, closes it, and checks that it ended well and said nothing on
# standard error.
#
#   smoke_test.sh PROGRAM PHOTO VERSION
set -euo pipefail

program="$1"
home="$(mktemp -d)"
photo="$2"
version="${3//./\\.}"
picture="$home/main.png"
trap 'rm -rf "$home"' EXIT
export HOME="$home" XDG_CONFIG_HOME="$home/.config" XDG_DATA_HOME="$home/.local/share"
mkdir -p "$XDG_CONFIG_HOME" "$XDG_DATA_HOME" "$home/Desktop" "$home/Documents"

# Stands for the desktop's browser: notes what it is given.
mkdir "$home/bin"
printf '#!/bin/sh\necho "$1" >"%s/opened"\n' "$home" >"$home/bin/xdg-open"
chmod +x "$home/bin/xdg-open"
export PATH="$home/bin:$PATH"

"$program" --version | grep "^Veldara $version\$" >/dev/null # -q would close the pipe too early
"$program" --help | grep 'photo or folder to open' >/dev/null
cd "$(dirname "$photo")"
"$program" "$(basename "$photo")" 2>"$home/complaints" &
pid=$!
window="$(timeout 30 xdotool search --sync --onlyvisible --pid "$pid" --name "^Veldara v$version\$" | head -n 1)"
colours=0
few=10000 # the window itself has less than half of them
for _ in $(seq 100); do # it comes up empty, and the photo is loaded then
  import -window "$window" "$picture"
  colours="$(identify -format '%k' "$picture")"
  ((colours < few)) || break
  sleep 0.2
done
if ((colours < few)); then
  echo "smoke_test: the window shows no photo ($colours colours)" >&2
  exit 1
fi
timeout 30 xdotool windowactivate --sync "$window"
xdotool key F1
for _ in $(seq 100); do
  [[ ! -s "$home/opened" ]] || break
  sleep 0.1
done
grep -q '/help/index\.html$' "$home/opened"
xdotool key alt+F4 # goes to the window manager, as a person's key press does
for _ in $(seq 300); do
  kill -0 "$pid" 2>/dev/null || break
  sleep 0.1
done
if kill -0 "$pid" 2>/dev/null; then
  echo "smoke_test: the program does not close" >&2
  kill "$pid"
  exit 1
fi
wait "$pid"
if [[ -s "$home/complaints" ]]; then
  cat "$home/complaints"
  echo "smoke_test: the program wrote to standard error" >&2
  exit 1
fi
# Closing the window has stored the settings.
grep -q 'prefs_numTiles' -r "$XDG_CONFIG_HOME"
grep -qF "$(dirname "$photo")" -r "$XDG_CONFIG_HOME"
echo "smoke_test: the program opened the photo ($colours colours), closed, and stored its settings"
