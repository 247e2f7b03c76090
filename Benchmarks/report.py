#!/usr/bin/env python3
"""Measures every operation against its peers and writes Docs/Performance.md with a plot, Docs/Pictures/performance.svg.

Needs CMake, Google Benchmark and gnuplot, and takes about ten minutes, on a machine that does nothing else.

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
import os
import platform
import re
import subprocess
import sys

import measuring

# Loops that show a limit, and are no peers to beat.
LIMITS = ("memcpy", "widening", "bytecopy")

# What is aimed at: for operations, kinds of text and sizes that match, the ratio to each peer. The first that matches counts.
TARGETS = [
    (r"GBKBig5_ToUnicode-\w+/chinese/", {"iconv": 6, "icu": 6}),
    (r"utf8toGbk/chinese/", {"iconv": 9, "icu": 4}),
    (r"(utf8_to_unicode|utf8tou|unicode_to_utf8)/chinese/", {"iconv": 6}),
    (r"(GBKBig5_ToUnicode-\w+|utf8\w+|unicode_to_utf8)/english/", {"memcpy": 0.5, "widening": 0.5}),
    (r"(ANSIToU|UTF8ToANSI|UnicodeToANSI|CodeTrans_To)", {"libc": 3}),
    (r"CodeTrans_CodeDetect-\w+/windows/", {"icu": 20, "uchardet": 20}),
    (r"CodeTrans_CodeDetect-\w+/html/", {"icu": 1, "uchardet": 1}),
    (r"CodeTrans_CodeDetect-\w+/chinese/1M", {"icu": 10, "uchardet": 10}),
    (r"vHtmlToText/", {"bytecopy": 0.5}),
    (r"(str_normalization|QuanJiao2BanJiao|WordStandard|GetCharCount|IsAll)", {"strstr": 10}),
    (r"(C?StrToken|gfn_|GetStrVector)", {"std": 1, "std-in-place": 1, "strtok_r": 1}),
    (r"MaxMatching/", {"std": 3}),
    (r"Strhash/\w+/(64|1K|64K)$", {"plain": 3}),
    (r"Intersection/\w+-by-1000/", {"std": 10}),
    (r"Intersection/even", {"std": 2}),
    (r"(ReadFile-|FileCopy-)", {"read": 0.9, "read-write": 0.9}),
    (r"(ComputeSim|SortByNumber|ExtractEmail)", {"plain": 3}),
    (r"(str2time|time2str|formatDateTime)/", {"mktime": 1, "strftime": 1}),
    (r"textkit::(Decode|Encode)-", {"tables": 1 / 1.3}),
    (r"textkit::", {"fixed": 1 / 1.5, "tables": 1 / 1.5}),
]

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))


def build(folder):
    if not os.path.exists(os.path.join(folder, "CMakeCache.txt")):
        configure(folder)
    subprocess.run(["cmake", "--build", folder, "--target", "benchmarks", "-j", str(os.cpu_count())], check=True, stdout=subprocess.DEVNULL)


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


def targets_of(operation, text, size):
    name = f"{operation}/{text}/{size}"
    return next((targets for pattern, targets in TARGETS if re.match(pattern, name)), {})


def cell(ratio, target):
    """The ratio; with a target that in brackets behind it, and in bold type where the ratio falls short of it."""
    if target is None:
        return ratio_text(ratio)
    text = ratio_text(ratio)
    return f"{text if ratio >= target else f'**{text}**'} ({target:.2g})"


def rows_of(operation, cases):
    peers = []
    for contenders in cases.values():
        peers += [name for name in contenders if name != measuring.OURS and name not in peers]
    peers.sort(key=lambda name: (name in LIMITS, name))
    yield ["text", "size", "MB/s"] + [f"× {peer}" for peer in peers]
    for (text, size), contenders in cases.items():
        if measuring.OURS not in contenders:
            continue
        time, speed = contenders[measuring.OURS]
        targets = targets_of(operation, text, size)
        ratios = [cell(contenders[peer][0] / time, targets.get(peer)) if peer in contenders else "" for peer in peers]
        yield [text, size, f"{speed / 1e6:,.0f}"] + ratios


def markdown(operations, context):
    lines = [
        "# Performance",
        "",
        "Written by `Benchmarks/report.py`; do not edit. `× peer` is how many times as fast the library is as that peer",
        "on the same bytes in the same run (medians of processor time over interleaved repetitions). The ratio aimed at stands",
        "in brackets, in bold type what falls short of it. MB/s are of this run and machine only.",
        "",
        f"- machine: {machine()}, {platform.system()} {platform.machine()}",
        f"- compiler: {context.get('compiler', '?')}, flags `{context.get('flags', '?')}`",
        f"- date: {datetime.date.today().isoformat()}",
        "",
        "![The ratio to the fastest peer of each operation](Pictures/performance.svg)",
    ]
    for operation, cases in operations.items():
        rows = list(rows_of(operation, cases))
        if len(rows) < 2:
            continue
        lines += ["", f"## {operation}", "", "| " + " | ".join(rows[0]) + " |",
                  "|---|---|" + "---:|" * (len(rows[0]) - 2)]
        lines += ["| " + " | ".join(row) + " |" for row in rows[1:]]
    return "\n".join(lines) + "\n"


def bars(operations):
    """(name, ratio to the fastest peer, target or None) at the largest size of each operation's first text with a peer."""
    found = []
    for operation, cases in operations.items():
        best = {}
        for (text, size), contenders in cases.items():  # sizes rise, so the last one stays
            peers = {name: result[0] for name, result in contenders.items()
                     if name != measuring.OURS and (name not in LIMITS or set(contenders) <= {measuring.OURS, *LIMITS})}
            if measuring.OURS in contenders and peers:
                fastest = min(peers, key=peers.get)
                target = targets_of(operation, text, size).get(fastest)
                best[text] = (f"{operation}, {text}, {size} × {fastest}", peers[fastest] / contenders[measuring.OURS][0],
                              target)
        if best:
            found.append(next(iter(best.values())))
    return found


