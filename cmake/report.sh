# Sourced by ./test, ./package and tests/long.sh: how a script reports what it does.

say() { printf '%s  %s\n' "$(date +%H:%M:%S)" "$*"; }

# quietly NAME COMMAND...: keeps the output in build/logs/NAME.log; shows its end, and stops the script,
# only when the command fails.
quietly() {
  local log="build/logs/$1.log"
  shift
  mkdir -p build/logs
  "$@" >"$log" 2>&1 || {
    tail -n 80 "$log"
    echo "failed: $* (whole output: $log)"
    exit 1
  }
}
