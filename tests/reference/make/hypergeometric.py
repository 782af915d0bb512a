#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/special/hypergeometric.csv: name,p,q,a...,b...,z,expected,ulps.

Rows "value": mpmath's hyper(), at 60 digits. Tolerance: one ulp for the cut to a double, and the terms that the absolute
limit 1e-17 leaves out, summed here.
Rows "cut": the series itself in 1500-bit arithmetic with the stops (|term| <= 1e-17, |term| > DBL_MAX, 999999 terms), cut
towards zero to 53 bits; no tolerance. They hold where no closed form does: outside the circle of convergence.
"""
import sys

import mpmath
from mpmath import mp, mpf

from rows import cases, line, save

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
    return row("value", a, b, z, expected, float(1 + rest * mpf("1.01") / ulp))


def defined(a, b, z):
    mp.prec = 1500
    return row("cut", a, b, z, cut(series(a, b, mpf(z))[0]), 0)


def main():
    lines = ["# name,p,q,a...,b...,z,expected,ulps"]
    for case, (p, q, *rest), _ in cases("special/hypergeometric"):
        a, b = rest[:int(p)], rest[int(p):int(p) + int(q)]
        lines.append((value if case == "value" else defined)(a, b, rest[-1]))
    save("special/hypergeometric", lines, f"mpmath {mpmath.__version__}, 25 digits")


if __name__ == "__main__":
    main()
