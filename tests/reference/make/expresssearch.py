#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/expresssearch/search.csv: the rankings that a plain enumeration finds on small sets, for kind 0
under every transformation and for kind 60, by numpy's least squares. Run without arguments."""
import itertools
from pathlib import Path

import numpy as np

E = 2.71828182845905
# code: range, forward, back, whether a fitted value is refused
TRANSFORMS = {
    0: (0, 0, None, None, None),
    1: (0, 1, np.exp, np.log, lambda v: v < 1e-7),
    2: (0.01, E, np.log, np.exp, lambda v: v > 10),
    3: (0.01, E, np.sqrt, np.square, None),
    4: (0.01, 0.99, lambda y: -np.log(1 / y - 1), lambda v: 1 / (1 + np.exp(-v)), None),
    10: (0, 0, None, None, None),
    100: (-1, 1, lambda y: np.arcsin(np.clip(y, -1, 1)), np.sin, None),
    101: (-1, 1, lambda y: np.arccos(np.clip(y, -1, 1)), np.cos, None),
    102: (-0.9, 0.9, np.arctanh, np.tanh, None),
}
rng = np.random.default_rng(8)
out = []


def numbers(values):
    return ",".join(float(v).hex() for v in values)


def data(label, vectors):
    out.extend(f"{label},{numbers(v)}\n" for v in vectors)


def case(kind, transform, budget, limit, searched, results):
    out.append(f"case,{kind},{transform},{budget},{float(limit).hex()},{searched}\n")
    for top, bottom, error, fit, *_ in results:
        out.append(f"result,{';'.join(map(str, top))},{';'.join(map(str, bottom))},{error:.17g},{fit:.17g}\n")


def transformed(y, code):
    low, high, forward, back, refuses = TRANSFORMS[code]
    scale = (high - low) / (y.max() - y.min()) if high - low > 0.001 else 1.0
    offset = low - scale * y.min() if high - low > 0.001 else 0.0
    t = y * scale + offset
    return (forward(t) if forward else t), lambda v: None if refuses and refuses(v).any() else (
        (back(v) - offset) / scale if back else v)


def judged(y, fitted):
    if not np.isfinite(fitted).all():
        return 1e300, 0.0
    flat = np.var(y) * np.var(fitted) < 1e-12
    return np.sum((y - fitted) ** 2), float(np.var(fitted) < 1e-12 > np.var(y)) if flat else np.corrcoef(y, fitted)[0, 1]


def lists(count, sizes):
    for p, q in sizes:
        yield from itertools.product(itertools.combinations(range(count), p), itertools.combinations(range(count), q))


def rational(x, t, top, bottom):
    T = np.array([np.ones(len(t))] + [x[i] for i in top] + [x[j] * t for j in bottom]).T
    c = np.linalg.lstsq(T, t, rcond=None)[0]
    if abs(c).max() > 1e10:
        return None
    over = c[0] + sum(c[1 + k] * x[i] for k, i in enumerate(top))
    return over / (1 - sum(c[1 + len(top) + k] * x[j] for k, j in enumerate(bottom)))


def ranking(x, y, code, budget):
    t, back = transformed(y, code)
    found = []
    for top, bottom in lists(len(x), [(budget - 1 - i, i) for i in range(budget)]):
        v = rational(x, t, top, bottom)
        fitted = None if v is None else back(v)
        if fitted is not None:
            found.append((top, bottom, *judged(y, fitted)))
    return sorted(found, key=lambda r: r[2])


def noisy(y, size):
    return y * (1 + size * rng.standard_normal(len(y)))


# Kind 0: the five best of every candidate, and how many are judged.
x, z = rng.uniform(0.2, 3, (2, 24))
terms = [x, z, x * x, np.sin(x) - 0.5]
y = noisy(x * (1 + z) / (1 + 0.5 * z * z) + 0.5, 0.05)
data("term", terms)
data("y", [y])
for code, budget in itertools.product(TRANSFORMS, (1, 3, 4)):
    found = ranking(terms, y, code, budget)
    keep = [r for r in found[:5] if r[2] < 0.999 * found[min(5, len(found) - 1)][2]] or found[:1]
    case(0, code, budget, keep[-1][2] * 1.0001, len(found), keep)

# Kind 60: planes and quadrics, solved for -1 and for the largest term; idx is the term that is solved for.
v = rng.standard_normal((3, 60))
v = v / np.linalg.norm(v, axis=0) * np.array([[1], [2], [3]]) * (1 + 0.01 * rng.standard_normal(60)) + np.array([[3], [1], [2]])
squares = [(i, i) for i in range(3)]
flat = np.array([v[0], v[1], 2 * v[0] - 3 * v[1] + 0.1 * rng.standard_normal(60)])  # through the origin: no -1 fits
for columns, budget, pairs in ((v, 4, []), (v, 7, squares), (v, 10, squares + [(0, 1), (0, 2), (1, 2)]), (flat, 4, [])):
    data("column", columns)
    rows = list(columns) + [columns[i] * columns[j] for i, j in pairs]
    T = np.array(rows).T
    first = np.linalg.lstsq(T, -np.ones(60), rcond=None)[0]
    target = int(np.argmax(abs(first)))
    T2 = T.copy()
    T2[:, target] = 1
    second = T2 @ np.linalg.lstsq(T2, rows[target], rcond=None)[0]
    tries = [((len(rows),), (), *judged(-np.ones(60), T @ first)), ((target,), (), *judged(rows[target], second))]
    case(60, 0, budget, 0, 2, [min(tries, key=lambda r: r[2])])

head = (f"# rankings by plain enumeration; tests/reference/make/expresssearch.py, numpy {np.__version__}\n"
        "# term, y, column: vectors; case: kind, transformation, maxTerms, errorLimit, candidates judged;\n# result: numerator, denominator, error, correlation, best first\n")
path = Path(__file__).resolve().parent.parent / "expresssearch" / "search.csv"
path.write_text(head + "".join(out))
