#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/special/hypergeometric.csv: name,p,q,a...,b...,z,expected,ulps.

Rows "value": mpmath's hyper(), at 60 digits. Tolerance: one ulp for the cut to a double, and the terms that the absolute
limit 1e-17 leaves out, summed here.
Where these exceed 100 ulps, so that the value would hold nothing, the row becomes a "cut" one.
Rows "cut": the series itself in 1500-bit arithmetic with the stops (|term| <= 1e-17, |term| > DBL_MAX, 999999 terms), cut
towards zero to 53 bits; no tolerance. They hold where no closed form does: outside the circle of convergence.
"""
import random
import sys

import mpmath
from mpmath import mp, mpf

from rows import line, save

LIMIT, HUGE, MAX_TERMS = mpf(1e-17), mpf(sys.float_info.max), 1000000


def series(a, b, z, tail=False):
    """Sum up to the stop and, when asked, the size of what follows."""
    total = term = mpf(1)
    n = 1
    while True:
        for x in a:
            term = term * (mpf(x) + (n - 1))
        for x in b:
            term = term / (mpf(x) + (n - 1))
        term = term * z / n
        total += term
        if abs(term) <= LIMIT or abs(term) > HUGE or n + 1 >= MAX_TERMS:
            break
        n += 1
    rest = mpf(0)
    while tail and abs(term) > LIMIT * mpf(2) ** -60:
        n += 1
        for x in a:
            term = term * (mpf(x) + (n - 1))
        for x in b:
            term = term / (mpf(x) + (n - 1))
        term = term * z / n
        rest += abs(term)
    return total, rest


def cut(x):
    with mp.workprec(53):
        return mpmath.fmul(x, 1, rounding="d")


def row(name, a, b, z, expected, ulps):
    return line(name, [len(a), len(b), *a, *b, z], mpmath.nstr(expected, 25, strip_zeros=False), f"{ulps:.4g}")


def value(a, b, z):
    mp.dps = 60
    expected = mpmath.hyper([mpf(x) for x in a], [mpf(x) for x in b], mpf(z))
    _, rest = series(a, b, mpf(z), tail=True)
    ulp = mpf(2) ** (mpmath.floor(mpmath.log(abs(expected), 2)) - 52)
    ulps = 1 + rest * mpf("1.01") / ulp
    return row("value", a, b, z, expected, float(ulps)) if ulps < 100 else defined(a, b, z)


def defined(a, b, z):
    mp.prec = 1500
    return row("cut", a, b, z, cut(series(a, b, mpf(z))[0]), 0)


def main():
    draw = random.Random(20240611)
    shape = lambda: draw.uniform(0.1, 10) if draw.random() < 0.5 else 10 ** draw.uniform(-1, 2)
    rows = [value([-0.5, 0.5], [1], 0.5), value([1.3, 1], [2.3], 0.995)]
    for _ in range(8):
        a, b = shape(), shape()
        rows.append(value([a], [a + 1], -draw.uniform(0, 10)))
        rows.append(value([1], [a + 1], draw.uniform(0, 1000)))
        rows.append(value([a, 1 - b], [a + 1], draw.uniform(0, 0.5)))
        rows.append(value([a + b, 1], [a + 1], draw.uniform(0, 0.5)))
        rows.append(value([0.5, (a + 1) / 2], [1.5], -draw.uniform(0, 0.6)))
        rows.append(value([0.25], [0.5, 1.25], -draw.uniform(0, 60)))
        rows.append(value([], [a], draw.uniform(-30, 30)))
        rows.append(defined([0.5, (a + 1) / 2], [1.5], -draw.uniform(1.01, 10)))
        rows.append(defined([b, a + b], [b + 1], -draw.uniform(1.01, 10)))
        rows.append(defined([a], [], draw.uniform(1.01, 30)))
    # Cancellation of 20, 40 and 55 bits; a lower parameter below 0; a polynomial; three upper and lower parameters.
    rows += [defined([0.5], [1.5], -x) for x in (18.25, 33.5, 41.75)]
    rows += [defined([1.5], [-2.5], 0.75), defined([-4, 2.25], [0.5], 7.3), defined([-30, 1.75], [2.1], 1.9)]
    rows += [defined([0.3, 1.7, 2.2], [1.1, 3.3, 0.6], 25.0), defined([1, 1, 1], [2, 2], -0.875)]
    save("special/hypergeometric", ["# name,p,q,a...,b...,z,expected,ulps", *rows], f"mpmath {mpmath.__version__}, 25 digits")


if __name__ == "__main__":
    main()
