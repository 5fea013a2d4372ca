#!/usr/bin/env bash
# Takes the pictures of the program's windows, in docs/screenshots/ and for the manual in help/img/,
# from the running program, in a display and a home folder of its own.
#
#   docs/screenshots.sh [PROGRAM]                   (default: build/bin/veldara)
#   docs/screenshots.sh --desktops FOLDER [PROGRAM]
#
# The second form shows each window on small and large screens, with large text and in other themes, and
# puts the pictures into the folder, to be looked at one by one.
#
# Needs Xvfb, openbox, xdotool and ImageMagick.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
shots="$root/docs/screenshots"
desktops=""
if [[ "${1:-}" == --desktops ]]; then
  mkdir -p "$2"
  desktops=$(realpath "$2")
  shift 2
fi
program=$(realpath "${1:-$root/build/bin/veldara}")
# Windows that the manual shows too; their words are in English whatever the user's language.
manual=(main_window.png paper_dialog.png calibration_dialog.png preview.jpg save_dialog.png result.png
  poster_size.png sheets.png)
export LC_ALL=C.UTF-8 GTK_THEME=Adwaita NO_AT_BRIDGE=1

# Always the same folder, since its name is in the pictures.
work=/tmp/veldara-demo
mkdir "$work"
started=()
stop() {
  for process in "${started[@]}"; do kill "$process" 2>/dev/null || true; done
  wait 2>/dev/null || true
  rm -rf "$work"
}
trap stop EXIT

prepareHome() {
  export HOME="$work/home" XDG_CONFIG_HOME="$work/home/.config" XDG_DATA_HOME="$work/home/.local/share"
  pictures="$work/Pictures/2026 Mountains"
  mkdir -p "$pictures" "$HOME/Desktop" "$HOME/Documents" "$XDG_CONFIG_HOME/veldara"
  cp "$root/art/sample/veldara-sample.jpg" "$pictures/Lake at sunrise.jpg"
  convert "$pictures/Lake at sunrise.jpg" -crop 2304x1536+1700+600 "$pictures/Main peak.jpg"
  convert "$pictures/Lake at sunrise.jpg" -crop 1200x1800+0+1200 "$pictures/Pines.tif"
  cat > "$XDG_CONFIG_HOME/veldara/values" <<VALUES
[Software\\Korvane\\omra]
string "last_folder" = "$pictures"
string "prefs_numTiles" = "w02h02"
string "paperRegLine" = "|0|Letter 8.5\\" x 11\\"|8.5|11|1|1.25|1|1.25|1|1.25|1|1.25|"
string "prefs_edgeAdjust" = "0_01"
dword "prefs_showTiles" = 1
VALUES
}

openDisplay() { # WIDTHxHEIGHT
  rm -f "$work/display"
  mkfifo "$work/display"
  Xvfb -displayfd 3 -screen 0 "$1x24" 3>"$work/display" >/dev/null 2>&1 &
  started+=($!)
  read -r number <"$work/display"
  export DISPLAY=":$number"
  openbox >/dev/null 2>&1 &
  started+=($!)
  xsetroot -solid '#5b6f8f' 2>/dev/null || true
}

# The window with that title, waited for.
window() {
  for _ in $(seq 100); do
    local found
    found=$(xdotool search --onlyvisible --name "^$1\$" 2>/dev/null | tail -1) || true
    if [[ -n "$found" ]]; then
      echo "$found"
      return
    fi
    sleep 0.1
  done
  echo "screenshots: there is no window \"$1\"" >&2
  return 1
}

# Waits until the screen has been the same for half a second.
settle() {
  local before='' now
  for _ in $(seq 60); do
    now=$(import -silent -window root rgb:- | md5sum)
    [[ "$now" == "$before" ]] && return
    before=$now
    sleep 0.5
  done
}

photograph() { # WINDOW FILE
  import -silent -frame -window "$1" -strip -quality 90 -define png:compression-level=9 "$shots/$2"
}

shoot() { # TITLE FILE
  local id
  id=$(window "$1")
  xdotool windowactivate --sync "$id"
  xdotool mousemove 1439 959
  settle
  photograph "$id" "$2"
}

