#!/usr/bin/env python3
"""Checks that a program was built so that an error in it is hard to abuse.

    check_hardening.py PROGRAM...      prints what each one lacks; status 1 when one lacks anything
    check_hardening.py --prove CXX     builds a program without any of it; fails if that is missed

Linux programs: loaded at a random place (PIE), the tables of the loader read-only once it is done
(RELRO, bound at start), no executable stack, stack guards, checked library calls, no library path of
its own. Windows programs: random place with high entropy, no executable data, no library but those that
every Windows has.
"""

import struct
import subprocess
import sys
import tempfile
from pathlib import Path


# What every Windows since version 10 brings along, as far as our programs use it.
WINDOWS_LIBRARIES = set(
    "advapi32 comctl32 comdlg32 gdi32 gdiplus imm32 kernel32 msimg32 msvcrt ole32 oleacc oleaut32 rpcrt4 shell32 "
    "shlwapi user32 uuid uxtheme version winmm winspool ws2_32".split()
)


def readelf(program, *options):
    return subprocess.run(
        ["readelf", "--wide", *options, str(program)], capture_output=True, text=True, check=True
    ).stdout


def lacking_in_elf(program):
    header = readelf(program, "--file-header")
    segments = readelf(program, "--program-headers")
    dynamic = readelf(program, "--dynamic")
    symbols = readelf(program, "--dyn-syms")
    lacking = []
    if "DYN (" not in header or "INTERP" not in segments:
        lacking.append("a random place in memory")
    if "GNU_RELRO" not in segments:
        lacking.append("read-only loader tables")
    if "BIND_NOW" not in dynamic and " NOW" not in dynamic:
        lacking.append("binding at the start")
    stack = [line.split() for line in segments.splitlines() if "GNU_STACK" in line]
    if not stack or "E" in stack[0][6]:
        lacking.append("a stack that does not run")
    if any("LOAD" in line and " RWE " in line for line in segments.splitlines()):
        lacking.append("memory that is either written or run")
    if "__stack_chk_fail" not in symbols:
        lacking.append("stack guards")
    if "_chk@" not in symbols.replace("__stack_chk_fail@", ""):
        lacking.append("checked library calls")
    if "RPATH" in dynamic or "RUNPATH" in dynamic:
        lacking.append("libraries from the system's places only")
    return lacking


def lacking_in_pe(content):
    start = struct.unpack_from("<I", content, 0x3C)[0]
    optional = start + 24
    flags = struct.unpack_from("<H", content, optional + 70)[0]
    wanted = {0x20: "high entropy", 0x40: "a random place in memory", 0x100: "data that does not run"}
    lacking = [sentence for flag, sentence in wanted.items() if not flags & flag]
    relocations = struct.unpack_from("<I", content, optional + 112 + 5 * 8 + 4)[0]
    if relocations == 0:
        lacking.append("the table without which it cannot be moved")
    foreign = imported_libraries(content, optional) - WINDOWS_LIBRARIES
    if foreign:
        lacking.append(f"independence of {', '.join(sorted(foreign))}")
    return lacking


def imported_libraries(content, optional):
    """Names without their ending, in small letters, from the table of imports."""
    count = struct.unpack_from("<H", content, optional - 18)[0]
    first = optional + struct.unpack_from("<H", content, optional - 4)[0]
    sections = [struct.unpack_from("<III", content, first + 40 * i + 12) for i in range(count)]

    def place(address):
        for start, size, raw in sections:
            if start <= address < start + size:
                return address - start + raw
        raise ValueError(f"address {address:#x} lies in no section")

    names = set()
    entry = place(struct.unpack_from("<I", content, optional + 112 + 8)[0])
    while True:
        name = struct.unpack_from("<I", content, entry + 12)[0]
        if name == 0:
            return names
        start = place(name)
        text = content[start : content.index(b"\0", start)].decode("ascii").lower()
        names.add(text.rsplit(".", 1)[0])
        entry += 20


def lacking(program):
    content = Path(program).read_bytes()
    if content.startswith(b"\x7fELF"):
        return lacking_in_elf(program)
    if content.startswith(b"MZ"):
        return lacking_in_pe(content)
    return ["the form of a program"]


def prove(compiler):
    """Each protection that is left out must be missed."""
    source = '#include <cstring>\nint main(int n, char** a) { char b[9]; std::strcpy(b, a[0]); return b[n]; }\n'
    bare = ["-O1", "-U_FORTIFY_SOURCE", "-fno-stack-protector", "-fno-pie", "-no-pie"]
    bare += ["-Wl,-z,norelro", "-Wl,-z,lazy", "-Wl,-z,execstack", "-Wl,-rpath,/tmp"]
    firm = ["-O1", "-U_FORTIFY_SOURCE", "-D_FORTIFY_SOURCE=2", "-fstack-protector-all", "-fPIE", "-pie"]
    firm += ["-Wl,-z,relro", "-Wl,-z,now", "-Wl,-z,noexecstack"]
    with tempfile.TemporaryDirectory() as folder:
        file = Path(folder) / "program.cpp"
        file.write_text(source)
        found = {}
        for name, flags in (("bare", bare), ("firm", firm)):
            program = Path(folder) / name
            subprocess.run(
                [compiler, "-w", *flags, str(file), "-o", str(program)], check=True, capture_output=True
            )
            found[name] = lacking(program)
            print(f"{name}: lacks {', '.join(found[name]) or 'nothing'}")
    return len(found["bare"]) == 7 and not found["firm"]


def main(arguments):
    if arguments[0] == "--prove":
        return 0 if prove(arguments[1]) else 1
    status = 0
    for program in arguments:
        faults = lacking(program)
        print(f"{program}: {'lacks ' + ', '.join(faults) if faults else 'has everything'}")
        status |= bool(faults)
    return status


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
