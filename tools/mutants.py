#!/usr/bin/env python3
"""Says which faults the tests would not notice.

Makes one-line faults by rule in a copy of the sources, builds what each of them touches, runs the
tests, and prints the faults that left everything green. The copy lives in build/mutants and is kept
between runs. Called by `./check --mutants [ROOM] [--count N] [--seed S]`.
"""

import argparse
import os
import random
import re
import shutil
import subprocess
import sys
from dataclasses import dataclass
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
COPY = ROOT / "build" / "mutants"
BUILD = COPY / "build" / "test"
TEST_SECONDS = 300  # of one test program, beside other work; a fault that makes it hang is noticed

TEXT = re.compile(r'\b[Lu]"((?:[^"\\]|\\.)+)"')
COMPARISON = re.compile(r" (<=|>=|==|!=|<|>) ")
CONDITION = re.compile(r"^(\s*(?:\} else )?if \()((?!constexpr).*)(\) *(?:\{|[^{};]*;)?)$")
CALL_STATEMENT = re.compile(r"^\s+(?!return\b|throw\b|delete\b|co_|using\b|case\b|const\b|auto\b)"
                            r"[A-Za-z_][\w:.>\-]*(?:\(|\s*(?:\+|-|\|)?= ).*;$")
ARGUMENTS = re.compile(r"\(([A-Za-z_][\w.]*), ([A-Za-z_][\w.]*)(?=[,)])")
NUMBER = re.compile(r"(?<![\w.])(\d+)(?![\w.x])")
TRUTH = re.compile(r"\b(true|false)\b")
MOVED = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="}


@dataclass(frozen=True)
class Fault:
    room: str
    path: str
    line: int  # from 0
    rule: str
    text: str  # the line as it becomes


def replaced(line, match, group, text):
    return line[:match.start(group)] + text + line[match.end(group):]


def faults_of_line(line):
    """Yields (rule, changed line)."""
    for match in TEXT.finditer(line):
        middle = match.start(1) + len(match[1]) // 2
        if line[middle - 1] != "\\":
            yield "text changed", line[:middle] + "q" + line[middle:]
    for match in COMPARISON.finditer(line):
        yield "comparison moved", replaced(line, match, 1, MOVED[match[1]])
    if match := CONDITION.match(line):
        yield "condition negated", f"{match[1]}!({match[2]}){match[3]}"
    if CALL_STATEMENT.match(line) and line.count("(") == line.count(")"):
        yield "statement dropped", line[:len(line) - len(line.lstrip())] + ";"
    for match in ARGUMENTS.finditer(line):
        if match[1] != match[2]:
            swapped = replaced(line, match, 2, match[1])
            yield "arguments swapped", replaced(swapped, match, 1, match[2])
    for match in NUMBER.finditer(line):
        yield "constant changed", replaced(line, match, 1, str(int(match[1]) + 1))
    for match in TRUTH.finditer(line):
        other = "false" if match[1] == "true" else "true"
        yield "constant changed", replaced(line, match, 1, other)


def is_code(line):
    start = line.lstrip()
    return start and not start.startswith(("//", "#", "static_assert", "namespace", "template"))


def faults_of(path):
    lines = (ROOT / path).read_text(encoding="utf-8").split("\n")
    room = path.split("/")[1]
    for number, line in enumerate(lines):
        if is_code(line):
            for rule, text in faults_of_line(line.split("  // ")[0]):
                yield Fault(room, path, number, rule, text)


def sources(room):
    listed = subprocess.run(["git", "ls-files", "src"], cwd=ROOT, check=True,
                            capture_output=True, text=True).stdout.split()
    wanted = [path for path in listed if path.endswith((".cpp", ".h"))]
    return [path for path in wanted if room is None or path.split("/")[1] == room]


