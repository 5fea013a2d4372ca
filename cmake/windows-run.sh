#!/usr/bin/env bash
# Runs a Windows program under Wine with a prefix of its own, made on first use.
#
#   cmake/windows-run.sh PREFIX PROGRAM [ARGUMENTS...]
set -euo pipefail

export WINEPREFIX="$1"
shift
export WINEARCH=win64
export WINEDEBUG="${WINEDEBUG:--all}"
# Neither of these is used by the program; without them a new prefix asks no question and starts sooner.
export WINEDLLOVERRIDES="${WINEDLLOVERRIDES:-mscoree,mshtml,winemenubuilder.exe=}"

wine="$(command -v wine64 || true)"
for candidate in /usr/lib/wine/wine64 /usr/bin/wine; do
  if [[ -z "$wine" && -x "$candidate" ]]; then
    wine="$candidate"
  fi
done
if [[ -z "$wine" ]]; then
  echo "windows-run: Wine is not installed" >&2
  exit 127
fi

mkdir -p "$WINEPREFIX"
(
  # One maker of the prefix at a time; the others wait for it. What Wine leaves running in the
  # background must not hold the caller's output open.
  flock 9
  if [[ ! -f "$WINEPREFIX/.ready" ]]; then
    "$wine" wineboot --init >/dev/null 2>&1 </dev/null 9>&-
    touch "$WINEPREFIX/.ready"
  fi
) 9>"$WINEPREFIX.lock"

# A window of the system's that the program opened outlives it and holds whatever output it was given
# open: it gets files, so that the caller sees the end when the program ends.
output="$(mktemp -d)"
trap 'rm -rf "$output"' EXIT
status=0
"$wine" "$@" >"$output/out" 2>"$output/err" || status=$?
cat "$output/out"
cat "$output/err" >&2
exit "$status"
