#!/usr/bin/env bash
# Puts libraries with the names of the system's beside veldara-tiles and starts it: none is loaded. A
# program without the protection loads all of them. Of veldara the same cannot be shown here: Wine's own
# user32 and comdlg32 are linked with some of them, and take them from beside the program themselves.
# check_hardening.py sees that both programs import none.
#
#   test_planted.sh WINDOWS_RUN PREFIX PLANTED CARELESS VERSION PROGRAMS_FOLDER PHOTO
set -euo pipefail

run="$1" prefix="$2" planted="$3" careless="$4" version="$5" programs="$6" photo="$7"
work="$(mktemp -d)"
finish() {
  WINEPREFIX="$prefix" "$(command -v wineserver || echo /usr/lib/wine/wineserver64)" -k || true
  rm -rf "$work"
}
trap finish EXIT
fail() {
  echo "test_planted: $*" >&2
  exit 1
}

# All that such programs are linked with and that Windows does not take from its own folder in any case,
# and some that it loads later. Not VERSION.dll, for that reason.
names=(UxTheme.dll WINSPOOL.DRV OLEACC.dll MSIMG32.dll WINMM.dll dwmapi.dll PROPSYS.dll hhctrl.ocx)
folder="$work/unpacked"
mkdir "$folder"
cp "$programs"/veldara-tiles.exe "$programs"/libheif.dll "$programs"/libde265.dll "$folder"
for name in "${names[@]}"; do
  cp "$planted" "$folder/$name"
done
# Wine prefers its own libraries; Windows knows no such preference. Said for this program alone, as Wine's
# own would wait for planted libraries for ever.
{
  printf 'REGEDIT4\n'
  printf '\n[HKEY_CURRENT_USER\\Software\\Wine\\AppDefaults\\veldara-tiles.exe\\DllOverrides]\n'
  for name in "${names[@]}"; do
    printf '"%s"="native,builtin"\n' "$(tr '[:upper:]' '[:lower:]' <<<"${name%.dll}")"
  done
} >"$work/overrides.reg"
"$run" "$prefix" reg import "$work/overrides.reg"
traces() { find "$folder" -name '*.loaded' -printf '%f ' | sort; }
nothing_loaded() {
  [[ -z "$(traces)" ]] || fail "$1 loaded $(traces)"
}

# A program that falls over a planted library ends, instead of waiting for a debugger.
export WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe,winedbg.exe="
for name in "${names[@]}"; do # each alone: they have none of the calls that others want of them
  alone="$work/$name-alone"
  mkdir "$alone"
  cp "$careless" "$alone/careless.exe"
  cp "$planted" "$alone/$name"
  WINEDLLOVERRIDES+=";${name%.dll}=n,b" "$run" "$prefix" "$alone/careless.exe" "$name" || true
  [[ -e "$alone/$name.loaded" ]] || fail "the test is blind to $name"
done

"$run" "$prefix" "$folder/veldara-tiles.exe" --version | grep -q "veldara-tiles $version" ||
  fail "veldara-tiles does not run"
nothing_loaded "veldara-tiles --version"
# libheif is the one library that does come from beside the program.
heif-enc -q 60 "$photo" -o "$folder/phone.heic" >/dev/null 2>&1
"$run" "$prefix" "$folder/veldara-tiles.exe" --quiet --out "$folder/tiles" --base t "$folder/phone.heic" ||
  fail "no tiles of a HEIC photo"
[[ "$(ls "$folder/tiles" | wc -l)" -eq 4 ]] || fail "the tiles are $(ls "$folder/tiles")"
nothing_loaded "veldara-tiles"
