#!/usr/bin/env python3
"""Paired passes beside what else one would take to compare two libraries, in one hour.

alternatives.py BUILD-DIRECTORY BASELINE LIBRARY [--changed NAME ...] [--floor CLOCKS] [KEY ...]

BASELINE and LIBRARY are folders; the functions NAME are those of LIBRARY that were made slower,
without any both are the same library. Each way compares the same functions (KEYs of ps_zolvm that
select) at all lengths and calls a point changed beyond 1%. Prints for each way the seconds, the
points called that were changed and that were not, and how far the unchanged ones lie off. Points
whose calls are shorter than --floor don't count as changed ones.

Google Benchmark: 10 repetitions in random order, both sides one after the other; a point is called
as its compare tool does, by the medians of processor time and the U test at 5%. hyperfine: 10 runs of ps_zolvm a side
for each function, called by the means beyond two standard deviations.
"""
import argparse
import json
import math
import os
import statistics
import subprocess
import tempfile
import time


def run(command, library=None, **options):
    environment = dict(os.environ)
    if library:
        environment["LD_LIBRARY_PATH"] = library
    return subprocess.run(command, env=environment, stdout=options.pop("stdout", subprocess.DEVNULL),
                          check=options.pop("check", True), **options)


def table(path):
    points = {}
    with open(path) as lines:
        for line in lines:
            cells = line.rstrip("\n").split(",")
            if len(cells) == 16 and cells[3].isdigit():
                name = "_".join(c for c in cells[:3] if c != "-")
                points[name, int(cells[3])] = cells
    return points


def plain(options, library, directory):
    run([f"{options.build}/bin/ps_zolvm", "-B", f"-r{directory}/t.csv", *options.keys], library)
    return {p: float(cells[12]) for p, cells in table(f"{directory}/t.csv").items()}


def two_runs(options, directory):
    before = plain(options, options.baseline, directory)
    after = plain(options, options.library, directory)
    return {p: (after[p] / before[p], None) for p in before}


def paired(options, directory):
    report = run([f"{options.build}/bin/ps_tables", "pair", "-q", "--format", "csv", "--program",
                  f"{options.build}/bin/ps_zolvm", "--baseline", options.baseline, "--library",
                  options.library, "-o", f"{directory}/pair.csv", "--", *options.keys],
                 stdout=subprocess.PIPE, check=False, text=True).stdout
    ratios = {}
    for p, cells in table(f"{directory}/pair.csv").items():
        words = cells[11].split()
        ratio = next((float(w[6:]) for w in words if w.startswith("ratio=")), None)
        if ratio:
            ratios[p] = (ratio, "slower" in words or "faster" in words)
    return ratios, report


def u_test(a, b):
    """Two-sided chance by the normal approximation."""
    u = sum((x > y) + 0.5 * (x == y) for x in a for y in b)
    sigma = math.sqrt(len(a) * len(b) * (len(a) + len(b) + 1) / 12)
    return math.erfc(abs(u - len(a) * len(b) / 2) / sigma / math.sqrt(2))


def benchmark_side(options, library, names):
    pattern = "^zols(" + "|".join(names) + ")/"
    report = json.loads(run([f"{options.build}/bin/bench_agreement", f"--benchmark_filter={pattern}",
                             "--benchmark_repetitions=10", "--benchmark_min_time=0.05",
                             "--benchmark_enable_random_interleaving=true",
                             "--benchmark_format=json"],
                            library, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout)
    times = {}
    for row in report["benchmarks"]:
        if row["run_type"] == "iteration":
            name, length = row["name"].split("/")[:2]
            times.setdefault((name[4:], int(length)), []).append(row["cpu_time"])
    return times


def google(options, names):
    before = benchmark_side(options, options.baseline, names)
    after = benchmark_side(options, options.library, names)
    ratios = {}
    for p in before:
        ratio = statistics.median(after[p]) / statistics.median(before[p])
        ratios[p] = (ratio, abs(ratio - 1) > 0.01 and u_test(before[p], after[p]) < 0.05)
    return ratios


def hyperfine(options, names, directory):
    ratios = {}
    for name in names:
        commands = [f"LD_LIBRARY_PATH={folder} {options.build}/bin/ps_zolvm -B -f=zols{name}"
                    for folder in (options.baseline, options.library)]
        run(["hyperfine", "-r", "10", "-w", "1", "--export-json", f"{directory}/h.json", *commands],
            stderr=subprocess.DEVNULL)
        with open(f"{directory}/h.json") as file:
            old, new = json.load(file)["results"]
        ratio = new["mean"] / old["mean"]
        ratios[name, 0] = (ratio, abs(new["mean"] - old["mean"])
                           > 2 * math.hypot(old["stddev"], new["stddev"]))
    return ratios


def report(way, seconds, ratios, changed):
    unchanged = [p for p in ratios if p not in changed and (p[1] or p[0] not in
                                                            {name for name, _ in changed})]
    found = sum(ratios[p][1] for p in ratios if p in changed) if changed else 0
    wanted = sum(p in ratios for p in changed)
    false = sum(ratios[p][1] for p in unchanged)
    off = sorted(abs(ratios[p][0] - 1) for p in unchanged)
    share = lambda bound: f"{sum(o > bound for o in off) / max(1, len(off)):.1%}"
    print(f"| {way} | {seconds:.0f} | {found} of {wanted} | {false} of {len(unchanged)} | "
          f"{off[len(off) // 2]:.2%} | {share(0.01)} | {share(0.05)} |", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("build")
    parser.add_argument("baseline")
    parser.add_argument("library")
    parser.add_argument("--changed", nargs="*", default=[])
    parser.add_argument("--floor", type=float, default=2000.0)
    options, options.keys = parser.parse_known_args()
    with tempfile.TemporaryDirectory() as directory:
        clocks = plain(options, options.baseline, directory)
        names = sorted({name for name, _ in clocks})
        changed = {p for p in clocks if p[0] in options.changed
                   and clocks[p] * p[1] >= options.floor}
        doubtful = {p for p in clocks if p[0] in options.changed} - changed
        print(f"{len(clocks)} points\n\n| | seconds | found | false alarms | unchanged ones off by "
              "(median) | over 1% | over 5% |\n|---|---|---|---|---|---|---|")
        for way, make in (("two runs", lambda: two_runs(options, directory)),
                          ("Google Benchmark", lambda: google(options, names)),
                          ("ps_tables pair", lambda: paired(options, directory)[0]),
                          ("hyperfine", lambda: hyperfine(options, names, directory))):
            start = time.monotonic()
            ratios = make()
            seconds = time.monotonic() - start
            ratios = {p: (r, abs(r - 1) > 0.01 if called is None else called)
                      for p, (r, called) in ratios.items() if p not in doubtful}
            marks = changed if way != "hyperfine" else {(n, 0) for n in options.changed}
            report(way, seconds, ratios, marks)


if __name__ == "__main__":
    main()
