#!/usr/bin/env bash
# Runs a Windows program in the display at hand, in a Wine prefix that ends with it: what Wine keeps
# running in a prefix stays tied to the display that it was first started in.
#
#   under_wine.sh WINDOWS_RUN PREFIX PROGRAM [ARGUMENTS...]
set -euo pipefail

run="$1" prefix="$2"
shift 2
trap 'WINEPREFIX="$prefix" "$(command -v wineserver || echo /usr/lib/wine/wineserver64)" -k || true' EXIT
"$run" "$prefix" "$@"