def plot(operations, path):
    """Horizontal bars from 1 on a logarithmic scale, and a mark where the target is."""
    values = bars(operations)
    height = 16 * len(values) + 80
    quoted = [name.replace("_", "\\\\_") for name, _, _ in values]
    lines = [f'{index} {ratio:.4g} {target if target else "NaN"} "{name}"'
             for index, ((_, ratio, target), name) in enumerate(zip(values, quoted))]
    script = f"""
set terminal svg size 900,{height} dynamic font "sans-serif,11" background "white"
set output "{path}"
$data << EOD
{chr(10).join(lines)}
EOD
set title "Times as fast as the fastest peer (logarithmic scale)"
set logscale x
set yrange [{len(values) - 0.3}:-0.7]
set xtics (0.1, 0.2, 0.5, 1, 2, 5, 10, 20, 50, 100, 200, 500)
set grid xtics
set key top right outside horizontal
set tics scale 0
set style fill solid noborder
x0(r) = r < 1 ? r : 1
x1(r) = r < 1 ? 1 : r
plot $data using 2:1:(x0($2)):(x1($2)):($1-0.35):($1+0.35):ytic(4) with boxxyerror lc rgb "#3572a5" title "reached", \\
     $data using 3:1:($3/1.03):($3*1.03):($1-0.45):($1+0.45) with boxxyerror lc rgb "#c0504d" title "aimed at"
"""
    subprocess.run(["gnuplot"], input=script, text=True, check=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("build", nargs="?", default=os.path.join(ROOT, "build", "benchmarks"))
    parser.add_argument("--texts")
    parser.add_argument("--only")
    parser.add_argument("--keep")
    parser.add_argument("--seconds", default="0.02", help="of each repetition, at least")
    parser.add_argument("--repetitions", default="5")
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
    plot(operations, os.path.join(docs, "Pictures", "performance.svg"))


if __name__ == "__main__":
    sys.exit(main())
