#!/usr/bin/env bash
# Installs silently under Wine, starts what was installed, makes tiles with it, uninstalls silently
# (settings stay) and by hand (settings go), and looks at what is left. Needs a display.
#
#   test_installer.sh SETUP ARCHIVE WINDOWS_RUN PREFIX PHOTO PROBE VERSION
set -euo pipefail

setup="$1" archive="$2" run="$3" prefix="$4" photo="$5" probe="$6" version="$7"
drive="$prefix/drive_c"
folder="$drive/Program Files/Veldara"
shortcut="$drive/ProgramData/Microsoft/Windows/Start Menu/Programs/Veldara.lnk"
work="$(mktemp -d)"
# Only the server of this prefix ends, and with it whatever still runs in there.
finish() {
  WINEPREFIX="$prefix" "$(command -v wineserver || echo /usr/lib/wine/wineserver64)" -k || true
  rm -rf "$work"
}
trap finish EXIT

fail() {
  echo "test_installer: $*" >&2
  exit 1
}
wine() { "$run" "$prefix" "$@"; }
registry() { wine reg query "HKLM\\Software\\Korvane\\omra" /v "$1" 2>/dev/null | tr -d '\r'; }
install() { wine "$setup" /S || fail "the installer ended with $?"; }
# The uninstaller copies itself aside and ends before its copy does: the probe waits for both, for up to
# five minutes.
uninstall() {
  wine "$probe" run 'C:\Program Files\Veldara\uninstall.exe' "$@" || fail "the uninstaller ended with $?"
  [[ ! -e "$folder/uninstall.exe" && ! -e "$folder/veldara.exe" ]] || fail "the uninstaller left the program there"
}

# A download that a slow line takes in a moment: what a new library costs is seen here.
most=12000000
[[ "$(stat -c %s "$setup")" -lt "$most" ]] || fail "the installer has $(stat -c %s "$setup") bytes, $most are too many"

rm -rf "$prefix"
install
# Wine keeps a key's access list, though it enforces none; a file's becomes its mode. The file of profiles
# may be written by more than its owner.
wine "$probe" access 'Software\Korvane\omra' | grep -q '^allow 0x2001b S-1-5-32-545' ||
  fail "users have no right to the settings: $(wine "$probe" access 'Software\Korvane\omra')"
[[ -n "$(find "$folder/printer_edge_config" -perm -020)" ]] || fail "users have no right to the profiles"
for file in veldara.exe veldara-tiles.exe libheif.dll libde265.dll omra.chm licences.txt printer_edge_config uninstall.exe; do
  [[ -f "$folder/$file" ]] || fail "$file was not installed"
done
[[ -f "$shortcut" ]] || fail "there is no start-menu entry"
registry app_dir | grep -qF 'C:\Program Files\Veldara' || fail "app_dir is not set: $(registry app_dir)"
grep -q 'wxWidgets' "$folder/licences.txt" || fail "the licences are incomplete"

# The installed programs run.
wine "$folder/veldara-tiles.exe" --version | grep -q "veldara-tiles $version" || fail "veldara-tiles does not run"
photos="fotos Über 照片"
mkdir -p "$drive/$photos"
cp "$photo" "$drive/$photos/See.jpg"
wine "$folder/veldara-tiles.exe" --quiet --wide 3 --high 2 --out 'C:\tiles' --base See "C:\\$photos\\See.jpg"
[[ "$(ls "$drive/tiles" | wc -l)" -eq 6 ]] || fail "the installed program made $(ls "$drive/tiles")"

