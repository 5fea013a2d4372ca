#!/usr/bin/env bash
# The checks that take hours, each from its own build tree, one after the other.
#
#   tests/long.sh [CHECK...]    package tidy tsan mutants soak; all of them without a name
#
# A check that fails does not keep the others from running. Ends with one line for each, status 1 when one
# failed. Output is in build/logs.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. cmake/packages.sh
. cmake/report.sh

# The downloads, installed, run and removed.
check_package() { ./package --test; }

# Every source, tests included, with the compile commands of a tree without precompiled headers, which Clang
# cannot read when they are gcc's. It refuses the PDF library's headers in C++20: they have a vector of a type
# that is not complete yet.
check_tidy() {
  cmake --preset release -B build/tidy -DVELDARA_TESTS=ON -DVELDARA_GUI=ON -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON
  cmake --build build/tidy
  run-clang-tidy -quiet -j "$(nproc)" -p build/tidy "$PWD/(src|tests|art)/(?!sheets/pdf_(document|font)\.cpp).*\.cpp"
}

# All tests that need no display.
check_tsan() {
  cmake --preset tsan -DVELDARA_TESTS=ON
  cmake --build build/tsan
  ctest --test-dir build/tsan --no-tests=error --output-on-failure -j "$(nproc)"
}

check_mutants() { python3 tests/mutants/run_mutants.py --jobs "$(nproc)" --keep build/mutants; }

# Ten minutes of random use under the sanitizers.
check_soak() {
  cmake --preset asan -DVELDARA_TESTS=ON -DVELDARA_SOAK=ON
  cmake --build build/asan --target soak
  build/asan/tests/soak/soak "${VELDARA_SOAK_SECONDS:-600}"
}

checks=(package tidy tsan mutants soak)
for check in "$@"; do
  [[ " ${checks[*]} " == *" $check "* ]] || { echo "long.sh: no check is named $check: ${checks[*]}" >&2; exit 2; }
done
[[ $# -eq 0 ]] || checks=("$@")

need_packages $long_packages
results=()
status=0
for check in "${checks[@]}"; do
  say "Running $check"
  started=$SECONDS
  # In another shell, which ends the check at its first failing command.
  export -f "check_$check"
  if (quietly "long-$check" bash -euo pipefail -c "check_$check"); then
    results+=("$(printf '%-8s passed  %5d s' "$check" $((SECONDS - started)))")
  else
    results+=("$(printf '%-8s FAILED  %5d s  build/logs/long-%s.log' "$check" $((SECONDS - started)) "$check")")
    status=1
  fi
done
printf '%s\n' "${results[@]}"
exit "$status"
