#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Roots of polynomials whose coefficients stand as doubles, from mpmath at 200 digits.

Writes tests/reference/sym/roots.csv: a line `poly,name,c0,c1,...` with hexadecimal floats, ascending, and a line
`root,re,im` for each root, ascending by real and imaginary part.
"""
import random
from pathlib import Path

import mpmath as mp

mp.mp.dps = 200


def product(roots):
    p = [mp.mpf(1)]
    for r in roots:
        p = [(p[i - 1] if i else 0) - (r * p[i] if i < len(p) else 0) for i in range(len(p) + 1)]
    return p


def chebyshev(n):
    a, b = [mp.mpf(1)], [mp.mpf(0), mp.mpf(1)]
    for _ in range(n - 1):
        c = [mp.mpf(0)] + [2 * x for x in b]
        for i, x in enumerate(a):
            c[i] -= x
        a, b = b, c
    return b


def doubles(p):
    return [float(x) for x in p]


random.seed(20)
POLYNOMIALS = {
    'wilkinson20': doubles(product(range(1, 21))),
    'geometric': doubles(product([mp.mpf(2) ** k for k in range(15)])),
    'chebyshev40': doubles(chebyshev(40)),
    'random30': [random.gauss(0, 1) for _ in range(31)],
    'random80': [random.gauss(0, 1) for _ in range(81)],
    'near_double_root': [1.0, -2.0, 1.0 - 2.0 ** -52],
    'cyclotomic-like': [1.0] * 25,
}

lines = ['# tests/reference/make/polynomials.py, mpmath %s, 200 digits' % mp.__version__]
for name, coefficients in POLYNOMIALS.items():
    lines.append('poly,%s,%s' % (name, ','.join(c.hex() for c in coefficients)))
    exact = [mp.mpf(c) for c in reversed(coefficients)]
    # Monic and scaled, as the iteration of mpmath starts on the unit circle.
    degree = len(exact) - 1
    radius = max((abs(exact[k] / exact[0]) ** (mp.mpf(1) / k) for k in range(1, degree + 1) if exact[k]))
    scaled = [c / exact[0] / radius ** k for k, c in enumerate(exact)]
    roots = [z * radius for z in mp.polyroots(scaled, maxsteps=5000, extraprec=4000, error=False)]
    roots = [mp.mpc(z.real, 0 if abs(z.imag) < abs(z) * mp.mpf(10) ** -100 else z.imag) for z in map(mp.mpc, roots)]
    roots = [mp.mpc(0 if abs(z.real) < abs(z) * mp.mpf(10) ** -100 else z.real, z.imag) for z in roots]
    for z in sorted(roots, key=lambda z: (float(z.real), float(z.imag))):
        lines.append('root,%s,%s' % (mp.nstr(z.real, 25), mp.nstr(z.imag, 25)))
(Path(__file__).parents[1] / 'sym' / 'roots.csv').write_text('\n'.join(lines) + '\n')
