#!/usr/bin/env python3
"""Measures every operation against its peers and writes Docs/Performance.md with a plot.

    Benchmarks/report.py [BUILD]            builds into BUILD (build/benchmarks) and runs all of it
    Benchmarks/report.py --texts FOLDER     with Chinese text from a folder instead of the generator
    Benchmarks/report.py --only REGEX       prints the table of some operations and writes no file
    Benchmarks/report.py --keep FILE        keeps the reports, as input for compare.py or in BUILD's place

Ratios are peer's time / our time, each the median of interleaved repetitions in one run of one program: 2.0 is twice as
fast as the peer. Speeds in MB/s are shown to tell what a ratio is made of; they mean nothing on another machine.
"""

import argparse
import datetime
import json
import math
import os
import platform
import subprocess
import sys

import measuring

# Loops that show a limit, and are no peers to beat.
LIMITS = ("memcpy", "widening", "bytecopy")

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))


def build(folder):
    if not os.path.exists(os.path.join(folder, "CMakeCache.txt")):
        configure(folder)
    subprocess.run(["cmake", "--build", folder, "-j", str(os.cpu_count())], check=True, stdout=subprocess.DEVNULL)


def configure(folder):
    subprocess.run(["cmake", "-S", ROOT, "-B", folder, "-DCMAKE_BUILD_TYPE=Release", "-DUTILITY_BUILD_BENCHMARKS=ON",
                    "-DUTILITY_BUILD_TESTS=OFF", "-DUTILITY_BUILD_APPS=OFF"], check=True, stdout=subprocess.DEVNULL)


def order(name):
    """Chinese text first, small sizes before large ones, peers before limits."""
    operation, text, size, contender = name.rsplit("/", 3)
    units = {"K": 1 << 10, "M": 1 << 20}
    number = int(size[:-1]) * units[size[-1]] if size[-1] in units else int(size)
    return operation, text != "chinese", text, number, contender in LIMITS, contender


def table(reports):
    """{operation: {(text, size): {contender: (time, speed)}}}; the programs' own order is drawn anew each time."""
    operations = {}
    for report in reports:
        results = measuring.medians(report)
        for name in sorted(results, key=order):
            operation, text, size, contender = name.rsplit("/", 3)
            operations.setdefault(operation, {}).setdefault((text, size), {})[contender] = results[name]
    return operations


def machine():
    try:
        with open("/proc/cpuinfo", encoding="utf-8") as file:
            return next(line.split(":")[1].strip() for line in file if line.startswith("model name"))
    except (OSError, StopIteration):
        return platform.processor() or platform.machine()


def ratio_text(value):
    return f"{value:.1f}" if value >= 1 else f"{value:.2f}"


def rows_of(cases):
    peers = []
    for contenders in cases.values():
        peers += [name for name in contenders if name != measuring.OURS and name not in peers]
    peers.sort(key=lambda name: (name in LIMITS, name))
    yield ["text", "size", "MB/s"] + [f"× {peer}" for peer in peers]
    for (text, size), contenders in cases.items():
        if measuring.OURS not in contenders:
            continue
        time, speed = contenders[measuring.OURS]
        ratios = [ratio_text(contenders[peer][0] / time) if peer in contenders else "" for peer in peers]
        yield [text, size, f"{speed / 1e6:,.0f}"] + ratios


def markdown(operations, context):
    lines = [
        "# Performance",
        "",
        "Written by `Benchmarks/report.py`; do not edit. `× peer` is how many times as fast the library is as that peer",
        "on the same bytes in the same run (medians of processor time over interleaved repetitions). MB/s are of this run",
        "and machine only.",
        "",
        f"- machine: {machine()}, {platform.system()} {platform.machine()}",
        f"- compiler: {context.get('compiler', '?')}, flags `{context.get('flags', '?')}`",
        f"- date: {datetime.date.today().isoformat()}",
        "",
        "![The ratio to the fastest peer of each operation](performance.svg)",
    ]
    for operation, cases in operations.items():
        rows = list(rows_of(cases))
        if len(rows) < 2:
            continue
        lines += ["", f"## {operation}", "", "| " + " | ".join(rows[0]) + " |",
                  "|---|---|" + "---:|" * (len(rows[0]) - 2)]
        lines += ["| " + " | ".join(row) + " |" for row in rows[1:]]
    return "\n".join(lines) + "\n"


