#!/usr/bin/env bash
# Line and branch coverage of src/ without the views, by all tests that need no display.
#
#     tests/coverage.sh [JOBS]     prints a table a room, and the uncovered lines of each file
#
# The build stays in build/coverage, so that a second run builds only what has changed.
set -eu
cd "$(dirname "$0")/.."
jobs=${1:-$(nproc)}

cmake --preset coverage -DVELDARA_GUI=OFF >/dev/null
cmake --build build/coverage -- -j"$jobs" | tail -n 1
find build/coverage -name '*.gcda' -delete
ctest --test-dir build/coverage -j"$jobs" --output-on-failure | tail -n 3

gcovr --root . --filter 'src/' --exclude 'src/gui/' --exclude-throw-branches \
    --exclude-unreachable-branches --json build/coverage/coverage.json build/coverage
gcovr --root . --add-tracefile build/coverage/coverage.json
python3 - build/coverage/coverage.json <<'PYTHON'
import json
import sys
from collections import defaultdict

rooms = defaultdict(lambda: [0, 0, 0, 0])
for file in json.load(open(sys.argv[1]))["files"]:
    parts = file["file"].split("/")
    room = "/".join(parts[1:3]) if parts[1] == "platform" and len(parts) > 3 else parts[1]
    for name in (room, "all of it"):
        counts = rooms[name]
        for line in file["lines"]:
            if line.get("gcovr/noncode"):
                continue
            counts[0] += 1
            counts[1] += line["count"] > 0
            counts[2] += len(line["branches"])
            counts[3] += sum(branch["count"] > 0 for branch in line["branches"])
print(f"\n{'room':22} {'lines':>7} {'covered':>8} {'branches':>9} {'covered':>8}")
for room, (lines, hit, branches, taken) in sorted(rooms.items(), key=lambda item: (item[0] == "all of it", item)):
    share = f"{100 * taken / branches:7.1f}%" if branches else "       -"
    print(f"{room:22} {lines:7} {100 * hit / lines:7.1f}% {branches:9} {share}")
PYTHON