# The main job, as a person does it: choose the tiles, click the photo, save, confirm; note down what
# the printer cuts off; close, start again, close.
waiting_for() { # NAME: the number of the visible window with that name
  local seconds
  for seconds in $(seq 120); do
    xdotool search --onlyvisible --name "$1" 2>/dev/null | tail -n 1 | grep . && return
    sleep 0.5
  done
  import -window root "$prefix/screen.png" || true
  fail "no window named $1 (the screen is in $prefix/screen.png)"
}
wine reg add 'HKLM\Software\Korvane\omra' /v last_folder /d "C:\\$photos" /f >/dev/null
start_program() {
  wine "$folder/veldara.exe" &
  program=$!
  window="$(waiting_for "^Veldara v${version//./\\.}$")"
  timeout 20 xdotool windowactivate --sync "$window"
  sleep 1
}
close_program() {
  timeout 20 xdotool windowactivate --sync "$window"
  xdotool key alt+F4
  wait "$program" || fail "the program ended with $?"
}
start_program
xdotool key alt+w
sleep 1
xdotool key alt+Down
sleep 1
xdotool key Down Return # from two tiles wide to three
sleep 1
xdotool key alt+c # to the files
sleep 1
xdotool key Down # the first of them
# The button is dead until the photo is there.
for _ in $(seq 30); do
  sleep 2
  xdotool key alt+s
  sleep 1
  [[ -z "$(xdotool search --onlyvisible --name '^Save Image Tiles$' 2>/dev/null)" ]] || break
done
waiting_for '^Save Image Tiles$' >/dev/null
xdotool key Return # Save Images Now
# The progress window has the result window's title: only the files tell that the run is over.
for _ in $(seq 240); do
  [[ "$(find "$drive/$photos/See_poster_images" -name 'See*.jpg' 2>/dev/null | wc -l)" -lt 6 ]] || break
  sleep 0.5
done
sleep 3
waiting_for '^Veldara$' >/dev/null
diff -r "$drive/tiles" "$drive/$photos/See_poster_images" || fail "the window's tiles differ from the command line's"
xdotool key Return # OK
sleep 1
profiles="$folder/printer_edge_config"
[[ ! -s "$profiles" ]] || fail "the file of profiles is not empty at first: $(cat "$profiles")"
timeout 20 xdotool windowactivate --sync "$window"
xdotool key alt+i # Edit, of the edge profiles
waiting_for '^Edge Calibration$' >/dev/null
sleep 1
xdotool key alt+n # New
waiting_for '^New Configuration$' >/dev/null
sleep 1
xdotool type 'Cellar printer'
xdotool key Return
sleep 2
xdotool key alt+c # Close
sleep 1
grep -q $'^Cellar printer\t' "$profiles" || fail "the profile is not in the program's folder: $(cat "$profiles")"
# What runs is left alone.
wine "$setup" /S && fail "the installer went ahead while the program ran"
ln -s "$folder" "$drive/installed" # the uninstaller that is to be waited for takes no blank in its folder
wine "$folder/uninstall.exe" /S '_?=C:\installed' && fail "the uninstaller went ahead while the program ran"
rm "$drive/installed"
[[ -e "$shortcut" && -e "$folder/licences.txt" ]] || fail "a refused uninstallation took something away"
close_program
registry prefs_numTiles | grep -q 'w02h01' || fail "closing the window stored no settings"
# What it did not read when it started it would now replace by what it begins with.
start_program
close_program
registry prefs_numTiles | grep -q 'w02h01' || fail "the settings did not outlive a restart: $(registry prefs_numTiles)"
registry last_folder | grep -qi 'c:.fotos' || fail "the folder was not remembered: $(registry last_folder)"

# Without questions the settings stay.
uninstall /S
[[ -f "$folder/printer_edge_config" ]] || fail "a silent uninstallation took the profiles"
registry prefs_numTiles | grep -q 'w02h01' || fail "a silent uninstallation took the settings"
registry app_dir | grep -q 'Veldara' && fail "app_dir names a folder that is gone"
[[ ! -e "$shortcut" ]] || fail "the start-menu entry is left"
[[ "$(ls "$folder")" == printer_edge_config ]] || fail "left behind: $(ls "$folder")"

# Installed again, the settings are the old ones; uninstalled by hand with Yes, everything goes.
install
registry prefs_numTiles | grep -q 'w02h01' || fail "installing again lost the settings"
wine "$probe" run 'C:\Program Files\Veldara\uninstall.exe' &
uninstaller=$!
question() { xdotool search --onlyvisible --name '^Veldara Uninstall' 2>/dev/null | tail -n 1; }
for _ in $(seq 1200); do
  [[ -z "$(question)" ]] || break
  sleep 0.1
done
sleep 2
xdotool key Return # the first page: Uninstall
sleep 3
xdotool key alt+y # remove the settings too
for _ in $(seq 1200); do
  [[ -e "$folder/veldara.exe" ]] || break
  sleep 0.1
done
# The last page comes when everything is removed.
for _ in $(seq 60); do
  kill -0 "$uninstaller" 2>/dev/null || break
  sleep 2
  xdotool key Return # Close
done
wait "$uninstaller" || fail "the uninstaller ended with $?"
[[ ! -e "$folder" ]] || fail "left behind: $(ls "$folder")"
wine reg query "HKLM\\Software\\Korvane" >/dev/null 2>&1 && fail "the settings are left"

# The archive holds the same programs.
(cd "$work" && unzip -q "$archive")
for file in veldara.exe veldara-tiles.exe omra.chm licences.txt readme.txt; do
  [[ -f "$work/veldara-$version/$file" ]] || fail "$file is not in the archive"
done
wine "$work/veldara-$version/veldara-tiles.exe" --version | grep -q "veldara-tiles $version" || fail "the archive's program does not run"
echo "test_installer: installed, ran, was uninstalled with and without the settings"
