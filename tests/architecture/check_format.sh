#!/usr/bin/env bash
# Checks that every C++ file of the tree is laid out as .clang-format says.
#
#   check_format.sh CLANG_FORMAT TREE
set -euo pipefail

cd "$2"
mapfile -d '' files < <(find src tests fuzz bench art packaging -name '*.cpp' -print0 -o -name '*.h' -print0)
((${#files[@]} > 100)) || {
  echo "check_format: only ${#files[@]} files in $2" >&2
  exit 1
}
"$1" --dry-run --Werror "${files[@]}"
echo "check_format: ${#files[@]} files"
