#!/usr/bin/env python3
"""Makes the table and the JSON file of a benchmark run; exit code 1 when a goal is missed.

    report.py FIGURES JSON [NAME ...]

FIGURES has one JSON object a line: the component's figures and, for the codecs, those of the native
program. What came several times counts with its median.
"""

import json
import statistics
import sys


def read(path):
    component, native = {}, {}
    with open(path, encoding="utf-8") as lines:
        for figures in map(json.loads, lines):
            name = figures["name"]
            if "native" in figures:
                native.setdefault(name, []).append(figures["native"])
            else:
                component.setdefault(name, []).append(figures)
    return component, native


def merged(runs, natives):
    """One benchmark's figures, as the last run told them, with medians of all."""
    result = dict(runs[-1])
    result["component"] = statistics.median(run["component"] for run in runs)
    if natives:
        result["baseline"] = statistics.median(natives)
        result["value"] = result["component"] / result["baseline"]
    result["met"] = result["value"] <= result["goal"]
    return result


def short(number):
    return f"{number:,.3f}" if number < 10 else f"{number:,.1f}"


def print_table(rows):
    print(f"\n{'':52} {'component':>12} {'baseline':>12} {'':5} {'value':>7} {'goal':>6}")
    for row in rows:
        verdict = "met" if row["met"] else "MISSED"
        print(f"{row['work']:52} {short(row['component']):>12} {short(row['baseline']):>12} "
              f"{row['unit']:5} {row['value']:7.2f} {row['goal']:6g} {verdict}")
        print(f"    against: {row['against']}")


def main():
    figures, target, *names = sys.argv[1:]
    component, native = read(figures)
    rows = [merged(runs, native.get(name)) for name, runs in component.items()
            if not names or any(name.startswith(wanted) for wanted in names)]
    print_table(rows)
    with open(target, "w", encoding="utf-8") as file:
        json.dump(rows, file, indent=2)
    missed = [row["work"] for row in rows if not row["met"]]
    print("\nAll goals are met." if not missed else f"\nMissed: {', '.join(missed)}.")
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main())
