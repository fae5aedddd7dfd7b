"""Does in the current folder what a guide says: follow.py GUIDE SDK EMULATOR PRESS.

A file name alone on a line, in backticks, says which file the listing below it is, or (```diff)
changes. ```sh is run. For ```console the program is built; what stands behind "$" is run, and must
print what stands below it. Keys that the text since the last one names as "Alt+C, O" are pressed
meanwhile, in the program's window.
"""

import os
import pathlib
import re
import subprocess
import sys

FENCE = re.compile(r"(?P<text>.*?)^```(?P<kind>\w+)\n(?P<body>.*?)^```$", re.M | re.S)
KEYS = re.compile(r"Alt\+([A-Z]),\s+([A-Z])")
STAMP = re.compile(r"^\d{4}\.\d\d\.\d\d, \d\d:\d\d:\d\d", re.M)
SECONDS = 30

guide, sdk, emulator, press = sys.argv[1:]


def fail(what):
    sys.exit(f"{guide}: {what}")


def change(name, diff):
    text = pathlib.Path(name).read_text()
    for hunk in re.split(r"^@@\n", diff, flags=re.M):
        lines = hunk.splitlines(keepends=True)
        old = "".join(line[1:] for line in lines if line[0] in " -")
        new = "".join(line[1:] for line in lines if line[0] in " +")
        if text.count(old) != 1:
            fail(f"{name} has {text.count(old)} places for\n{hunk}")
        text = text.replace(old, new)
    pathlib.Path(name).write_text(text)


def run(command):
    """What it prints; it must succeed. (The other stream is shared with services of Wine.)"""
    command = command.replace("/opt/zbasic", sdk)
    shell = f'wine() {{ timeout {SECONDS} "{emulator}" "$@"; }}\n{command}'
    done = subprocess.run(["bash", "-c", shell], stdout=subprocess.PIPE,
                          env=dict(os.environ, LC_ALL="C"))
    text = done.stdout.decode("cp1252").replace("\r\n", "\n")
    if done.returncode != 0:
        fail(f"status {done.returncode} of\n{command}\n{text}")
    return text


def try_console(body, keys):
    run("cmake --build build")
    pressing = subprocess.Popen([emulator, press, "tally"] + keys) if keys else None
    for part in re.split(r"^\$ ", body, flags=re.M)[1:]:
        command, _, expected = part.partition("\n")
        printed = run(command)
        if STAMP.sub("STAMP", printed) != STAMP.sub("STAMP", expected):
            fail(f"{command}\nprints\n{printed}instead of\n{expected}")
    if pressing and pressing.wait() != 0:
        fail("no window for the keys in front of\n" + body)


keys = []
for fence in FENCE.finditer(pathlib.Path(guide).read_text()):
    text, kind, body = fence.group("text", "kind", "body")
    name = re.search(r"^`([\w.]+)`\n\n\Z", text, re.M)
    keys += [a + b for a, b in KEYS.findall(text)]
    if kind == "sh":
        run(body)
    elif kind == "console":
        try_console(body, keys)
        keys = []
    elif not name:
        fail("no file name above\n" + body)
    elif kind == "diff":
        change(name[1], body)
    else:
        pathlib.Path(name[1]).write_text(body)
