#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Runs Google Benchmark programs and writes a Markdown table.

usage: bench_table.py BUILD_DIR PROGRAM... [-- BENCHMARK-OPTION...]

A benchmark named `case/peer` (as `Gamma/orvane`, `Gamma/boost`) stands in one line with its peers; the ratio is
Orvane's time over the best peer's. User counters become columns. The geometric mean of the ratios stands below each
table, that of all programs at the end.
"""
import collections
import json
import math
import pathlib
import subprocess
import sys

UNITS = {"ns": 1.0, "us": 1e3, "ms": 1e6, "s": 1e9}
OURS = "orvane"
# What Google Benchmark writes about every run; other numbers are counters of the benchmark's own.
STANDARD = {"family_index", "per_family_instance_index", "repetitions", "repetition_index", "threads", "iterations",
            "real_time", "cpu_time"}


def cache(build, name):
    for line in (build / "CMakeCache.txt").read_text().splitlines():
        if line.startswith(name + ":"):
            return line.split("=", 1)[1]
    return ""


def heading(build):
    compiler = subprocess.run([cache(build, "CMAKE_CXX_COMPILER"), "--version"], capture_output=True, text=True,
                              check=True).stdout.splitlines()[0]
    kind = cache(build, "CMAKE_BUILD_TYPE")
    flags = " ".join((cache(build, "CMAKE_CXX_FLAGS"), cache(build, f"CMAKE_CXX_FLAGS_{kind.upper()}"),
                      "-ffp-contract=off")).split()
    processor = "unknown"
    for line in pathlib.Path("/proc/cpuinfo").read_text().splitlines():
        if line.startswith("model name"):
            processor = line.split(":", 1)[1].strip()
            break
    return f"{compiler}; `{' '.join(flags)}`; {processor}"


def duration(nanoseconds):
    for unit, size in (("s", 1e9), ("ms", 1e6), ("us", 1e3)):
        if nanoseconds >= size:
            return f"{nanoseconds / size:.3g} {unit}"
    return f"{nanoseconds:.3g} ns"


def mean(ratios):
    value = math.exp(sum(map(math.log, ratios)) / len(ratios))
    return f"Geometric mean of the {len(ratios)} ratios: {value:.2f}."


def table(runs, ratios):
    """The table; the ratios of its cases are added to the list."""
    cases = collections.OrderedDict()
    counters = []
    for run in runs:
        if run.get("run_type") == "aggregate" and run.get("aggregate_name") != "median":
            continue
        name = run.get("run_name", run["name"])
        case, _, peer = name.rpartition("/")
        if not case or peer.isdigit():
            case, peer = name, OURS
        own = {key: value for key, value in run.items()
               if key not in STANDARD and isinstance(value, (int, float)) and not isinstance(value, bool)}
        counters += [key for key in own if key not in counters]
        cases.setdefault(case, collections.OrderedDict())[peer] = (run["cpu_time"] * UNITS[run["time_unit"]], own)
    lines = ["| " + " | ".join(["case", "time per call", "best peer", "ratio", *counters]) + " |",
             "|" + "---|" * (4 + len(counters))]
    for case, peers in cases.items():
        ours = next((peer for peer in peers if peer.lower() == OURS), next(iter(peers)))
        time, own = peers[ours]
        others = sorted((entry[0], peer) for peer, entry in peers.items() if peer != ours)
        best = f"{others[0][1]} {duration(others[0][0])}" if others else ""
        if others:
            ratios.append(time / others[0][0])
        ratio = f"{ratios[-1]:.2f}" if others else ""
        cells = [case, duration(time), best, ratio, *(f"{own[key]:.3g}" if key in own else "" for key in counters)]
        lines.append("| " + " | ".join(cells) + " |")
    return "\n".join(lines)


def main():
    arguments, options = sys.argv[1:], []
    if "--" in arguments:
        cut = arguments.index("--")
        arguments, options = arguments[:cut], arguments[cut + 1:]
    if len(arguments) < 2:
        sys.exit(__doc__)
    build, programs = pathlib.Path(arguments[0]), arguments[1:]
    print(heading(build))
    every = []
    for program in programs:
        print(f"bench: {program}", file=sys.stderr)
        out = subprocess.run([program, "--benchmark_format=json", *options], stdout=subprocess.PIPE, text=True, check=True)
        title = pathlib.Path(program).name.removesuffix("_bench")
        ratios = []
        print(f"\n## {title}\n\n{table(json.loads(out.stdout)['benchmarks'], ratios)}")
        if ratios:
            print(f"\n{mean(ratios)}")
        every += ratios
    if len(programs) > 1 and every:
        print(f"\n## All programs\n\n{mean(every)}")


main()
