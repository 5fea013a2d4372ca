#!/usr/bin/env python3
"""Checks that a program was built so that an error in it is hard to abuse.

    check_hardening.py VERSION PROGRAM  prints what the program lacks; status 1 when it lacks anything
    check_hardening.py --prove CXX      builds a program without any of it; fails if that is missed

Linux programs: loaded at a random place (PIE), the tables of the loader read-only once it is done
(RELRO, bound at start), no executable stack, stack guards, checked library calls, no library path of
its own. Windows programs: random place with high entropy, no executable data, stack guards, no library at
start but those that Windows takes from its own folder in any case; and that they carry their version and the manifest that makes the system
treat them as they are written.
"""

import struct
import subprocess
import sys
import tempfile
from pathlib import Path


# The KnownDLLs of every Windows since version 10, and common controls, whose place the manifest says: all
# others would be looked for beside the program first.
WINDOWS_LIBRARIES = set(
    "advapi32 comctl32 comdlg32 gdi32 gdiplus imm32 kernel32 msvcrt ole32 oleaut32 rpcrt4 shell32 shlwapi user32 "
    "ws2_32".split()
)


# What the manifest asks of the system.
MANIFEST = {
    "Microsoft.Windows.Common-Controls": "current controls",
    "PerMonitorV2": "a scale of its own on every monitor",
    ">UTF-8</activeCodePage>": "UTF-8 as its code page",
    ">true</longPathAware>": "long paths",
    'level="asInvoker"': "the user's own rights",
}


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


def lacking_in_pe(content, version):
    start = struct.unpack_from("<I", content, 0x3C)[0]
    optional = start + 24
    flags = struct.unpack_from("<H", content, optional + 70)[0]
    wanted = {0x20: "high entropy", 0x40: "a random place in memory", 0x100: "data that does not run"}
    lacking = [sentence for flag, sentence in wanted.items() if not flags & flag]
    if directory(content, optional, 5)[1] == 0:
        lacking.append("the table without which it cannot be moved")
    if b"__stack_chk_fail\0" not in content:
        lacking.append("stack guards")
    foreign = imported_libraries(content, optional) - WINDOWS_LIBRARIES
    if foreign:
        lacking.append(f"independence of {', '.join(sorted(foreign))} at its start")
    carried = resources(content, optional)
    manifest = carried.get(24, b"").decode("utf-8")
    lacking += [sentence for words, sentence in MANIFEST.items() if words not in manifest]
    if file_version(carried.get(16, b"")) != version:
        lacking.append("its version")
    return lacking


def directory(content, optional, number):
    """Address and size of one of the program's tables; zeros when it has none."""
    return struct.unpack_from("<II", content, optional + 112 + 8 * number)


def place(content, optional, address):
    """Where in the file lies what the program has at an address."""
    count = struct.unpack_from("<H", content, optional - 18)[0]
    first = optional + struct.unpack_from("<H", content, optional - 4)[0]
    for i in range(count):
        start, size, raw = struct.unpack_from("<III", content, first + 40 * i + 12)
        if start <= address < start + size:
            return address - start + raw
    raise ValueError(f"address {address:#x} lies in no section")


def imported_libraries(content, optional):
    """Names without their ending, in small letters, from the table of imports."""
    names = set()
    entry = place(content, optional, directory(content, optional, 1)[0])
    while True:
        name = struct.unpack_from("<I", content, entry + 12)[0]
        if name == 0:
            return names
        start = place(content, optional, name)
        text = content[start : content.index(b"\0", start)].decode("ascii").lower()
        names.add(text.rsplit(".", 1)[0])
        entry += 20


def resources(content, optional):
    """The bytes of the first resource of each numbered kind."""
    address, size = directory(content, optional, 2)
    if size == 0:
        return {}
    root = place(content, optional, address)

    def entries(table):
        named, numbered = struct.unpack_from("<HH", content, table + 12)
        return [struct.unpack_from("<II", content, table + 16 + 8 * i) for i in range(named + numbered)]

    found = {}
    for kind, where in entries(root):
        while where & 0x80000000:  # a table of names, then one of languages
            where = entries(root + (where & 0x7FFFFFFF))[0][1]
        start, length = struct.unpack_from("<II", content, root + where)
        start = place(content, optional, start)
        found[kind] = content[start : start + length]
    return found


def file_version(resource):
    start = resource.find(struct.pack("<I", 0xFEEF04BD))
    if start < 0:
        return None
    high, low = struct.unpack_from("<II", resource, start + 8)
    return high >> 16, high & 0xFFFF, low >> 16, low & 0xFFFF


def lacking(program, version):
    content = Path(program).read_bytes()
    if content.startswith(b"\x7fELF"):
        return lacking_in_elf(program)
    if content.startswith(b"MZ"):
        return lacking_in_pe(content, version)
    return ["the form of a program"]


SOURCE = "#include <cstring>\n#include <string>\nint main(int n, char** a) { char b[9]; std::strcpy(b, a[0]); \
return b[n] + std::stoi(a[0]); }\n"


def built(compiler, flags):
    """What a program lacks that is built with these flags."""
    with tempfile.TemporaryDirectory() as folder:
        file = Path(folder) / "program.cpp"
        file.write_text(SOURCE)
        program = Path(folder) / "program.exe"
        subprocess.run([compiler, "-w", *flags, str(file), "-o", str(program)], check=True, capture_output=True)
        found = lacking(program, ())
    print(f"{' '.join(flags)}: lacks {', '.join(found) or 'nothing'}")
    return found


def prove(compiler):
    """Each protection that is left out must be missed."""
    bare = ["-O1", "-U_FORTIFY_SOURCE", "-fno-stack-protector"]
    if "mingw" in compiler:
        bare += ["-Wl,--disable-dynamicbase", "-Wl,--disable-high-entropy-va", "-Wl,--disable-nxcompat"]
        bare += ["-Wl,--disable-reloc-section"]
        return len(built(compiler, bare)) == 6 + len(MANIFEST) + 1
    bare += ["-fno-pie", "-no-pie"]
    bare += ["-Wl,-z,norelro", "-Wl,-z,lazy", "-Wl,-z,execstack", "-Wl,-rpath,/tmp"]
    firm = ["-O1", "-U_FORTIFY_SOURCE", "-D_FORTIFY_SOURCE=2", "-fstack-protector-all", "-fPIE", "-pie"]
    firm += ["-Wl,-z,relro", "-Wl,-z,now", "-Wl,-z,noexecstack"]
    return len(built(compiler, bare)) == 7 and not built(compiler, firm)


def main(arguments):
    if arguments[0] == "--prove":
        return 0 if prove(arguments[1]) else 1
    version, program = arguments
    faults = lacking(program, (*map(int, version.split(".")), 0, 0))
    print(f"{program}: {'lacks ' + ', '.join(faults) if faults else 'has everything'}")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
