#!/usr/bin/env python3
"""The order of the rooms, and the check that no file includes from a room above its own.

A room is a folder. It may include from itself and from rooms that stand before it, never from one
that stands after it, so that the rooms have no cycles and can be read from the lowest up.
"""

import pathlib
import re
import subprocess
import sys

# The component's rooms, from the lowest floor up.
COMPONENT = """text codec automation server host archive content options mapping functions progress
    query script component""".split()
# The host kit's rooms; the files in its own folder are below them all.
KIT = ["", *"model query project_file services objects script controls".split()]
# The console program's rooms; the files in its own folder are what they share and what uses them.
CLI = "records package workbook import review preview".split()
# What the programs around the component use of it: they know its other rooms by interface only.
SHARED = ["text", "codec", "automation", "server"]
# The part of the contract that is a table: every host may know it.
CONTRACT = ["src/host/known_properties.h"]
# Headers made from interface definitions, and the lowest room that may know them.
GENERATED = {"kelos.h": "host", "tessera.h": "host"}
GENERATED_BY_KIT = ["hostkit.h", "model.h", "services.h"]

INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)
ROOT = pathlib.Path(__file__).resolve().parent.parent


def room_of(path):
    """('src', 'codec') for src/codec/uu_encode.cpp, ('cli', '') for cli/main.cpp."""
    program, *folders = pathlib.PurePosixPath(path).parent.parts
    return program, "/".join(folders)


def found(name, source):
    """The file that an include of `source` names, below the root; None when there is none."""
    if name in GENERATED or name in GENERATED_BY_KIT:
        return name
    for folder in ["src", "", pathlib.PurePosixPath(source).parent]:
        path = pathlib.PurePosixPath(folder) / name
        if (ROOT / path).is_file():
            return str(path)
    return None


def may_know(source, target):
    """Whether the file `source` may include the file `target`."""
    program, room = room_of(source)
    if target in GENERATED_BY_KIT:
        return program != "src"
    if target in GENERATED:
        return program != "src" or rank(room) >= rank(GENERATED[target])
    its_program, its_room = room_of(target)
    if program == "src":
        return its_program == "src" and rank(its_room) <= rank(room)
    if its_program == "src":
        return its_room in SHARED or target in CONTRACT
    return its_program == program and is_below(program, its_room, room)


def is_below(program, its_room, room):
    if program == "hostkit":
        return KIT.index(its_room) <= KIT.index(room)
    return "" in (its_room, room) or CLI.index(its_room) <= CLI.index(room)


def rank(room):
    return COMPONENT.index(room)


def findings(source):
    for name in INCLUDE.findall((ROOT / source).read_text(encoding="utf-8")):
        target = found(name, source)
        if target is None:
            yield f'{source}: "{name}" is in no room'
        elif not may_know(source, target):
            yield f'{source}: "{name}" is in a room above'


def main():
    tracked = ["git", "ls-files", *(f"{program}/*.{ending}" for program in ("src", "hostkit", "cli")
                                    for ending in ("cpp", "h"))]
    sources = subprocess.run(tracked, cwd=ROOT, check=True, capture_output=True, text=True)
    sources = sources.stdout.split()
    wrong = [line for source in sources for line in findings(source)]
    print("\n".join(wrong + [f"{len(sources)} files, {len(wrong)} includes from a room above"]))
    return 1 if wrong or not sources else 0


if __name__ == "__main__":
    sys.exit(main())
