#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Fits of all distributions to one sample, beside SciPy's `fit` for the families that both have.

usage: bench/scipy_fit.py <fit_bench program> [output file]

Draws the sample (1,000 values), runs the program on it and writes a Markdown table. SciPy's `fit` maximises the
likelihood, so the errors compared are those of the distribution functions at the sorted sample: the measure that the
library minimises. SciPy is not built for that measure; the column shows what a host gets from either.
"""
import platform
import subprocess
import sys
import tempfile
import time

import numpy as np
import scipy
from scipy import stats

# code: SciPy family with the same shape, scale and location freedom
FAMILIES = {
    9: stats.cauchy, 13: stats.expon, 19: stats.gumbel_r, 21: stats.gamma, 26: stats.gumbel_l, 28: stats.halfnorm,
    34: stats.laplace, 35: stats.levy, 38: stats.maxwell, 42: stats.nakagami, 43: stats.norm, 49: stats.rayleigh,
    52: stats.gennorm,
}


def scipy_rows(sample):
    x = np.sort(sample)
    cdf = np.arange(1, len(x) + 1) / len(x)
    for code, family in FAMILIES.items():
        start = time.perf_counter()
        params = family.fit(sample)
        seconds = time.perf_counter() - start
        yield code, seconds, float(np.sum((family.cdf(x, *params) - cdf) ** 2))


def main():
    if len(sys.argv) < 2 or sys.argv[1] in ("-h", "--help"):
        print(__doc__)
        return 2
    sample = np.random.default_rng(20240611).gamma(3.0, 2.0, 1000)
    with tempfile.NamedTemporaryFile("w", suffix=".txt") as file:
        file.write("\n".join(repr(float(v)) for v in sample))
        file.flush()
        text = subprocess.run([sys.argv[1], file.name, "1", "20", "50", "2"], check=True, capture_output=True,
                              text=True).stdout
    head, rest = text.split("\n\n", 1)
    plain, slowest = rest.split("\n\n", 1)
    ours = {}
    for line in plain.splitlines()[2:]:
        name, code, seconds, error = [cell.strip() for cell in line.strip("|").split("|")]
        ours[int(code)] = (name, float(seconds), float(error))
    lines = ["# Fits", "",
             "Command: `bench/scipy_fit.py build/bench/bench/fit_bench bench/fit.md`.", "",
             f"{platform.machine()}, {platform.system()}, Python {platform.python_version()}, SciPy {scipy.__version__}; "
             "the sample: 1,000 values of a gamma distribution, shape 3, scale 2.", "", head, "", slowest.strip(), "",
             "SciPy's `fit` (maximum likelihood) beside it; the error is the sum of squared differences of the "
             "distribution functions.", "",
             "| distribution | s | SciPy s | SciPy time / ours | error | SciPy error |", "|---|---|---|---|---|---|"]
    for code, seconds, error in scipy_rows(sample):
        name, own_seconds, own_error = ours[code]
        lines.append(f"| {name} | {own_seconds:.4f} | {seconds:.4f} | {seconds / own_seconds:.2f} | {own_error:.4g} | "
                     f"{error:.4g} |")
    report = "\n".join(lines) + "\n"
    if len(sys.argv) > 2:
        with open(sys.argv[2], "w", encoding="utf-8") as file:
            file.write(report)
    print(report)
    return 0


if __name__ == "__main__":
    sys.exit(main())
