#!/usr/bin/env bash
# The main job on Wayland: the program in a compositor that is nested in the display at hand. Opens a photo,
# zooms, drags, previews, saves, and closes.
#
#   wayland_test.sh PROGRAM PHOTO
set -euo pipefail

program="$(realpath "$1")"
home="$(mktemp -d)"
export HOME="$home" XDG_CONFIG_HOME="$home/.config" XDG_DATA_HOME="$home/.local/share"
export XDG_RUNTIME_DIR="$home/run"
mkdir -m 700 "$XDG_RUNTIME_DIR"
mkdir -p "$home/Pictures"
cp "$2" "$home/Pictures/lake.jpg"
compositor=""
pid=""
finish() {
  [[ -z "$pid" ]] || kill "$pid" 2>/dev/null || true
  [[ -z "$compositor" ]] || kill "$compositor" 2>/dev/null || true
  wait 2>/dev/null || true
  rm -rf "$home"
}
trap finish EXIT

# waitFor WHAT COMMAND...: until the command succeeds; a busy machine may take its time.
waitFor() {
  local what="$1"
  shift
  for _ in $(seq 300); do
    ! "$@" || return 0
    sleep 0.2
  done
  echo "wayland_test: timed out waiting until $what" >&2
  exit 1
}

picture() { import -window root -depth 8 rgb:- | sha256sum; }
colours() { import -window root png:- | identify -format '%k' -; }
shows_photo() { (($(colours) > 20000)); } # the window itself has less than half of them
changed() { [[ "$(picture)" != "$before" ]]; }
# Until two pictures in a row are the same.
settled() {
  local first
  first="$(picture)"
  sleep 0.3
  [[ "$(picture)" == "$first" ]]
}
# The compositor loses a pointer that jumps.
move_by() {
  for _ in $(seq "$1"); do
    xdotool mousemove_relative --sync -- "$2" "$3"
  done
}
# act WHAT COMMAND...: does it, and waits until the window looks different and has come to rest.
act() {
  local what="$1"
  shift
  waitFor "the window has come to rest" settled
  before="$(picture)"
  "$@"
  waitFor "$what" changed
  waitFor "the window has come to rest" settled
}
drag() {
  xdotool mousedown 1
  move_by 20 2 0
  xdotool mouseup 1
}

weston --backend=x11-backend.so --shell=kiosk-shell.so --no-config --width=1280 --height=900 \
  --socket=veldara --idle-time=0 >"$home/weston.log" 2>&1 &
compositor=$!
waitFor "the compositor listens" test -S "$XDG_RUNTIME_DIR/veldara"
GDK_BACKEND=wayland WAYLAND_DISPLAY=veldara "$program" "$home/Pictures/lake.jpg" 2>"$home/complaints" &
pid=$!
waitFor "the photo is shown" shows_photo

xdotool mousemove 100 500 # outside, at the left
move_by 150 4 0           # into the photo
act "the wheel zooms" xdotool click 4 click 4 click 4 click 4
act "a drag moves the tiles" drag
move_by 30 -4 0 # off the photo, whose tool tip would be a change of its own
move_by 50 0 4
move_by 10 4 0
act "the preview comes up" xdotool key alt+p
act "Escape closes the preview" xdotool key Escape
act "the save dialog comes up" xdotool key alt+s
act "the tiles are saved" xdotool key alt+s
saved() { [[ "$(ls "$home/Pictures/lake_poster_images" 2>/dev/null | wc -l)" -eq 4 ]]; }
waitFor "there are four tiles" saved
act "the result window closes" xdotool key Return
# Here a window cannot take the keyboard, it is the compositor that gives it. This shell gives it to nobody
# after a dialog with a parent has gone (weston 10), or to the parent (weston 14, where the click changes nothing).
xdotool click 1
quit() {
  kill -0 "$pid" 2>/dev/null || return 0
  xdotool key ctrl+q
  return 1
}
waitFor "the program ends" quit
wait "$pid"
pid=""
if [[ -s "$home/complaints" ]]; then
  cat "$home/complaints"
  echo "wayland_test: the program wrote to standard error" >&2
  exit 1
fi
file "$home/Pictures/lake_poster_images"/*.jpg | grep -c 'JPEG image data' | grep -qx 4
echo "wayland_test: a photo was opened, zoomed, dragged, previewed and saved on Wayland"
