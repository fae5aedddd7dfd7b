#!/usr/bin/env python3
"""Names the calls of public headers that hand out a pointer, a handle or a view and that the page
about ownership does not have. ownership.py PAGE HEADER-FOLDER..."""
import pathlib
import re
import sys

HANDED_OUT = r"""(?:
    [\w:>]+(?:\s+const)?\s*\*+ | \bpair<[^>]*\*[^>]*> | \bH(?:WND|MENU|FONT|DC)\b | \b\w*string_view
)\s+(?:const\s+)?(?P<name>~?\w+)\s*\("""
FILLED_IN = r"(?P<name>\w+)\([^;{}()]*(?:\*\s*&|List&)\s*\w+[^;{}()]*\)"
CONVERSION = r"operator\s+(?:std::)?(?P<name>string_view)"


def public_part(header):
    """The header without comments, and without what classes keep to themselves."""
    lines, is_private = [], False
    for line in header.read_text().splitlines():
        line = line.split("//")[0]
        if re.match(r"\s*(public|protected|private):|};|(class|struct)\b", line):
            is_private = "private:" in line
        if not is_private:
            lines.append(line)
    return "\n".join(lines)


page = pathlib.Path(sys.argv[1]).read_text()
described = set(re.findall(r"\w+", " ".join(re.findall(r"`[^`]*`", page))))
found = set()
for folder in sys.argv[2:]:
    for header in sorted(pathlib.Path(folder).rglob("*.h")):
        for pattern in (HANDED_OUT, FILLED_IN, CONVERSION):
            for match in re.finditer(pattern, public_part(header), re.VERBOSE):
                found.add((match["name"], header.name))
missing = sorted((name, header) for name, header in found if name not in described)
for name, header in missing:
    print(f"{header}: {name}")
print(f"{len(found)} calls, {len(missing)} missing")
sys.exit(bool(missing) or len(found) < 30)
