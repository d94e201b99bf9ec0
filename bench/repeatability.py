#!/usr/bin/env python3
"""How far readings of the same point lie apart from run to run.

repeatability.py PROGRAM [--runs N] [--worst K] [KEY ...]

Runs the program 2 N times in separate processes, with the keys (all functions at all lengths
without any), and prints spreads of the clocks per element over all points: the largest of N
runs against their least, each run against the next, the least of the first N runs against that of
the second N, and the same for their second least. With --worst it lists the readings of the K
points that are worst by the last.

repeatability.py PROGRAM --pairs BASELINE [--runs N] [--truth R] [--least C] [--worst K] [KEY ...]

Runs the program N times with this Baseline, the sides changing places from run to run, and prints
how far the ratios of all points lie from 1, or from --truth: those of each run, and the median of
the N. --least takes only points whose calls are of so many clocks.
"""
import argparse
import math
import os
import statistics
import subprocess
import tempfile


def rows(program, keys, directory):
    """The cells of the table's points, by function and length."""
    table = f"{directory}/t.csv"
    subprocess.run([program, "-B", f"-r{table}", *keys], check=True, stdout=subprocess.DEVNULL)
    points = {}
    with open(table) as lines:
        for line in lines:
            cells = line.rstrip("\n").split(",")
            if len(cells) == 16 and cells[3].isdigit():
                points[tuple(cells[:4])] = cells
    os.remove(table)
    return points


def run(program, keys, directory):
    """Clocks per element by function and length."""
    return {p: float(cells[12]) for p, cells in rows(program, keys, directory).items()}


def run_pairs(program, keys, directory, least):
    """Ratio, and whether quiet pairs decided, of the points that have a ratio."""
    pairs = {}
    for p, cells in rows(program, keys, directory).items():
        words = cells[11].split()
        ratio = [float(word[6:]) for word in words if word.startswith("ratio=")]
        if ratio and float(cells[12]) * int(p[3]) >= least:
            pairs[p] = (ratio[0], "quiet" in words)
    return pairs


def row(title, values):
    ordered = sorted(values)
    at = lambda share: ordered[round(share * (len(ordered) - 1))]
    print(f"| {title} | {at(0.5):.1%} | {at(0.9):.1%} | {at(0.99):.1%} |")


def apart(a, b):
    return max(a, b) / min(a, b) - 1


def pair_row(title, ratios, truth):
    off = sorted(abs(ratio / truth - 1) for ratio in ratios)
    over = lambda bound: f"{sum(o > bound for o in off) / len(off):.2%}"
    at = lambda share: off[round(share * (len(off) - 1))]
    print(f"| {title} | {at(0.5):.2%} | {at(0.9):.2%} | "
          + " | ".join(over(bound) for bound in (0.005, 0.01, 0.02, 0.05)) + " |")


def report_pairs(runs, truth, worst):
    points = set.intersection(*(set(r) for r in runs))
    medians = {p: statistics.median(r[p][0] for r in runs) for p in points}
    quiet = statistics.mean(r[p][1] for r in runs for p in points)
    print(f"{len(points)} points, {len(runs)} passes, {quiet:.0%} of the rows quiet\n")
    print("| off | median | 90th percentile | over 0.5% | over 1% | over 2% | over 5% |")
    print("|---|---|---|---|---|---|---|")
    pair_row("one pass", [r[p][0] for r in runs for p in points], truth)
    pair_row(f"median of {len(runs)} passes", medians.values(), truth)
    logs = statistics.median(math.log(m / truth) for m in medians.values())
    print(f"\nmedian of log ratio: {logs:+.4%}")
    for p in sorted(points, key=lambda p: -abs(medians[p] / truth - 1))[:worst]:
        print(*p, f"{medians[p]:.4f}:", *(f"{r[p][0]:.4f}" + "s"[r[p][1]:] for r in runs))


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("program")
    parser.add_argument("--runs", type=int, default=10)
    parser.add_argument("--worst", type=int, default=0)
    parser.add_argument("--pairs", metavar="BASELINE")
    parser.add_argument("--truth", type=float, default=1.0)
    parser.add_argument("--least", type=float, default=0.0)
    options, keys = parser.parse_known_args()
    if options.runs < 2 and not options.pairs:
        parser.error("--runs: the second least of a half takes two runs or more")
    if options.pairs:
        with tempfile.TemporaryDirectory() as directory:
            runs = [run_pairs(options.program, [f"-dBaseline={options.pairs}",
                                                f"-dBaselineFirst={i % 2}", *keys],
                              directory, options.least) for i in range(options.runs)]
        report_pairs(runs, options.truth, options.worst)
        return
    with tempfile.TemporaryDirectory() as directory:
        runs = [run(options.program, keys, directory) for _ in range(2 * options.runs)]
    points = runs[0].keys()
    first, second = ({p: sorted(r[p] for r in half) for p in points}
                     for half in (runs[:options.runs], runs[options.runs:]))
    print(f"{len(points)} points, {options.runs} runs\n")
    print("| | median | 90th percentile | 99th percentile |\n|---|---|---|---|")
    row(f"largest of {options.runs} against least",
        [apart(half[p][0], half[p][-1]) for half in (first, second) for p in points])
    row("one run against the next", [apart(runs[i][p], runs[i + 1][p])
                                     for i in range(len(runs) - 1) for p in points])
    row(f"least of {options.runs} against another {options.runs}",
        [apart(first[p][0], second[p][0]) for p in points])
    row(f"second least of {options.runs} against another {options.runs}",
        [apart(first[p][1], second[p][1]) for p in points])
    worst = sorted(points, key=lambda p: -apart(first[p][1], second[p][1]))
    for p in worst[:options.worst]:
        print(*p, *(f"{r[p]:.4g}" for r in runs))


if __name__ == "__main__":
    main()
