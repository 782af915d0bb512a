#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/numeric/*.csv: spectra of classical test matrices by mpmath with 60 digits, and running
integrals of samples by exact fractions. Run without arguments."""
from fractions import Fraction

import mpmath as mp

from rows import line, save

mp.mp.dps = 60


def row(name, args, value, ulps):
    return line(name, args, value, int(mp.ceil(ulps)))


def hilbert(n):
    # The entries as the test forms them: 1/(i+j+1) rounded to double.
    return mp.matrix(n, n, ) + mp.matrix([[mp.mpf(1.0 / (i + j + 1)) for j in range(n)] for i in range(n)])


def frank(n):
    # F(i, j) = n - max(i, j) for j >= i-1, else 0: eigenvalues real, positive, in reciprocal pairs, badly conditioned.
    return mp.matrix([[n - max(i, j) if j >= i - 1 else 0 for j in range(n)] for i in range(n)])


def matrices():
    lines = ["# singular values (ascending) and determinants of rounded Hilbert matrices, eigenvalues (ascending) of Frank's",
             "# a tolerance is 8 ulps times the condition of the value"]
    for n in (3, 6, 9):
        s = sorted(mp.svd_r(hilbert(n), compute_uv=False))
        lines += [row("hilbertSV", (n, i), v, 8 * s[-1] / v) for i, v in enumerate(s)]
        lines.append(row("hilbertDet", (n,), mp.det(hilbert(n)), 8 * s[-1] / s[0]))
    for n in (4, 7):
        values, left, right = mp.eig(frank(n), left=True, right=True)
        norm = mp.svd_r(frank(n), compute_uv=False)[0]
        order = sorted(range(n), key=lambda i: mp.re(values[i]))
        for i, k in enumerate(order):
            y, x = left[k, :], right[:, k]
            condition = mp.norm(y) * mp.norm(x) / abs((y * x)[0])
            lines.append(row("frankEig", (n, i), mp.re(values[k]), 8 * condition * norm / abs(values[k])))
    return lines


samples = [Fraction(v) for v in (0, 1, 4, 2, -3, Fraction(1, 2), 7)]
step = Fraction(1, 4)


def solve(a, b):
    n = len(b)
    m = [list(r) + [b[i]] for i, r in enumerate(a)]
    for i in range(n):
        p = next(k for k in range(i, n) if m[k][i] != 0)
        m[i], m[p] = m[p], m[i]
        for k in range(n):
            if k != i:
                q = m[k][i] / m[i][i]
                m[k] = [x - q * y for x, y in zip(m[k], m[i])]
    return [m[i][n] / m[i][i] for i in range(n)]


def spline_running(f, h):
    """From the definition: a cubic on each interval, continuous to the second derivative, which is 0 at both ends."""
    n = len(f) - 1
    rows, rhs = [], []

    def equation(terms, value):
        r = [Fraction(0)] * (4 * n)
        for k, c in terms:
            r[k] += c
        rows.append(r)
        rhs.append(Fraction(value))

    for i in range(n):
        equation([(4 * i, 1)], f[i])
        equation([(4 * i + p, h**p) for p in range(4)], f[i + 1])
        if i + 1 < n:
            equation([(4 * i + p, p * h ** (p - 1)) for p in (1, 2, 3)] + [(4 * i + 5, -1)], 0)
            equation([(4 * i + 2, 2), (4 * i + 3, 6 * h), (4 * i + 6, -2)], 0)
    equation([(2, 2)], 0)
    equation([(4 * n - 2, 2), (4 * n - 1, 6 * h)], 0)
    c = solve(rows, rhs)
    total, result = Fraction(0), [Fraction(0)]
    for i in range(n):
        total += sum(c[4 * i + p] * h ** (p + 1) / (p + 1) for p in range(4))
        result.append(total)
    return result


def splines():
    return ["# natural spline through 0,1,4,2,-3,1/2,7 at distance 1/4: integral from the first sample to sample i"] + [
        row("spline", (count, i), mp.mpf(v.numerator) / v.denominator, 16)
        for count in (3, 7) for i, v in enumerate(spline_running(samples[:count], step))]


save("numeric/matrix", matrices())
save("numeric/samples", splines())
