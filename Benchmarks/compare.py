#!/usr/bin/env python3
"""Compares the speed of two builds and names every loss of more than 10 %.

    Benchmarks/compare.py OLD NEW [--only REGEX]

OLD and NEW are build folders, whose programs run in turn several times, or files that report.py kept. Ends with 1 where
something became slower. For hand use on a quiet machine: a loss that a second run does not show was none.
"""

import argparse
import os
import statistics
import sys

import measuring


def times_of(reports, times):
    for report in reports:
        for name, (time, _) in measuring.medians(report).items():
            if name.endswith("/" + measuring.OURS):
                times.setdefault(name, []).append(time)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("old")
    parser.add_argument("new")
    parser.add_argument("--only", default="")
    parser.add_argument("--limit", type=float, default=10, help="per cent")
    parser.add_argument("--rounds", type=int, default=5)
    arguments = parser.parse_args()

    options = [f"--benchmark_filter={arguments.only}.*/{measuring.OURS}$"]
    sides = [(arguments.old, {}), (arguments.new, {})]
    rounds = 1 if all(os.path.isfile(source) for source, _ in sides) else arguments.rounds
    for index in range(rounds):
        # Each side goes first as often as the other.
        for source, times in sides if index % 2 == 0 else reversed(sides):
            times_of(measuring.measure(source, options, "0.02", "3"), times)

    old, new = ({name: statistics.median(values) for name, values in times.items()} for _, times in sides)
    losses = 0
    for name in sorted(old.keys() & new.keys()):
        change = (new[name] / old[name] - 1) * 100
        if abs(change) > arguments.limit:
            verdict = "SLOWER" if change > 0 else "faster"
            print(f"{verdict} {change:+7.1f} %  {old[name]:12.0f} → {new[name]:.0f} ns  {name}")
            losses += change > 0
    for name in sorted(old.keys() ^ new.keys()):
        print(f"only in {'OLD' if name in old else 'NEW'}: {name}")
    print(f"{len(old.keys() & new.keys())} compared, {losses} more than {arguments.limit:g} % slower")
    return 1 if losses else 0


if __name__ == "__main__":
    sys.exit(main())
