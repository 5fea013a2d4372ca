#!/usr/bin/env bash
# Builds the Debian package under a umask that lets nobody else read, and looks at what it holds.
#
#   test_permissions.sh CPACK_CONFIGURATION
set -euo pipefail

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
umask 077
cpack --config "$1" -G DEB -B "$work" -D CPACK_PACKAGE_DIRECTORY="$work" "${@:2}" >"$work/log" 2>&1 || {
  cat "$work/log" >&2
  exit 1
}
dpkg-deb -c "$work"/*.deb >"$work/contents"
if grep -E '^d' "$work/contents" | grep -v '^drwxr-xr-x root/root'; then
  echo "test_permissions: these folders are not everybody's to read" >&2
  exit 1
fi
if grep -E '^-' "$work/contents" | grep -vE '^-rw[x-]r-[x-]r-[x-] root/root'; then
  echo "test_permissions: these files are not everybody's to read" >&2
  exit 1
fi
grep -q './usr/bin/veldara$' "$work/contents"
