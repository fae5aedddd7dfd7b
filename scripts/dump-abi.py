#!/usr/bin/env python3
"""Prints how the compiler lays out the classes of the public headers: dump-abi.py COMPILER FOLDER...

For each class its size, its bases, its data members with their offsets, and the slots that its
virtual operations have in the table. Programs that were built against older headers rely on all of
it. FOLDERs are include folders; the debug information of a source that includes all is read.
"""

import pathlib
import re
import subprocess
import sys
import tempfile

SOURCE = '#include "sv/sv.h"\n#include "zbasic/zbasic.h"\n'
ENTRY = re.compile(r"^ <(\w+)><(\w+)>: Abbrev Number: \d+ \((DW_TAG_\w+)\)")
ATTRIBUTE = re.compile(r"^\s+<\w+>\s+(DW_AT_\w+)\s*: (.*)")
OURS = re.compile(r"(SV::|ISequence|(__)?Zel|des_)")
CLASSES = ("DW_TAG_class_type", "DW_TAG_structure_type")


class Entry:
    """One entry of the debug information, and those inside it."""

    def __init__(self, key, tag):
        self.key, self.tag, self.attributes, self.children = key, tag, {}, []

    def text(self, name):
        value = self.attributes.get(name, "")
        return re.sub(r"^\(indirect string, offset: \w+\): ", "", value).strip()

    def number(self, name):
        found = re.search(r"DW_OP_\w+: (\d+)|^(\d+)$", self.text(name))
        return int(found[1] or found[2]) if found else 0


def entries(lines):
    """All entries by their place; those inside another are its children."""
    found, open_entries = {}, {}
    for line in lines:
        if match := ENTRY.match(line):
            level, key, tag = int(match[1], 16), match[2], match[3]
            entry = found[key] = Entry(key, tag)
            open_entries[level] = entry
            entry.parent = open_entries.get(level - 1)
            if entry.parent:
                entry.parent.children.append(entry)
        elif (match := ATTRIBUTE.match(line)) and found:
            entry.attributes[match[1]] = match[2]
    return found


def full_name(entry):
    names = []
    while entry is not None and entry.tag != "DW_TAG_compile_unit":
        names.append(entry.text("DW_AT_name"))
        entry = entry.parent
    return "::".join(reversed(names))


def describe(entry, found):
    """The lines about one class."""
    def referred(child):
        return found[child.text("DW_AT_type").strip("<>").removeprefix("0x")]

    bases, members, slots = [], [], []
    for child in entry.children:
        if child.tag == "DW_TAG_inheritance":
            offset = child.number("DW_AT_data_member_location")
            bases.append(f"{full_name(referred(child))} at {offset}")
        elif child.tag == "DW_TAG_member" and "DW_AT_data_member_location" in child.attributes:
            name = child.text("DW_AT_name")
            members.append((child.number("DW_AT_data_member_location"), name))
        elif child.tag == "DW_TAG_subprogram" and "DW_AT_vtable_elem_location" in child.attributes:
            slots.append((child.number("DW_AT_vtable_elem_location"), child.text("DW_AT_name")))
    yield f"{full_name(entry)}: {entry.number('DW_AT_byte_size')} bytes"
    yield from (f"  base {base}" for base in bases)
    yield from (f"  {offset:4} {name}" for offset, name in members)
    yield from (f"  slot {slot} {name}" for slot, name in sorted(slots))


def main():
    compiler, *folders = sys.argv[1:]
    with tempfile.TemporaryDirectory() as work:
        source, compiled = pathlib.Path(work, "all.cpp"), pathlib.Path(work, "all.o")
        source.write_text(SOURCE)
        includes = [f"-I{folder}" for folder in folders]
        subprocess.run([compiler, "-std=c++20", "-g", "-fno-eliminate-unused-debug-types",
                        "-femit-class-debug-always", *includes, "-c", source, "-o", compiled],
                       check=True)
        objdump = re.sub(r"g\+\+(-posix)?$", "objdump", compiler)
        dump = subprocess.run([objdump, "--dwarf=info", compiled], check=True,
                              capture_output=True, text=True)
    found = entries(dump.stdout.splitlines())
    classes = [entry for entry in found.values()
               if entry.tag in CLASSES and "DW_AT_byte_size" in entry.attributes
               and entry.text("DW_AT_name") and OURS.match(full_name(entry))]
    for entry in sorted(classes, key=full_name):
        print("\n".join(describe(entry, found)))


if __name__ == "__main__":
    main()
