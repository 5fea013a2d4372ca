#!/usr/bin/env bash
# Runs a command in a display of its own, with a window manager, so that windows are placed and get
# the keyboard as on a desktop.
#
#   in_virtual_display.sh [-s WIDTHxHEIGHT] COMMAND [ARGUMENTS...]
set -euo pipefail

size=1600x1200
if [[ "${1:-}" == -s ]]; then
  size="$2"
  shift 2
fi
for needed in Xvfb openbox; do
  if ! command -v "$needed" >/dev/null; then
    echo "in_virtual_display: $needed is not installed" >&2
    exit 1
  fi
done

work="$(mktemp -d)"
display_pid=""
manager_pid=""
finish() {
  [[ -z "$manager_pid" ]] || kill "$manager_pid" 2>/dev/null || true
  [[ -z "$display_pid" ]] || kill "$display_pid" 2>/dev/null || true
  wait 2>/dev/null || true
  rm -rf "$work"
}
trap finish EXIT

# The server picks a free display and writes its number.
Xvfb -displayfd 3 -screen 0 "${size}x24" -nolisten tcp 3>"$work/display" 2>"$work/Xvfb.log" &
display_pid=$!
# waitFor TEST: a busy machine may take its time.
waitFor() {
  for _ in $(seq 600); do
    "$@" && return
    sleep 0.1
  done
  echo "in_virtual_display: gave up waiting for: $*" >&2
  exit 1
}
waitFor test -s "$work/display"
export DISPLAY=":$(cat "$work/display")"
# No session of the caller's: neither its settings nor its message bus.
export GDK_BACKEND=x11 NO_AT_BRIDGE=1 GTK_A11Y=none GIO_USE_VFS=local GSETTINGS_BACKEND=memory
unset DBUS_SESSION_BUS_ADDRESS WAYLAND_DISPLAY || true
export LC_ALL=C.UTF-8

# A manager that takes nothing for itself but the keys that close a window: it would hold each click back
# until it has looked at it, and a busy machine loses some that way.
cat >"$work/openbox.xml" <<'CONFIG'
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <mouse/>
  <keyboard><keybind key="A-F4"><action name="Close"/></keybind></keyboard>
</openbox_config>
CONFIG
openbox --sm-disable --config-file "$work/openbox.xml" --startup "touch $work/managed" \
  >"$work/openbox.log" 2>&1 &
manager_pid=$!
waitFor test -e "$work/managed"
"$@"
