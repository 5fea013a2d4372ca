#!/usr/bin/env python3
"""Checks the rules that a compiler does not: which room includes and links which, what no file may contain.

    check_tree.py TREE          prints each fault as FILE:LINE: sentence; status 1 when there is one
    check_tree.py --words TREE  the same for words that read as if they had been translated
    check_tree.py --prove TREE  plants one fault of each kind in a copy, and fails where it is missed
"""

import contextlib
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

# A room's floor; a file includes rooms of its own floor or of the ones below.
FLOORS = {
    "platform": 1,
    "controls": 2,
    "layout": 3,
    "calibration": 3,
    "paper": 4,
    "choice": 4,
    "output": 4,
    "printing": 4,
    "sheets": 4,
    "app": 5,
    "cli": 5,
    "gui": 6,
}
LONGEST_SOURCE = 600
BESIDE_SRC = {"art/drawings.h"}  # the pictures, which are their own small library
CODE = {".cpp", ".h", ".c", ".hpp"}
TEXT = CODE | {".txt", ".cmake", ".md", ".py", ".sh", ".json", ".html", ".in", ".yml", ".rc", ".svg", ".manifest", ""}

# Written in pieces, so that this file keeps the rule it checks.
FORBIDDEN = [
    (re.compile(r"\bsp" + r"ecification", re.I), "names a document that the tree does not know"),
    (re.compile(r"\bsp" + r"ec\.md\b", re.I), "names a document that the tree does not know"),
    (re.compile(r"\bPart" + r" \d\.\d"), "names a chapter of a document that the tree does not know"),
]
# Words that read as if they had been translated; each has a plain one.
AWKWARD = [
    (re.compile(r"\bane" + r"w\b", re.I), '"again"'),
    (re.compile(r"\b(is|are|was|were|been) (to" + r"ld|ha" + r"d)\b", re.I), "an active verb"),
    (re.compile(r"\blook(s|ed|ing)? aft" + r"er\b", re.I), '"handle", "finish", "check"'),
    (re.compile(r"(?<!by )\bhand(s|ed|ing)? o" + r"n\b", re.I), '"pass", "keep"'),
    (re.compile(r"\bby tu" + r"rns\b", re.I), '"alternately"'),
    (re.compile(r"\ball the sa" + r"me\b", re.I), '"still", "anyway"'),
    (re.compile(r"\bdoo" + r"rs?\b", re.I), '"function", "hook"'),
]
UNFINISHED = re.compile(r"\b(TO" + r"DO|FIX" + r"ME|GTEST" + r"_SKIP|DIS" + r"ABLED_)")
EXAMPLE_VERSION = re.compile(r"versionText\(|nothing between the last two")  # the rule, by an example
LIBRARY = re.compile(r"\bveldara_library\(\s*(\w+)([^)]*)\)")
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')


