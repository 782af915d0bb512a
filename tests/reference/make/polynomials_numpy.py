#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Roots of polynomials by numpy.roots, the eigenvalues of the companion matrix.

Writes tests/reference/sym/roots_numpy.csv: a line `poly,name,c0,c1,...` with hexadecimal floats, ascending, and a line
`root,re,im,tolerance` for each root. The tolerance is what a backward stable eigenvalue method may miss: n eps times the
norm of the balanced companion matrix times the condition of the eigenvalue, from its left and right eigenvectors.
"""
import random
from pathlib import Path

import numpy as np
from numpy.polynomial import chebyshev
from scipy.linalg import eig, matrix_balance

EPS = np.finfo(float).eps


def tolerances(descending, roots):
    n = len(descending) - 1
    companion = np.diag(np.ones(n - 1), -1)
    companion[0, :] = -np.array(descending[1:]) / descending[0]
    balanced = matrix_balance(companion)[0]
    values, left, right = eig(balanced, left=True, right=True)
    condition = 1 / np.abs(np.sum(left.conj() * right, axis=0))
    norm = np.linalg.norm(balanced)
    return [n * EPS * norm * condition[np.argmin(np.abs(values - z))] for z in roots]


random.seed(21)
POLYNOMIALS = {
    'wilkinson10': np.poly(range(1, 11))[::-1],
    'wilkinson15': np.poly(range(1, 16))[::-1],
    'chebyshev10': chebyshev.cheb2poly([0] * 10 + [1]),
    'chebyshev20': chebyshev.cheb2poly([0] * 20 + [1]),
    'random60': [random.gauss(0, 1) for _ in range(61)],
    'random300': [random.gauss(0, 1) for _ in range(301)],
    'signs30': [random.choice([-1.0, 1.0]) for _ in range(31)],
}

lines = ['# tests/reference/make/polynomials_numpy.py, numpy %s' % np.__version__]
for name, coefficients in POLYNOMIALS.items():
    descending = [float(c) for c in reversed(list(coefficients))]
    lines.append('poly,%s,%s' % (name, ','.join(c.hex() for c in reversed(descending))))
    roots = np.roots(descending)
    for z, tolerance in sorted(zip(roots, tolerances(descending, roots)), key=lambda row: (row[0].real, row[0].imag)):
        lines.append('root,%.17g,%.17g,%.2g' % (z.real, z.imag, tolerance))
(Path(__file__).parents[1] / 'sym' / 'roots_numpy.csv').write_text('\n'.join(lines) + '\n')