def in_turn(faults, chance):
    """All faults, room by room and rule by rule in turn, so that any number of them is spread."""
    heaps = {}
    for fault in faults:
        heaps.setdefault(fault.room, {}).setdefault(fault.rule, []).append(fault)
    for rules in heaps.values():
        for heap in rules.values():
            chance.shuffle(heap)
    while heaps:
        for room in sorted(heaps):
            rules = heaps[room]
            rule = chance.choice(sorted(rules))
            yield rules[rule].pop()
            if not rules[rule]:
                del rules[rule]
        heaps = {room: rules for room, rules in heaps.items() if rules}


def run(command, **more):
    # The faulty programs print what they please.
    return subprocess.run(command, cwd=COPY, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                          stdin=subprocess.DEVNULL, **more).returncode == 0


def copy_sources():
    tracked = subprocess.run(["git", "ls-files"], cwd=ROOT, check=True, capture_output=True,
                             text=True).stdout.split("\n")
    present = {Path(name) for name in tracked if name and (ROOT / name).is_file()}
    COPY.mkdir(parents=True, exist_ok=True)
    for old in COPY.rglob("*"):
        relative = old.relative_to(COPY)
        if old.is_file() and relative.parts[0] != "build" and relative not in present:
            old.unlink()
    for name in present:
        target = COPY / name
        target.parent.mkdir(parents=True, exist_ok=True)
        # Unchanged files keep their time, so that nothing is built again because of them.
        if not target.exists() or target.read_bytes() != (ROOT / name).read_bytes():
            shutil.copy2(ROOT / name, target)
            target.touch()


def built():
    return run(["cmake", "--build", str(BUILD)])


def tests_pass(room):
    """The room's own tests first: they fail soonest."""
    tests = ["ctest", "--test-dir", str(BUILD), "-j2", "--stop-on-failure", "--timeout",
             str(TEST_SECONDS)]
    return run(tests + ["-L", f"^room:{room}$"]) and run(tests + ["-LE", f"^room:{room}$"])


def verdict(fault):
    path = COPY / fault.path
    whole = path.read_text(encoding="utf-8")
    lines = whole.split("\n")
    lines[fault.line] = fault.text
    path.write_text("\n".join(lines), encoding="utf-8")
    try:
        if not built():
            return "not built"
        return "survived" if tests_pass(fault.room) else "noticed"
    finally:
        path.write_text(whole, encoding="utf-8")


def main():
    parser = argparse.ArgumentParser(description="Which one-line faults do the tests not notice?")
    parser.add_argument("room", nargs="?", help="a folder of src/; all of them when left out")
    parser.add_argument("--count", type=int, default=40, help="how many faults to try (40)")
    parser.add_argument("--seed", type=int, default=1, help="which faults those are (1)")
    options = parser.parse_args()

    paths = sources(options.room)
    if not paths:
        parser.error(f"no room {options.room} in src/")
    copy_sources()
    if not run(["cmake", "--preset", "test"]) or not built():
        sys.exit("The sources do not build as they are.")
    if not tests_pass("none"):
        sys.exit("The tests fail as they are.")

    chance = random.Random(options.seed)
    faults = [fault for path in paths for fault in faults_of(path)]
    tried = 0
    survivors = []
    for fault in in_turn(faults, chance):
        if tried == options.count:
            break
        outcome = verdict(fault)
        if outcome == "not built":
            continue
        tried += 1
        if outcome == "survived":
            survivors.append(fault)
        print(f"{tried:4} {outcome:9} {fault.path}:{fault.line + 1}: {fault.rule}: "
              f"{fault.text.strip()}", flush=True)
    built()
    noticed = tried - len(survivors)
    print(f"{noticed} of {tried} faults noticed"
          + (f" ({100 * noticed / tried:.0f} %)" if tried else ""))
    for fault in survivors:
        print(f"  nobody noticed {fault.path}:{fault.line + 1}: {fault.rule}: {fault.text.strip()}")


if __name__ == "__main__":
    os.environ.setdefault("TESSERA_BUILD", str(ROOT / "build"))
    main()