def bars(operations):
    """(name, ratio to the fastest peer) at the largest size of each operation's first text that has a peer."""
    found = []
    for operation, cases in operations.items():
        best = {}
        for (text, _), contenders in cases.items():  # sizes rise, so the last one stays
            peers = [result[0] for name, result in contenders.items() if name != measuring.OURS and name not in LIMITS]
            if measuring.OURS in contenders and peers:
                best[text] = min(peers) / contenders[measuring.OURS][0]
        if best:
            text, ratio = next(iter(best.items()))
            found.append((f"{operation}, {text}", ratio))
    return found


def plot(operations):
    """Horizontal bars on a logarithmic scale, the line at 1 being as fast as the fastest peer."""
    values = bars(operations)
    left, width, step = 330, 560, 20
    low = min([1.0] + [ratio for _, ratio in values]) / 1.2
    high = max([2.0] + [ratio for _, ratio in values]) * 1.3

    def x(ratio):
        return left + width * math.log(ratio / low) / math.log(high / low)

    height = step * len(values) + 50
    out = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{left + width + 60}" height="{height}" '
           'font-family="sans-serif" font-size="12">',
           f'<rect width="{left + width + 60}" height="{height}" fill="white"/>',
           f'<text x="{left}" y="16">times as fast as the fastest peer (logarithmic scale)</text>']
    for tick in (0.1, 0.2, 0.5, 1, 2, 5, 10, 20, 50, 100, 200, 500, 1000):
        if low <= tick <= high:
            out.append(f'<line x1="{x(tick):.1f}" y1="22" x2="{x(tick):.1f}" y2="{height - 20}" '
                       f'stroke="{"black" if tick == 1 else "#ddd"}"/>')
            out.append(f'<text x="{x(tick):.1f}" y="{height - 6}" text-anchor="middle">{tick:g}</text>')
    for index, (name, ratio) in enumerate(values):
        y = 26 + step * index
        start, end = sorted((x(1), x(ratio)))
        out.append(f'<text x="{left - 6}" y="{y + 12}" text-anchor="end">{name}</text>')
        out.append(f'<rect x="{start:.1f}" y="{y + 2}" width="{end - start:.1f}" height="{step - 6}" '
                   f'fill="{"#3572a5" if ratio >= 1 else "#c0504d"}"/>')
        out.append(f'<text x="{end + 4:.1f}" y="{y + 12}">{ratio_text(ratio)}</text>')
    return "\n".join(out + ["</svg>"]) + "\n"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("build", nargs="?", default=os.path.join(ROOT, "build", "benchmarks"))
    parser.add_argument("--texts")
    parser.add_argument("--only")
    parser.add_argument("--keep")
    parser.add_argument("--seconds", default="0.02", help="of each repetition, at least")
    parser.add_argument("--repetitions", default="9")
    arguments = parser.parse_args()

    if not os.path.isfile(arguments.build):
        build(arguments.build)
    options = [f"--texts={arguments.texts}"] if arguments.texts else []
    options += [f"--benchmark_filter={arguments.only}"] if arguments.only else []
    reports = measuring.measure(arguments.build, options, arguments.seconds, arguments.repetitions)
    if arguments.keep:
        with open(arguments.keep, "w", encoding="utf-8") as file:
            json.dump(reports, file)
    operations = table(reports)
    text = markdown(operations, reports[0]["context"])
    if arguments.only:
        print(text)
        return
    docs = os.path.join(ROOT, "Docs")
    os.makedirs(docs, exist_ok=True)
    with open(os.path.join(docs, "Performance.md"), "w", encoding="utf-8") as file:
        file.write(text)
    with open(os.path.join(docs, "performance.svg"), "w", encoding="utf-8") as file:
        file.write(plot(operations))


if __name__ == "__main__":
    sys.exit(main())
