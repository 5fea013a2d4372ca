#!/usr/bin/env python3
"""Plants small faults in a copy of the tree, one at a time, and looks whether the tests find each.

    run_mutants.py [--jobs N] [--only WORD] [--keep FOLDER] [LIST...]

A list has blocks: "file PATH", then pairs of lines "- OLD" and "+ NEW"; OLD stands exactly once in the
file. "program NAME" says which test program must fail (test_rules when it is not said). A mutant is
caught when that program fails, crashes or does not end; it is a fault of the list when it does not
compile or its OLD is not there. Prints a table; status 1 when a mutant was not caught.
"""

import argparse
import contextlib
import filecmp
import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path

HERE = Path(__file__).resolve().parent
TREE = HERE.parent.parent
LONGEST_RUN = 120  # seconds; a mutant that never ends is found by this


def read_list(path):
    """Yields (program, file, old, new)."""
    program, file, old = "test_rules", None, None
    for line in path.read_text(encoding="utf-8").splitlines():
        if line.startswith("program "):
            program = line[8:]
        elif line.startswith("file "):
            file = line[5:]
        elif line.startswith("- "):
            old = line[2:]
        elif line.startswith("+ "):
            yield program, file, old, line[2:]


def run(command, folder, limit=None):
    try:
        done = subprocess.run(command, cwd=folder, capture_output=True, text=True, errors="replace", timeout=limit)
        return done.returncode, done.stdout + done.stderr
    except subprocess.TimeoutExpired:
        return -1, "it did not end"


def build(copy, program, jobs):
    return run(["cmake", "--build", "build", "--target", program, "--", f"-j{jobs}"], copy)


def judge(copy, mutant, jobs):
    program, file, old, new = mutant
    source = copy / file
    text = source.read_text(encoding="utf-8")
    if text.count(old) != 1:
        return f"stale: stands {text.count(old)} times in the file"
    source.write_text(text.replace(old, new), encoding="utf-8")
    try:
        status, output = build(copy, program, jobs)
        if status != 0:
            errors = [line for line in output.splitlines() if "error:" in line]
            return "does not compile: " + (errors[0] if errors else output[-200:])
        tests = next((copy / "build").rglob(program))
        status, _ = run([str(tests), "--gtest_fail_fast", "--gtest_brief=1"], copy, LONGEST_RUN)
        return "caught" if status != 0 else "NOT CAUGHT"
    finally:
        source.write_text(text, encoding="utf-8")


def copy_tree(copy):
    """Makes the copy like the tree, touching only files that differ, so that little is built anew."""
    for source in TREE.rglob("*"):
        name = source.relative_to(TREE)
        if name.parts[0] in ("build", ".git") or not source.is_file():
            continue
        target = copy / name
        if not target.exists() or not filecmp.cmp(source, target, shallow=False):
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copyfile(source, target)
            target.chmod(source.stat().st_mode)


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    options.add_argument("--jobs", type=int, default=2)
    options.add_argument("--only", default="", help="only the files whose path has this word")
    options.add_argument("--keep", type=Path, help="build there, and leave it for a faster next run")
    options.add_argument("lists", nargs="*", type=Path, default=sorted(HERE.glob("*.txt")))
    chosen = options.parse_args()
    mutants = [m for path in chosen.lists for m in read_list(path) if chosen.only in m[1]]

    start = time.monotonic()
    found, bad = {}, []
    with contextlib.ExitStack() as cleanup:
        folder = chosen.keep
        if not folder:
            folder = cleanup.enter_context(tempfile.TemporaryDirectory(prefix="veldara_mutants_"))
        copy = Path(folder) / "tree"
        copy_tree(copy)
        options_file = copy / "cmake/VeldaraBuild.cmake"
        # A mutant may leave a variable unused, which is not what is asked here.
        options_file.write_text(options_file.read_text().replace("-Werror", ""))
        configure = ["cmake", "-S", ".", "-B", "build", "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug"]
        configure += ["-DVELDARA_GUI=OFF"]
        status, output = run(configure, copy)
        if status != 0:
            sys.exit(output)
        for program in sorted({m[0] for m in mutants}):
            status, output = build(copy, program, chosen.jobs)
            if status != 0:
                sys.exit(output[-3000:])
            tests = next((copy / "build").rglob(program))
            status, output = run([str(tests), "--gtest_brief=1"], copy, LONGEST_RUN)
            if status != 0:
                sys.exit(f"{program} fails without any mutant:\n{output[-3000:]}")
        for mutant in mutants:
            verdict = judge(copy, mutant, chosen.jobs)
            found.setdefault(mutant[1], []).append(verdict)
            if verdict != "caught":
                bad.append((mutant, verdict))
                print(f"{mutant[1]}: {verdict}\n    - {mutant[2]}\n    + {mutant[3]}", flush=True)
    for file, verdicts in found.items():
        print(f"{verdicts.count('caught'):3d} of {len(verdicts):3d} caught  {file}")
    total = sum(len(verdicts) for verdicts in found.values())
    print(f"{total - len(bad)} of {total} caught in {time.monotonic() - start:.0f} s")
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
