#!/usr/bin/env python3
"""Compares our readings with those of Google Benchmark, function by function in turn.

agreement.py BUILD-DIRECTORY [--rounds N] [--default] [--functions NAME ...]

Each side is the least of N separate processes for each point. With --default the peer also runs
once with its default minimum time. Prints the ratios ours / peer by length and by function, and
the wall time of one pass of each side, as a table in Markdown.
"""
import argparse
import json
import os
import statistics
import subprocess
import tempfile
import time

FUNCTIONS = """
zolsAbs_32f_A24 zolsAbs_32fc_A24 zolsAcos_64f_A50 zolsAdd_32f_A24 zolsAsinh_32f_A21
zolsAtan_32f_A11 zolsAtan2_64f_A53 zolsCIS_32fc_A21 zolsCbrt_32f_A24 zolsCdfNorm_64f_A50
zolsCeil_32f zolsConj_64fc_A53 zolsCos_32f_A21 zolsCos_64f_A53 zolsCosh_64f_A26 zolsDiv_64f_A53
zolsDiv_32fc_A21 zolsErf_32f_A21 zolsErfInv_64f_A53 zolsErfc_64f_A50 zolsExp_32f_A11
zolsExp_64f_A53 zolsExp_64fc_A50 zolsExpm1_32f_A24 zolsHypot_64f_A50 zolsInv_32f_A11
zolsInvSqrt_32f_A24 zolsLn_32f_A24 zolsLn_64f_A50 zolsLog10_32f_A21 zolsMul_64f_A53
zolsMul_32fc_A21 zolsPow_32f_A21 zolsPow_64f_A53 zolsPowx_64f_A50 zolsSin_32f_A11
zolsSin_64f_A53 zolsSin_32fc_A24 zolsSinCos_64f_A50 zolsSqrt_64f_A53 zolsSqrt_64fc_A50
zolsTanh_32f_A24 zolsTrunc_64f
""".split()


def ours(build, function, directory):
    """Clocks per element by length, and the seconds that it took."""
    start = time.monotonic()
    subprocess.run([f"{build}/bin/bench_ps_zolvm", "-B", f"-f={function}", f"-r{directory}/t.csv"],
                   check=True, stdout=subprocess.DEVNULL)
    elapsed = time.monotonic() - start
    clocks = {}
    with open(f"{directory}/t.csv") as table:
        for line in table:
            cells = line.rstrip("\n").split(",")
            if len(cells) == 16 and cells[3].isdigit():
                clocks[int(cells[3])] = float(cells[12])
    return clocks, elapsed


def peer(build, function, min_time):
    """The same of Google Benchmark."""
    command = [f"{build}/bin/bench_agreement", f"--benchmark_filter=^{function}/",
               "--benchmark_format=json"]
    if min_time is not None:
        command.append(f"--benchmark_min_time={min_time}")
    start = time.monotonic()
    report = json.loads(subprocess.run(command, check=True, capture_output=True).stdout)
    elapsed = time.monotonic() - start
    factor = float(report["context"]["clocks_per_ns"])
    clocks = {}
    for row in report["benchmarks"]:
        length = int(row["name"].rsplit("/", 1)[1])
        clocks[length] = row["real_time"] * factor / length
    return clocks, elapsed


def keep_least(least, reading):
    for length, clocks in reading.items():
        least[length] = min(clocks, least.get(length, clocks))


def spread(ratios):
    ordered = sorted(ratios)
    at = lambda share: ordered[min(len(ordered) - 1, round(share * (len(ordered) - 1)))]
    return f"{statistics.median(ordered):.3f} | {at(0.05):.3f} | {at(0.95):.3f}"


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("build")
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--default", action="store_true")
    parser.add_argument("--functions", nargs="+", default=FUNCTIONS)
    options = parser.parse_args()

    mine, short, full = ({f: {} for f in options.functions} for _ in range(3))
    seconds = {"ours": 0.0, "short": 0.0, "default": 0.0}
    with tempfile.TemporaryDirectory() as directory:
        for round_ in range(options.rounds):
            for function in options.functions:
                reading, elapsed = ours(options.build, function, directory)
                keep_least(mine[function], reading)
                seconds["ours"] += elapsed / options.rounds
                reading, elapsed = peer(options.build, function, 0.01)
                keep_least(short[function], reading)
                seconds["short"] += elapsed / options.rounds
        if options.default:
            for function in options.functions:
                reading, elapsed = peer(options.build, function, None)
                keep_least(full[function], reading)
                seconds["default"] += elapsed

    sides = {"short": short} | ({"default": full} if options.default else {})
    lengths = sorted(next(iter(mine.values())))
    print(f"{len(options.functions)} functions, {len(lengths)} lengths, "
          f"least of {options.rounds} processes\n")
    for side, theirs in sides.items():
        ratio = {(f, n): mine[f][n] / theirs[f][n] for f in options.functions for n in lengths}
        print(f"Ours against the peer's {side} runs\n")
        print("| points | median | 5th percentile | 95th percentile |\n|---|---|---|---|")
        print(f"| all | {spread(ratio.values())} |")
        for n in lengths:
            print(f"| length {n} | {spread([ratio[f, n] for f in options.functions])} |")
        for f in options.functions:
            print(f"| {f} | {spread([ratio[f, n] for n in lengths])} |")
        outside = [(k, r) for k, r in ratio.items() if not 0.90 <= r <= 1.05]
        print(f"\nOutside 0.90 to 1.05: {len(outside)} of {len(ratio)} points")
        for (f, n), r in sorted(outside, key=lambda item: item[1]):
            print(f"    {f} {n}: {mine[f][n]:.3g} against {theirs[f][n]:.3g}, {r:.3f}")
        print()
    print("Seconds for one pass: " + ", ".join(f"{k} {v:.2f}" for k, v in seconds.items() if v))


if __name__ == "__main__":
    main()