def tracked_files(tree):
    """The files of the tree that are, or are about to be, kept in it."""
    git = subprocess.run(
        ["git", "-C", str(tree), "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
        capture_output=True,
    )
    if git.returncode == 0 and git.stdout:
        names = [Path(name) for name in git.stdout.decode().split("\0") if name]
    else:
        names = [path.relative_to(tree) for path in tree.rglob("*")]
        names = [name for name in names if name.parts[0] not in ("build", ".git")]
    return sorted(name for name in names if (tree / name).is_file())


def room_of(name):
    return name.parts[1] if len(name.parts) > 2 and name.parts[0] == "src" else None


def includes_of(text):
    for number, line in enumerate(text.splitlines(), 1):
        found = INCLUDE.match(line)
        if found:
            yield number, found.group(1), found.group(2)


def check_include(name, number, bracket, target):
    room = room_of(name)
    if bracket == "<" and target.startswith("wx/") and room != "gui":
        # These press the real program's widgets with the toolkit's own hands.
        if name.parts[:2] not in (("tests", "e2e"), ("bench", "gui")):
            yield f"{name}:{number}: the window toolkit is known to src/gui only"
    if bracket != '"' or room is None:
        return
    target_room = target.split("/")[0]
    if target in BESIDE_SRC:
        return
    if target_room not in FLOORS:
        yield f'{name}:{number}: "{target}" is not named from the root of src'
        return
    if FLOORS[target_room] > FLOORS.get(room, 99):
        yield f"{name}:{number}: {room} includes {target_room}, which stands above it"
    if room == "cli" and (target_room == "controls" or "/frm" in target):
        yield f"{name}:{number}: the command line is made of rules, without windows"
    inner = "/".join(target.split("/")[:2])
    own = "/".join(name.parts[1:3])
    if inner in ("platform/linux", "platform/windows") and own != inner:
        yield f"{name}:{number}: a system's own adaptors are reached through platform/system_platform.h"
    if own == "platform/text" and inner in ("platform/image",):
        yield f"{name}:{number}: text knows no pictures"
    if own in ("platform/linux", "platform/windows") and inner == "platform/image":
        yield f"{name}:{number}: the adaptors know no pictures"


def declared_libraries(tree, names):
    """Yields (file, line, library, its folder below src, the words after its name) of each room."""
    for name in names:
        if name.name == "CMakeLists.txt" and name.parts[0] in ("src", "art"):
            text = (tree / name).read_text(encoding="utf-8")
            folder = "art" if name.parts[0] == "art" else "/".join(name.parts[1:-1])
            for found in LIBRARY.finditer(text):
                line = text.count("\n", 0, found.start()) + 1
                yield name, line, found.group(1), folder, found.group(2).split()


def check_links(tree, names):
    """A room is linked with exactly the rooms whose files it includes."""
    libraries = list(declared_libraries(tree, names))
    folders = {library: folder for _, _, library, folder, _ in libraries}
    for file, line, library, folder, words in libraries:
        if folder == "art":
            continue
        linked = {folders[word] for word in words if word in folders}
        included = {}
        for name in names:
            if name.suffix not in CODE or name.parts[0] != "src":
                continue
            place = "/".join(name.parts[1:-1])
            owner = max((f for f in folders.values() if place == f or place.startswith(f + "/")), key=len, default="")
            if owner != folder:
                continue
            for _, bracket, target in includes_of((tree / name).read_text(encoding="utf-8")):
                if bracket == '"':
                    inside = [f for f in folders.values() if target.startswith(f + "/")]
                    included.setdefault(max(inside, key=len, default=folder), name)
        for other in sorted(linked - included.keys()):
            yield f"{file}:{line}: {library} links {other} and includes nothing of it"
        for other in sorted(included.keys() - linked - {folder}):
            yield f"{file}:{line}: {library} does not link {other}, which {included[other]} includes"


def check_readme(tree, names):
    """The README's table has a row for every folder at the top."""
    readme = tree / "README.md"
    if not readme.is_file():
        return
    rows = set(re.findall(r"^\| `([^`/]+)/` \|", readme.read_text(encoding="utf-8"), re.M))
    folders = {name.parts[0] for name in names if len(name.parts) > 1}
    for folder in sorted(folders ^ rows):
        fault = "has no row in the table of folders" if folder in folders else "is in the table of folders only"
        yield f"README.md:1: {folder}/ {fault}"


def stated_version(tree):
    """What stands in the top CMakeLists.txt, as users see it, or nothing."""
    listing = tree / "CMakeLists.txt"
    found = listing.is_file() and re.search(r"VERSION (\d+)\.(\d+)\.(\d+)", listing.read_text(encoding="utf-8"))
    return f"{found[1]}.{found[2]}{found[3]}" if found else None


def find_circle(edges):
    """One circle of a graph {node: set of nodes} as a list, or nothing."""
    done, path = set(), []

    def visit(node):
        if node in path:
            return path[path.index(node):] + [node]
        if node in done:
            return None
        path.append(node)
        for other in sorted(edges.get(node, ())):
            circle = visit(other)
            if circle:
                return circle
        path.pop()
        done.add(node)
        return None

    for start in sorted(edges):
        circle = visit(start)
        if circle:
            return circle
    return None


def check(tree):
    faults = []
    rooms, files = {}, {}
    names = tracked_files(tree)
    version = stated_version(tree)
    spelt = version and re.compile(r"(?i)(veldara|version).{0,16}\b" + re.escape(version) + r"(?![\d%])")
    for name in names:
        if name.suffix not in TEXT:
            continue
        try:
            text = (tree / name).read_text(encoding="utf-8")
        except UnicodeDecodeError:
            continue  # not a text
        for number, line in enumerate(text.splitlines(), 1):
            for pattern, fault in FORBIDDEN:
                if pattern.search(line):
                    faults.append(f"{name}:{number}: {fault}")
            if name.suffix in CODE | {".py", ".sh", ".cmake"} and UNFINISHED.search(line):
                faults.append(f"{name}:{number}: unfinished, or a test that does not run")
            if spelt and spelt.search(line) and not EXAMPLE_VERSION.search(line):
                faults.append(f"{name}:{number}: the version stands in CMakeLists.txt only")
        if name.suffix not in CODE:
            continue
        if name.parts[0] == "src":
            length = len(text.splitlines())
            if length > LONGEST_SOURCE:
                faults.append(f"{name}:{length}: longer than {LONGEST_SOURCE} lines")
            if name.suffix == ".h" and not text.startswith("//"):
                faults.append(f"{name}:1: a header starts by saying what it is for")
        if name.suffix == ".h" and "#pragma once" not in text:
            faults.append(f"{name}:1: a header without #pragma once")
        for number, bracket, target in includes_of(text):
            faults.extend(check_include(name, number, bracket, target))
            if bracket == '"' and name.parts[0] == "src":
                files.setdefault("/".join(name.parts[1:]), set()).add(target)
                target_room = target.split("/")[0]
                if room_of(name) and target_room != room_of(name):
                    rooms.setdefault(room_of(name), set()).add(target_room)
    faults.extend(check_links(tree, names))
    faults.extend(check_readme(tree, names))
    for edges in (rooms, files):
        circle = find_circle(edges)
        if circle:
            faults.append("src: a circle: " + " -> ".join(circle))
    for folder in sorted((tree / "src").iterdir()):
        if folder.is_dir() and folder.name not in FLOORS:
            faults.append(f"src/{folder.name}: a room without a floor")
    return faults


def check_words(tree):
    """Awkward words in comments, texts and pages."""
    faults = []
    for name in tracked_files(tree):
        if name.suffix not in TEXT - {".svg"}:
            continue
        with contextlib.suppress(UnicodeDecodeError):
            for number, line in enumerate((tree / name).read_text(encoding="utf-8").splitlines(), 1):
                found = [plain for pattern, plain in AWKWARD if pattern.search(line)]
                faults.extend(f"{name}:{number}: a plain word reads better: {plain}" for plain in found)
    return faults


# Each plants one fault: file, what is put into it, and a piece of the sentence that must follow.
PLANTED = [
    ("src/platform/planted.h", '// x\n#pragma once\n#include "controls/control.h"\n', "above it"),
    ("src/layout/planted.h", '// x\n#pragma once\n#include "app/frmMain.h"\n', "above it"),
    ("src/app/planted.cpp", "#include <wx/wx.h>\n", "toolkit"),
    ("tests/rules/planted.cpp", "#include <wx/wx.h>\n", "toolkit"),
    ("src/cli/planted.cpp", '#include "controls/control.h"\n', "without windows"),
    ("src/app/planted.cpp", '#include "platform/linux/stored_values.h"\n', "system_platform.h"),
    ("src/app/planted.cpp", '#include "frmMain.h"\n', "from the root"),
    ("src/app/planted.cpp", "// see the sp" + "ecification\n", "document"),
    ("docs/planted.md", "as Part" + " 2.1 has it\n", "chapter"),
    ("tests/planted.cpp", "TEST(A, DIS" + "ABLED_B) {}\n", "does not run"),
    ("src/paper/planted.cpp", "\n" * (LONGEST_SOURCE + 1), "longer than"),
    ("src/paper/planted.h", "#pragma once\n", "what it is for"),
    ("tests/planted.h", "// x\n", "pragma once"),
    ("src/planted/planted.cpp", "\n", "without a floor"),
    ("src/paper/planted.h", '// x\n#pragma once\n#include "paper/planted.h"\n', "circle"),
    ("src/planted/CMakeLists.txt", "veldara_library(veldara_planted USES veldara_text)\n", "includes nothing of it"),
    ("src/platform/text/planted.cpp", '#include "platform/files/planted.h"\n', "does not link platform/files"),
    ("planted/file.txt", "x\n", "no row in the table"),
    ("packaging/planted.txt", "Veldara VERSION, portable\n", "version stands"),
]


def prove(tree):
    missed = 0
    with tempfile.TemporaryDirectory() as folder:
        copy = Path(folder)
        shutil.copytree(tree / "src", copy / "src")
        for name in ("README.md", "CMakeLists.txt"):
            shutil.copy(tree / name, copy / name)
        for name, content, sentence in PLANTED:
            planted = copy / name
            fresh = [above for above in planted.parents if not above.exists()]
            planted.parent.mkdir(parents=True, exist_ok=True)
            planted.write_text(content.replace("VERSION", stated_version(tree)))
            if not any("planted" in fault and sentence in fault for fault in check(copy)):
                print(f"not found in {name}: {sentence}")
                missed += 1
            planted.unlink()
            for above in fresh:
                above.rmdir()
    print(f"{len(PLANTED) - missed} of {len(PLANTED)} planted faults found")
    return missed


def main(arguments):
    if len(arguments) == 2 and arguments[0] == "--prove":
        return 1 if prove(Path(arguments[1])) else 0
    if len(arguments) == 2 and arguments[0] == "--words":
        faults = check_words(Path(arguments[1]))
    else:
        faults = check(Path(arguments[0]))
    print("\n".join(faults) if faults else "no faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
