#!/usr/bin/env python3
"""How far readings of the same point lie apart from run to run.

repeatability.py PROGRAM [--runs N] [--worst K] [KEY ...]

Runs the program 2 N times in separate processes, with the keys (all functions at all lengths
without any), and prints spreads of the clocks per element over all points: the largest of N
runs against their least, each run against the next, the least of the first N runs against that of
the second N, and the same for their second least. With --worst it lists the readings of the K
points that are worst by the last.
"""
import argparse
import os
import subprocess
import tempfile


def run(program, keys, directory):
    """Clocks per element by function and length."""
    table = f"{directory}/t.csv"
    subprocess.run([program, "-B", f"-r{table}", *keys], check=True, stdout=subprocess.DEVNULL)
    clocks = {}
    with open(table) as lines:
        for line in lines:
            cells = line.rstrip("\n").split(",")
            if len(cells) == 16 and cells[3].isdigit():
                clocks[tuple(cells[:4])] = float(cells[12])
    os.remove(table)
    return clocks


def row(title, values):
    ordered = sorted(values)
    at = lambda share: ordered[round(share * (len(ordered) - 1))]
    print(f"| {title} | {at(0.5):.1%} | {at(0.9):.1%} | {at(0.99):.1%} |")


def apart(a, b):
    return max(a, b) / min(a, b) - 1


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("program")
    parser.add_argument("--runs", type=int, default=10)
    parser.add_argument("--worst", type=int, default=0)
    options, keys = parser.parse_known_args()
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
