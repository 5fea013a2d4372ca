#!/usr/bin/env bash
# Runs a command with a print server of its own: a socket file instead of the network, folders of its
# own, and printers that keep what arrives in $VELDARA_PRINTED/NAME.
#
#   with_print_server.sh COMMAND [ARGUMENTS...]
#
#   office    A4 and Letter, leaves 4.2 mm white at every edge
#   filtered  the same, and the server's filter lays the pages on the paper
#   photo     4 x 6 inch and custom sizes, borderless
#   jammed    as photo, stops in the middle of its first job
#   closing   as office, for a test that makes it refuse jobs
#   leaving   as office, for a test that removes it
set -euo pipefail

here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)/print_server"
export PATH="$PATH:/usr/sbin:/sbin"
for needed in cupsd lpadmin cupsreject python3; do
  if ! command -v "$needed" >/dev/null; then
    echo "with_print_server: $needed is not installed" >&2
    exit 1
  fi
done

# A short name: the address of a socket file is no longer than 107 characters.
work="$(mktemp -d /tmp/cups-XXXXXX)"
chmod 755 "$work" # the server's own user passes through
server_pid=""
finish() {
  [[ -z "$server_pid" ]] || kill "$server_pid" 2>/dev/null || true
  wait 2>/dev/null || true
  rm -rf "$work"
}
trap finish EXIT

mkdir -p "$work"/{root,state,cache,spool,tmp,log,bin/backend,printed,temporary}
for part in filter daemon notifier monitor; do
  ln -s "/usr/lib/cups/$part" "$work/bin/$part"
done
# Only the owner may run it: the server then does so as the one who started it.
install -m 0700 "$here/keep.sh" "$work/bin/backend/keep"
cat >"$work/cupsd.conf" <<CONFIG
Listen $work/socket
LogLevel info
Browsing Off
WebInterface No
DefaultAuthType None
<Location />
  Order allow,deny
  Allow all
</Location>
<Location /admin>
  Order allow,deny
  Allow all
</Location>
<Policy default>
  <Limit All>
    Order allow,deny
  </Limit>
</Policy>
CONFIG
cat >"$work/cups-files.conf" <<CONFIG
ServerRoot $work/root
StateDir $work/state
CacheDir $work/cache
RequestRoot $work/spool
TempDir $work/tmp
ServerBin $work/bin
AccessLog $work/log/access
ErrorLog $work/log/error
PageLog $work/log/page
CONFIG
cupsd -f -c "$work/cupsd.conf" -s "$work/cups-files.conf" >"$work/log/output" 2>&1 &
server_pid=$!
export CUPS_SERVER="$work/socket"
export VELDARA_PRINTED="$work/printed"
for _ in $(seq 600); do
  lpstat -r 2>/dev/null | grep -q "is running" && break
  sleep 0.1
done
lpstat -r | grep -q "is running" || { cat "$work/log/output" "$work/log/error" >&2; exit 1; }

# add NAME URI-SUFFIX MAKE_PPD-ARGUMENTS...
add() {
  local name="$1" suffix="$2"
  shift 2
  mkdir "$work/printed/$name"
  python3 "$here/make_ppd.py" "$name" "$@" >"$work/$name.ppd"
  lpadmin -p "$name" -E -v "keep:$work/printed/$name$suffix" -P "$work/$name.ppd" 2>/dev/null
}
add office "" 11.906 A4=595.276x841.89 Letter=612x792
add filtered "" 11.906 filtered A4=595.276x841.89 Letter=612x792
add photo "" 0 custom 4x6=288x432
add jammed "?jam" 0 custom 4x6=288x432
add closing "" 11.906 A4=595.276x841.89 Letter=612x792
add leaving "" 11.906 A4=595.276x841.89 Letter=612x792

# A folder for temporary files, so that a test sees what is left in it and not what others have there.
status=0
TMPDIR="$work/temporary" "$@" || status=$?
if [[ $status -ne 0 ]]; then
  grep -E "^[EW]" "$work/log/error" >&2 || true
fi
exit $status
