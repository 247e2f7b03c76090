"""Runs the benchmark programs of a build and reads what they write: shared by report.py and compare.py."""

import json
import os
import statistics
import subprocess
import sys
import tempfile

OURS = "ours"


def programs(build):
    folder = os.path.join(build, "Benchmarks")
    names = sorted(name for name in os.listdir(folder) if name.endswith("_benchmark"))
    return [os.path.join(folder, name) for name in names]


def run(program, options, seconds, repetitions):
    """The program's own report: every contender several times, in an order that is drawn anew each time."""
    with tempfile.NamedTemporaryFile(suffix=".json") as out:
        subprocess.run(
            [program, f"--benchmark_min_time={seconds}", f"--benchmark_repetitions={repetitions}",
             "--benchmark_enable_random_interleaving=true", "--benchmark_out_format=json",
             f"--benchmark_out={out.name}", *options],
            check=True, stdout=subprocess.DEVNULL)
        with open(out.name, encoding="utf-8") as file:
            text = file.read()
    return json.loads(text) if text else None  # no name matched the options' filter


def medians(report):
    """The median processor time in nanoseconds, and the bytes of work per second, by name."""
    times, speeds = {}, {}
    for entry in report["benchmarks"]:
        if entry.get("run_type") != "iteration" or entry.get("error_occurred"):
            continue
        scale = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}[entry["time_unit"]]
        times.setdefault(entry["run_name"], []).append(entry["cpu_time"] * scale)
        speeds.setdefault(entry["run_name"], []).append(entry.get("bytes_per_second", 0))
    return {name: (statistics.median(values), statistics.median(speeds[name])) for name, values in times.items()}


def measure(source, options, seconds, repetitions):
    """The reports of a build folder's programs, or the one in a file that an earlier run wrote."""
    if os.path.isfile(source):
        with open(source, encoding="utf-8") as file:
            return json.load(file)
    reports = []
    for program in programs(source):
        print(os.path.basename(program), file=sys.stderr)
        reports.append(run(program, options, seconds, repetitions))
    return [report for report in reports if report]
