#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Fits of all distributions to one sample, beside SciPy's differential evolution on the same objective.

usage: bench/scipy_fit.py <fit_bench program> [output file]

Draws the sample (1,000 values) and runs the program on it twice, at the budget that bench/fit_quality.md names. A
distribution has converged when the two runs, whose generators have different seeds, agree in its error to one per cent;
the headline counts those only, and none that was stopped by the time limit. For the families that SciPy has, too, its differential evolution minimises the same sum
of squared distances. A second part fits the plain distributions to 10^4, 10^5 and 10^6 values with few evaluations and
tells what a whole fit takes from that.
"""
import platform
import re
import statistics
import subprocess
import sys
import tempfile
import time

import numpy as np
import scipy

from fit_quality import FAMILIES, next_second, peer

SOLVER, CANDIDATES, ITERATIONS, THREADS = 4, 40, 150, 2  # run
SIZES, SMALL, SIMPLE = [10**4, 10**5, 10**6], (6, 3), 3  # large samples: candidates, iterations, solver gto
PLAIN, LIMIT = 57, 10  # seconds after which a fit is stopped: StudentsT and its generalisations may take a minute


def run(program, sample, candidates, iterations, solver=SOLVER, plain=False):
    """The program's rows {code: (name, seconds, error, how it ended)} and the seconds of the whole."""
    with tempfile.NamedTemporaryFile("w", suffix=".txt") as file:
        file.write("\n".join(repr(float(v)) for v in sample))
        file.flush()
        arguments = [file.name, solver, candidates, iterations, THREADS, PLAIN if plain else 10**6, 0 if plain else LIMIT]
        text = subprocess.run([program, *map(str, arguments)], check=True, capture_output=True, text=True).stdout
    cells = [[cell.strip() for cell in line.strip("|").split("|")] for line in text.splitlines() if line.startswith("|")]
    rows = {int(code): (name, float(seconds), float(error), ended) for name, code, seconds, error, ended in cells[2:]}
    return rows, float(re.search(r"distributions in ([0-9.]+) s,", text)[1])


def evaluations(candidates, iterations):
    return candidates * (1 + 2 * iterations)  # the start, and gto's two tries a candidate in each iteration


def main():
    if len(sys.argv) < 2 or sys.argv[1] in ("-h", "--help"):
        print(__doc__)
        return 2
    sample = np.random.default_rng(20240611).gamma(3.0, 2.0, 1000)
    first, seconds = run(sys.argv[1], sample, CANDIDATES, ITERATIONS)
    next_second()
    second, _ = run(sys.argv[1], sample, CANDIDATES, ITERATIONS)
    stopped = sorted({rows[code][0] for rows in (first, second) for code in rows if rows[code][3] == "stopped"})
    converged = {code for code, (name, _, error, _) in first.items()
                 if error < 1e300 and name not in stopped and abs(error - second[code][2]) <= 0.01 * min(error, second[code][2]) + 1e-9}
    spent = statistics.median(first[code][1] for code in converged)
    lines = ["# Fits", "", "Command: `bench/scipy_fit.py build/bench/bench/fit_bench bench/fit.md`.", "",
             f"{platform.machine()}, {platform.system()}, Python {platform.python_version()}, SciPy {scipy.__version__}, "
             f"{time.strftime('%-d %B %Y')}; the sample: 1,000 values of a gamma distribution, shape 3, scale 2. Solver run, "
             f"{CANDIDATES} candidates, {ITERATIONS} iterations, the budget of [fit_quality.md](fit_quality.md), {THREADS} "
             "threads.", "",
             f"**{len(converged)} of {len(first)} distributions converge** (two runs from different seeds agree in the error "
             f"to 1 %), {sum(code <= PLAIN for code in converged)} of the {PLAIN} plain ones; all of them take {seconds:.0f} s, "
             f"one that converges {1000 * spent:.0f} ms (median). A fit that has not ended after {LIMIT} s is stopped and does not "
             f"count as converged: {', '.join(stopped) or 'none was'}.", "",
             "SciPy's differential evolution (its defaults, tol 1e-8) on the same objective beside it. The error is the sum "
             "of squared differences of the distribution functions; of two runs here, of one seed there.", "",
             "| distribution | ms | SciPy ms | SciPy time / ours | error, first run | second run | SciPy |",
             "|---|---|---|---|---|---|---|"]
    with np.errstate(all="ignore"):
        for code, (family, shapes) in FAMILIES.items():
            error, taken = peer(sample, family, shapes, 1)
            name, own, mine, _ = first[code]
            lines.append(f"| {name} | {1000 * own:.0f} | {1000 * taken:.0f} | {taken / own:.1f} | {mine:.5g} | "
                         f"{second[code][2]:.5g} | {error:.5g} |")
    lines += ["", "## Large samples", "",
              f"The {PLAIN} plain distributions, solver gto, {SMALL[0]} candidates, {SMALL[1]} iterations; what a fit of "
              f"20 x 50 and of {CANDIDATES} x {ITERATIONS} takes follows from the evaluations (the setting of the data and "
              "the start of each distribution, which a fit does once, are counted in every one of them).", "",
              "| values | s | ns a value and evaluation | 20 x 50 | " + f"{CANDIDATES} x {ITERATIONS} |", "|---|---|---|---|---|"]
    for size in SIZES:
        large = np.random.default_rng(7).gamma(3.0, 2.0, size)
        _, taken = run(sys.argv[1], large, *SMALL, SIMPLE, plain=True)
        each = taken / evaluations(*SMALL)
        lines.append(f"| {size:,} | {taken:.2f} | {1e9 * each * THREADS / PLAIN / size:.1f} | "
                     f"{each * evaluations(20, 50) / 60:.1f} min | {each * evaluations(CANDIDATES, ITERATIONS) / 60:.1f} min |")
    report = "\n".join(lines) + "\n"
    if len(sys.argv) > 2:
        with open(sys.argv[2], "w", encoding="utf-8") as file:
            file.write(report)
    print(report)
    return 0


if __name__ == "__main__":
    sys.exit(main())
