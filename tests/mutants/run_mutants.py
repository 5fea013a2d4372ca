#!/usr/bin/env python3
"""Plants small faults in a copy of the tree, one at a time, and checks that the tests find each.

    run_mutants.py [--jobs N] [--only WORD] [--keep FOLDER] [LIST...]
    run_mutants.py --propose N FILE...    N faults of each file, as lines for a list
    run_mutants.py --refill N LIST...     after the sources have changed: drops faults that are gone, adds
                                          files of the same folder, and fills each file up to N faults
    run_mutants.py --show [LIST...]       each fault as the line of the source, before and after;
                                          status 1 when one is not in the sources

A list has these lines:

    programs NAME...     the test programs that are run for the faults below, until one of them fails
    ctest EXPRESSION [PROGRAM...]
                         instead: the tests of that name, after these programs (veldara-tiles) are built
    file PATH            the source of the faults below
    FUNCTION KIND NUMBER [REPLACEMENT]
                         one fault; see cpp_mutants.py. The function may have moved to another file of the
                         folder. A replacement is for operators, numbers and names, and for
                         the statement of the kind "begin".

A fault is caught when a test fails, crashes or does not end. It is an error of the list when it does not
compile or is not there. Prints a table; status 1 when a fault was not caught or a list has an error.
"""

import argparse
import contextlib
import filecmp
import hashlib
import shutil
import subprocess
import sys
import tempfile
import time
from dataclasses import dataclass, replace
from pathlib import Path

import cpp_mutants

HERE = Path(__file__).resolve().parent
TREE = HERE.parent.parent
LONGEST_RUN = 300  # seconds; a fault that keeps a program from ending is found by this


@dataclass
class Mutant:
    tests: tuple  # words of the "programs" or "ctest" line
    file: str
    function: str
    kind: str
    number: int
    replacement: str

    def name(self):
        return f"{self.function} {self.kind} {self.number} {self.replacement}".rstrip()


def read_list(path):
    tests, file = (), None
    for line in path.read_text(encoding="utf-8").splitlines():
        words = line.split()
        if not words or words[0].startswith("#"):
            continue
        if words[0] in ("programs", "ctest"):
            tests = tuple(words)
        elif words[0] == "file":
            file = words[1]
        else:
            yield Mutant(tests, file, words[0], words[1], int(words[2]), " ".join(words[3:]))


def find(tree, mutant):
    """(path, text, fault) of a mutant; the last two are nothing when it is not there."""
    own = tree / mutant.file
    others = sorted(p for p in own.parent.glob("*.cpp") if p != own)
    found = []
    for path in [own, *others]:
        if not path.exists():
            continue
        text = path.read_text(encoding="utf-8")
        for fault in cpp_mutants.faults_of(text):
            if (fault.function, fault.kind, fault.number) == (mutant.function, mutant.kind, mutant.number):
                found.append((path, text, replace(fault, replacement=mutant.replacement or fault.replacement)))
        if found and path == own:
            break
    return found[0] if len(found) == 1 else (own, None, None)


def run(command, folder, limit=None):
    try:
        done = subprocess.run(command, cwd=folder, capture_output=True, text=True, errors="replace", timeout=limit)
        return done.returncode, done.stdout + done.stderr
    except subprocess.TimeoutExpired:
        return -1, "it did not end"


def targets_of(tests):
    if tests[0] == "ctest":
        return list(tests[2:]) or ["veldara-tiles"]
    return list(tests[1:])


def build(copy, targets, jobs):
    return run(["cmake", "--build", "build", "--target", *targets, "--", f"-j{jobs}"], copy)


def run_tests(copy, tests, jobs):
    """Status and output of the first test that fails, or of the last one."""
    if tests[0] == "ctest":
        command = ["ctest", "--test-dir", "build", "--no-tests=error", "--output-on-failure", "--stop-on-failure"]
        if "e2e" in tests[1]:
            command += ["--repeat", "until-pass:2"]  # a key can get lost in a display, which is no fault found
        return run([*command, f"-j{jobs}", "-R", tests[1]], copy, LONGEST_RUN)
    for program in tests[1:]:
        path = next(p for p in (copy / "build").rglob(program) if p.is_file())
        status, output = run([str(path), "--gtest_fail_fast", "--gtest_brief=1"], copy, LONGEST_RUN)
        if status != 0:
            break
    return status, output


def judge(copy, mutant, jobs):
    source, text, fault = find(copy, mutant)
    if fault is None:
        return "error: it is not in the sources"
    source.write_text(cpp_mutants.planted(text, fault), encoding="utf-8")
    try:
        status, output = build(copy, targets_of(mutant.tests), jobs)
        if status != 0:
            errors = [line for line in output.splitlines() if "error:" in line]
            return "error: it does not compile: " + (errors[0] if errors else output[-200:])
        return "caught" if run_tests(copy, mutant.tests, jobs)[0] != 0 else "NOT CAUGHT"
    finally:
        source.write_text(text, encoding="utf-8")


def copy_tree(copy):
    """Makes the copy equal to the tree; only files that differ are written, so that little is rebuilt."""
    kept = set()
    for source in TREE.rglob("*"):
        name = source.relative_to(TREE)
        if name.parts[0] in ("build", ".git", "dist") or not source.is_file():
            continue
        kept.add(name)
        target = copy / name
        if name != Path("cmake/VeldaraBuild.cmake") and target.exists() and filecmp.cmp(source, target, shallow=False):
            continue
        content = source.read_bytes()
        if name == Path("cmake/VeldaraBuild.cmake"):
            # A fault may leave a variable unused, which is not the question here.
            content = content.replace(b"-Werror", b"")
        if not target.exists() or target.read_bytes() != content:
            target.parent.mkdir(parents=True, exist_ok=True)
            target.write_bytes(content)
            target.chmod(source.stat().st_mode)
    for target in list(copy.rglob("*")):
        name = target.relative_to(copy)
        if name.parts[0] != "build" and target.is_file() and name not in kept:
            target.unlink()


