#!/usr/bin/env bash
# Runs a command with a session bus of its own, on which programs describe their windows to screen
# readers.
#
#   with_accessibility.sh COMMAND [ARGUMENTS...]
set -euo pipefail

for launcher in /usr/libexec/at-spi-bus-launcher /usr/lib/at-spi2-core/at-spi-bus-launcher; do
  [[ ! -x "$launcher" ]] || break
done
if [[ ! -x "$launcher" ]]; then
  echo "with_accessibility: at-spi2-core is not installed" >&2
  exit 1
fi
unset NO_AT_BRIDGE GTK_A11Y
export LAUNCHER="$launcher"
exec dbus-run-session -- bash -c '
  "$LAUNCHER" --launch-immediately 2>/dev/null &
  launcher=$!
  trap "kill $launcher 2>/dev/null || true" EXIT
  "$@"' with_accessibility "$@"
