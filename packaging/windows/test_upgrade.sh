#!/usr/bin/env bash
# What the installer and the uninstaller must not do with an administrator's rights: write into a folder
# that a user named, follow links to foreign files and keys, go back to an older version unasked. Silent,
# under Wine, without a display.
#
#   test_upgrade.sh SETUP WINDOWS_RUN PREFIX PROBE
set -euo pipefail

setup="$1" run="$2" prefix="$3" probe="$4"
drive="$prefix/drive_c"
folder="$drive/Program Files/Veldara"
settings='Software\Korvane\omra'
uninstall_key='HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall\Veldara'
finish() {
  WINEPREFIX="$prefix" "$(command -v wineserver || echo /usr/lib/wine/wineserver64)" -k || true
}
trap finish EXIT

failures=0
fail() {
  echo "test_upgrade: $*" >&2
  failures=$((failures + 1))
}
wine() { "$run" "$prefix" "$@"; }
install() { wine "$setup" /S "$@"; }

rm -rf "$prefix"
install || fail "the first installation ended with $?"

# Users may read and set values (0x2001b), and create neither keys nor links below.
access="$(wine "$probe" access "$settings" | tr -d '\r')"
[[ "$(grep 'S-1-5-32-545$' <<<"$access")" == 'allow 0x2001b S-1-5-32-545' ]] || fail "users have: $access"

# A folder that a user named is not the one that an upgrade goes to.
mkdir -p "$drive/users/planted"
wine reg add "HKLM\\$settings" /v app_dir /d 'C:\users\planted' /f >/dev/null
install || fail "the upgrade ended with $?"
[[ -z "$(ls "$drive/users/planted")" ]] || fail "the upgrade went where a user sent it: $(ls "$drive/users/planted")"
[[ -f "$folder/veldara.exe" ]] || fail "the upgrade is not in its own folder"

# Nothing is written through a second name of a foreign file, and no rights are given to it.
echo foreign >"$drive/users/foreign"
chmod 600 "$drive/users/foreign"
mv "$folder/veldara.exe" "$drive/users/kept.exe"
ln "$drive/users/foreign" "$folder/veldara.exe"
install && fail "the installer wrote over a file of two names"
[[ "$(cat "$drive/users/foreign")" == foreign ]] || fail "a foreign file was overwritten"
rm "$folder/veldara.exe"
rm -f "$folder/printer_edge_config"
ln "$drive/users/foreign" "$folder/printer_edge_config"
install || fail "the installer refused a file of profiles of two names: $?"
[[ "$(stat -c %a "$drive/users/foreign")" == 600 ]] || fail "rights to a foreign file: $(stat -c %a "$drive/users/foreign")"
rm "$folder/printer_edge_config"

# An older version does not replace a newer one unless it is asked to.
wine reg add "$uninstall_key" /v DisplayVersion /d 99.0 /f >/dev/null
install && fail "a newer version was replaced"
install /DOWNGRADE || fail "the asked-for downgrade ended with $?"

# Uninstalling with the settings leaves what a planted link leads to.
wine reg add 'HKLM\Software\VeldaraForeign\below' /v value /d kept /f >/dev/null
wine "$probe" link "$settings\\planted" 'Software\VeldaraForeign' || fail "no link can be made"
wine "$probe" run 'C:\Program Files\Veldara\uninstall.exe' /S /SETTINGS || fail "the uninstaller ended with $?"
wine reg query 'HKLM\Software\VeldaraForeign\below' /v value 2>/dev/null | grep -q kept ||
  fail "the uninstaller deleted through a link"
wine reg query "HKLM\\$settings" /v app_dir >/dev/null 2>&1 && fail "the settings are left"
[[ ! -e "$folder/veldara.exe" ]] || fail "the program is left"

[[ $failures -eq 0 ]] || exit 1
echo "test_upgrade: no link followed, no folder of a user's taken, nothing replaced by an older one unasked"