def prepare(copy, mutants, jobs):
    """Builds the copy, and stops where its tests fail without a fault."""
    copy_tree(copy)
    # Without debugging symbols, which nobody looks at here, linking takes a fraction of the time.
    configure = ["cmake", "-S", ".", "-B", "build", "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug"]
    gui = "ON" if any({"test_e2e", "veldara"} & set(targets_of(m.tests)) for m in mutants) else "OFF"
    configure += ["-DCMAKE_CXX_FLAGS_DEBUG=-O1", f"-DVELDARA_GUI={gui}", "-DVELDARA_TESTS=ON"]
    status, output = run(configure, copy)
    if status != 0:
        sys.exit(output)
    for tests in sorted({m.tests for m in mutants}):
        status, output = build(copy, targets_of(tests), jobs)
        if status == 0:
            status, output = run_tests(copy, tests, jobs)
        if status != 0:
            sys.exit(f"{' '.join(tests)} fails without any fault:\n{output[-3000:]}")


def run_list(mutants, folder, jobs):
    found, bad = {}, 0
    start = time.monotonic()
    copy = Path(folder) / "tree"
    prepare(copy, mutants, jobs)
    for mutant in mutants:
        verdict = judge(copy, mutant, jobs)
        found.setdefault(mutant.file, []).append(verdict)
        if verdict != "caught":
            bad += 1
            print(f"{mutant.file}: {mutant.name()}: {verdict}", flush=True)
    for file, verdicts in found.items():
        print(f"{verdicts.count('caught'):3d} of {len(verdicts):3d} caught  {file}")
    print(f"{len(mutants) - bad} of {len(mutants)} caught in {time.monotonic() - start:.0f} s")
    return 1 if bad else 0


def proposed(count, file, kept=()):
    """Names of faults spread over the functions and kinds, with the kept ones; the same at every call."""
    faults = cpp_mutants.faults_of(Path(file).read_text(encoding="utf-8"))
    places = {fault.name(): fault.start for fault in faults}
    # Exchanged arguments seldom compile, and what stands at the beginning has no replacement.
    faults = [f for f in faults if f.kind not in ("begin", "swap") and f.name() not in kept]
    faults.sort(key=lambda fault: hashlib.sha256(fault.name().encode()).digest())
    used = {}
    chosen = list(kept)
    while faults and len(chosen) < count:
        best = min(faults, key=lambda f: used.get(f.function, 0) + used.get(f.kind, 0))
        faults.remove(best)
        chosen.append(best.name())
        for word in (best.function, best.kind):
            used[word] = used.get(word, 0) + 1
    return sorted(chosen, key=lambda name: places[" ".join(name.split()[:3])])


def propose(count, files):
    for file in files:
        print("\n".join(["", f"file {file}", *proposed(count, file)]))


def refill(count, lists):
    """Rewrites lists of one folder each."""
    for path in lists:
        mutants = list(read_list(path))
        kept = {}
        for mutant in mutants:
            source, _, fault = find(TREE, mutant)
            if fault is not None:
                kept.setdefault(source.relative_to(TREE).as_posix(), []).append(mutant.name())
        folder = (TREE / mutants[0].file).parent
        lines = [line for line in path.read_text(encoding="utf-8").splitlines() if line.startswith("#")]
        lines.append(" ".join(mutants[0].tests))
        for source in sorted(folder.glob("*.cpp")):
            if "windows" in source.stem:
                continue  # not compiled here
            file = source.relative_to(TREE).as_posix()
            names = list(dict.fromkeys(kept.get(file, [])))
            if names or len(source.read_text(encoding="utf-8").splitlines()) >= 30:
                names = proposed(count, source, names)
                lines += ["", f"file {file}", *names] if names else []
        path.write_text("\n".join(lines) + "\n", encoding="utf-8")


def show(mutants):
    gone = 0
    for mutant in mutants:
        path, text, fault = find(TREE, mutant)
        print(f"{mutant.file}: {mutant.name()}")
        if fault is None:
            print("    not in the sources")
            gone += 1
            continue
        number = text.count("\n", 0, fault.start)
        after = cpp_mutants.planted(text, fault).splitlines()
        print(f"    - {text.splitlines()[number].strip()}\n    + {after[number].strip()}")
    return 1 if gone > 0 else 0


def main():
    options = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    options.add_argument("--jobs", type=int, default=2)
    options.add_argument("--only", default="", help="only the files whose path has this word")
    options.add_argument("--keep", type=Path, help="build there, and leave it for a faster next run")
    options.add_argument("--propose", type=int, metavar="N")
    options.add_argument("--refill", type=int, metavar="N")
    options.add_argument("--show", action="store_true")
    options.add_argument("lists", nargs="*", type=Path)
    chosen = options.parse_args()
    if chosen.propose:
        return propose(chosen.propose, chosen.lists)
    if chosen.refill:
        return refill(chosen.refill, chosen.lists)
    lists = chosen.lists or sorted(HERE.glob("*.txt"))
    mutants = [m for path in lists for m in read_list(path) if chosen.only in m.file]
    if chosen.show:
        return show(mutants)
    with contextlib.ExitStack() as cleanup:
        folder = chosen.keep or cleanup.enter_context(tempfile.TemporaryDirectory(prefix="veldara_mutants_"))
        return run_list(mutants, folder, chosen.jobs)


if __name__ == "__main__":
    sys.exit(main())
