#!/usr/bin/env python3
"""Line and branch coverage of src/ without the views, by all tests that need no display.

    tests/coverage.py [JOBS]     prints the uncovered lines of each file, and a table a room

The build stays in build/coverage, so that a second run builds only what has changed. A line or branch
of a header counts as run when any of the programs ran it. Branches that only exceptions take are left
out.
"""

import json
import os
import pathlib
import subprocess
import sys
from collections import defaultdict
from concurrent.futures import ThreadPoolExecutor

ROOT = pathlib.Path(__file__).resolve().parent.parent
TREE = ROOT / "build" / "coverage"


def run_tests(jobs):
    subprocess.run(["cmake", "--preset", "coverage", "-DVELDARA_TESTS=ON", "-DVELDARA_GUI=OFF"],
                   check=True, cwd=ROOT, stdout=subprocess.DEVNULL)
    subprocess.run(["cmake", "--build", TREE, "--", f"-j{jobs}"], check=True,
                   stdout=subprocess.DEVNULL)
    for counts in TREE.rglob("*.gcda"):
        counts.unlink()
    subprocess.run(["ctest", "--test-dir", TREE, f"-j{jobs}", "--output-on-failure", "--quiet"],
                   check=True)


def counts_of(counts):
    """What gcov knows of one object file: a list of files with their lines."""
    report = subprocess.run(["gcov", "--json-format", "--stdout", "--branch-probabilities", counts],
                            check=True, cwd=TREE, capture_output=True).stdout
    for document in report.splitlines():
        unit = json.loads(document)
        for file in unit["files"]:
            yield os.path.normpath(os.path.join(unit["current_working_directory"], file["file"])), \
                file["lines"]


def own_name(path):
    """Below the project's folder, or None for what is not counted."""
    name = os.path.relpath(path, ROOT)
    return name if name.startswith("src/") and not name.startswith("src/gui/") else None


def room_of(name):
    parts = name.split("/")
    return "/".join(parts[1:3]) if parts[1] == "platform" and len(parts) > 3 else parts[1]


def collect(jobs):
    """How often each line, and each branch of it, was taken, by the file's name."""
    lines, branches = defaultdict(lambda: defaultdict(int)), defaultdict(lambda: defaultdict(int))
    with ThreadPoolExecutor(jobs) as pool:
        for unit in pool.map(lambda counts: list(counts_of(counts)), TREE.rglob("*.gcda")):
            for path, rows in unit:
                name = own_name(path)
                for row in rows if name else []:
                    number = row["line_number"]
                    lines[name][number] += row["count"]
                    ways = [way["count"] for way in row["branches"] if not way["throw"]]
                    for index, count in enumerate(ways):
                        branches[name][number, index] += count
    return lines, branches


def print_uncovered(lines):
    for name in sorted(lines):
        missed = [str(number) for number, count in sorted(lines[name].items()) if count == 0]
        if missed:
            print(f"{name}: {', '.join(missed)}")


def print_rooms(lines, branches):
    rooms = defaultdict(lambda: [0, 0, 0, 0])
    for name, rows in lines.items():
        for room in (room_of(name), "all of it"):
            for offset, taken in ((0, rows.values()), (2, branches[name].values())):
                rooms[room][offset] += len(taken)
                rooms[room][offset + 1] += sum(count > 0 for count in taken)
    print("\n| Room | Lines | Covered | Branches | Covered |\n| --- | --- | --- | --- | --- |")
    for room, (all_lines, run, ways, taken) in sorted(
            rooms.items(), key=lambda item: (item[0] == "all of it", item)):
        print(f"| {room} | {all_lines:,} | {100 * run / all_lines:.1f}% "
              f"| {ways:,} | {100 * taken / max(ways, 1):.1f}% |")


def main():
    jobs = int(sys.argv[1]) if len(sys.argv) > 1 else os.cpu_count()
    run_tests(jobs)
    lines, branches = collect(jobs)
    print_uncovered(lines)
    print_rooms(lines, branches)


if __name__ == "__main__":
    main()