# Closes a dialog with the keys and waits until the main window has the keyboard again.
leave() {
  press "$@"
  sleep 0.3
  xdotool windowactivate --sync "$(window "$main")"
  settle
}

waitForTile() { # NUMBER
  for _ in $(seq 30000); do
    compgen -G "$pictures/*_poster_images/*$1.jpg" >/dev/null && return
    sleep 0.001
  done
}

press() { xdotool key --delay 60 "$@"; }

# The windows of the program as they come up on one desktop: the whole screen each time.
photographDesktop() { # NAME WIDTHxHEIGHT VARIABLE=VALUE...
  local name="$1" size="$2" keys key
  shift 2
  openDisplay "$size"
  env "$@" "$program" "$pictures/Lake at sunrise.jpg" &
  started+=($!)
  xdotool windowactivate --sync "$(window "$main")"
  xdotool mousemove "${size%x*}" "${size#*x}" # no tool tip comes up there
  sleep 2
  settle
  for keys in "alt+z Right Right Right" "alt+e" "alt+i" "alt+j" "alt+h a" "alt+s" "ctrl+shift+s" "alt+t p" \
    "alt+p" "alt+s alt+s" "ctrl+s alt+s"; do
    for key in $keys; do
      press "$key"
      sleep 1
    done
    settle
    import -silent -window root -strip "$desktops/$name-${keys//[+ ]/_}.png"
    [[ "$keys" == alt+z* ]] || press Escape
    sleep 0.5
    settle
  done
  for process in "${started[@]}"; do kill "$process" 2>/dev/null || true; done
  started=()
  wait 2>/dev/null || true
  rm -rf "$pictures"/*_poster_images
}

main='Veldara v[0-9.]*'
prepareHome
if [[ -n "$desktops" ]]; then
  photographDesktop 640x480 640x480
  photographDesktop 1024x600 1024x600
  photographDesktop 1366x768-large-text 1366x768 GDK_DPI_SCALE=1.5
  photographDesktop 1920x1080 1920x1080
  photographDesktop 3840x2160-scale-2 3840x2160 GDK_SCALE=2
  photographDesktop dark 1366x768 GTK_THEME=Adwaita:dark
  photographDesktop high-contrast 1366x768 GTK_THEME=HighContrast
  photographDesktop high-contrast-inverse 1366x768 GTK_THEME=HighContrastInverse
  exit
fi
openDisplay 1440x960
mkdir -p "$shots"
"$program" &
veldara=$!
started+=("$veldara")
xdotool windowactivate --sync "$(window "$main")"
settle
shoot "$main" start.png
press alt+c Home
sleep 3
settle
press alt+r alt+c
shoot "$main" main_window.png

press alt+e
shoot 'Determine Tile Print Size' paper_dialog.png
leave Escape
press alt+i
xdotool windowactivate --sync "$(window 'Edge Calibration')"
press alt+p Down
shoot 'Edge Calibration' calibration_dialog.png
leave alt+c
press alt+p
shoot 'Poster Preview' preview.jpg
leave Escape
press alt+t p
xdotool windowactivate --sync "$(window 'Choose by Poster Size')"
press Tab
xdotool type 40
shoot 'Choose by Poster Size' poster_size.png
leave Escape
press ctrl+shift+s
xdotool windowactivate --sync "$(window 'Sheets for Printing')"
press alt+o
xdotool type 0.25
press alt+greater
shoot 'Sheets for Printing' sheets.png
leave Escape
press alt+h a
shoot 'Veldara' about.png
leave Escape
press alt+s
shoot 'Save Image Tiles' save_dialog.png
press alt+s
waitForTile 009
sleep 1
shoot 'Veldara' result.png
leave Return

# The progress window is there only as long as tiles are written, so there have to be many; it is
# held in the middle of them.
press alt+w End alt+g End alt+s
window 'Save Image Tiles' >/dev/null
settle
xdotool type 'Large_poster_images'
press alt+s
waitForTile 300
kill -STOP "$veldara"
photograph "$(window 'Veldara')" progress.png
kill -CONT "$veldara"

for name in "${manual[@]}"; do cp "$shots/$name" "$root/help/img/"; done
