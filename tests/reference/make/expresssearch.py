#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/expresssearch/search.csv: the rankings that a plain enumeration finds on small sets, for every
model kind and transformation. Linear candidates by numpy's least squares, iterative ones by SciPy from several starts.
Run without arguments."""
import itertools
import math
from pathlib import Path

import numpy as np
import scipy
from scipy.optimize import least_squares

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
    for top, bottom, error, fit in results:
        out.append(f"result,{';'.join(map(str, top))},{';'.join(map(str, bottom))},{error:.17g},{fit:.17g}\n")


def transformed(y, code):
    low, high, forward, back, refuses = TRANSFORMS[code]
    scale = (high - low) / (y.max() - y.min()) if high - low > 0.001 else 1.0
    offset = low - scale * y.min() if high - low > 0.001 else 0.0
    t = y * scale + offset
    return (forward(t) if forward else t), lambda v: None if refuses and refuses(v).any() else (
        (back(v) - offset) / scale if back else v)


def judged(y, fitted):
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


def best_of(residual, starts):
    """The least-squares parameters with the smallest error over several starts."""
    found = []
    for start in starts:
        try:
            found.append(least_squares(residual, start, method="lm", xtol=1e-12, ftol=1e-12, gtol=1e-12, max_nfev=1500))
        except ValueError:
            pass
    return min(found, key=lambda r: r.cost).x


def powers(x, t, top, bottom, kind):
    per = 2 if kind == 1 else 1

    def model(c):
        d = 1 + per * len(top)
        over = c[0] + sum(c[1 + per * k] * x[i] ** (c[2 + per * k] if kind == 1 else 1) for k, i in enumerate(top))
        return over / (c[d] + sum(c[d + 1 + 2 * k] * x[j] ** c[d + 2 + 2 * k] for k, j in enumerate(bottom)))

    # A common factor is free: d0 is 1.
    d0, n = 1 + per * len(top), 1 + per * len(top) + 2 * len(bottom)
    with np.errstate(all="ignore"):
        starts = [np.ones(n)] + [rng.uniform(0.3, 2.5, n) for _ in range(3)]
        full = lambda c: np.insert(c, d0, 1.0)
        residual = lambda c: np.nan_to_num(model(full(c)) - t, nan=1e6, posinf=1e6, neginf=-1e6)
        return model(full(best_of(residual, starts)))


def ranking(x, y, kind, code, budget, fit):
    t, back = transformed(y, code)
    sizes = {0: [(budget - 1 - i, i) for i in range(budget)],
             1: [(budget // 2 - 1 - i, i) for i in range(budget // 2)],
             2: [(budget - 2 * i - 2, i) for i in range(1, budget) if 2 * i + 3 < budget]}[kind]
    found, searched = [], 0
    for top, bottom in lists(len(x), sizes):
        v = fit(x, t, top, bottom)
        fitted = None if v is None else back(v)
        if fitted is not None:
            searched += 1
            found.append((top, bottom, *judged(y, fitted)))
    return sorted(found, key=lambda r: r[2]), searched


def noisy(y, size):
    return y * (1 + size * rng.standard_normal(len(y)))


# Kind 0: the five best of every candidate, and how many are judged.
x, z = rng.uniform(0.2, 3, (2, 24))
terms = [x, z, x * x, np.sin(x) - 0.5]
y = noisy(x * (1 + z) / (1 + 0.5 * z * z) + 0.5, 0.05)
out.append("data\n")
data("term", terms)
data("y", [y])
for code, budget in itertools.product(TRANSFORMS, (1, 3, 4)):
    found, searched = ranking(terms, y, 0, code, budget, rational)
    keep = [r for r in found[:5] if r[2] < 0.999 * found[min(5, len(found) - 1)][2]] or found[:1]
    case(0, code, budget, keep[-1][2] * 1.0001, searched, keep)

# Kinds 1 and 2: the best; the last term has a negative value and is passed over.
y = noisy(2 * x**1.5 / (1 + z**0.8) + 0.5, 0.02)
out.append("data\n")
data("term", [x, z, x - 1])
data("y", [y])
for code, (kind, budget) in itertools.product(TRANSFORMS, ((1, 6), (2, 6))):
    found, searched = ranking([x, z], y, kind, code, budget, lambda x, t, p, q: powers(x, t, p, q, kind))
    case(kind, code, budget, 0, searched if not TRANSFORMS[code][4] else -1, found[:1])

# Kind 16: one Gaussian and one Lorentzian peak, or two Lorentzian ones.
x = np.linspace(0, 10, 60)
y = 2 + 3 * np.exp(-(((x - 3) / 0.6) ** 2) / 2) + 2 / ((x - 7) ** 2 + 0.6**2) + 0.1 * rng.standard_normal(60)


def peaks(c, gauss):
    value = np.full(len(x), c[-1])
    for k in range(2):
        a, u, s = c[3 * k : 3 * k + 3]
        value += a * np.exp(-(((x - u) / s) ** 2) / 2) if k < gauss else a / ((x - u) ** 2 + s * s)
    return value


found = []
for gauss in (0, 1):
    fitted = peaks(best_of(lambda c: peaks(c, gauss) - y, [[3, 3, 0.6, 2, 7, 0.6, 2], [2, 7, 0.6, 3, 3, 0.6, 2]]), gauss)
    found.append(((), (), *judged(y, fitted)))
out.append("data\n")
data("column", [x, y])
case(16, 0, 7, 0, -1, [min(found, key=lambda r: r[2])])

# Kind 60: planes and quadrics, solved for -1 and for the largest term; idx is the term that is solved for.
v = rng.standard_normal((3, 60))
v = v / np.linalg.norm(v, axis=0) * np.array([[1], [2], [3]]) * (1 + 0.01 * rng.standard_normal(60)) + np.array([[3], [1], [2]])
out.append("data\n")
data("column", v)
for budget, pairs in ((4, []), (7, [(i, i) for i in range(3)]),
                      (10, [(i, i) for i in range(3)] + [(0, 1), (0, 2), (1, 2)])):
    rows = list(v) + [v[i] * v[j] for i, j in pairs]
    T = np.array(rows).T
    first = np.linalg.lstsq(T, -np.ones(60), rcond=None)[0]
    target = int(np.argmax(abs(first)))
    T2 = T.copy()
    T2[:, target] = 1
    second = T2 @ np.linalg.lstsq(T2, rows[target], rcond=None)[0]
    tries = [((len(rows),), (), *judged(-np.ones(60), T @ first)), ((target,), (), *judged(rows[target], second))]
    case(60, 0, budget, 0, 2, [min(tries, key=lambda r: r[2])])

# Kinds 61 and 62 for two columns: here (c + a X^p)^q explains the last column, and pairs add nothing but noise.
x = rng.uniform(0.5, 3, 60)
z = noisy(np.sqrt(1 + 0.7 * x**1.5), 0.002)
c = best_of(lambda c: (c[0] + c[1] * x ** c[2]) ** c[3] - z, [[1, 0.7, 1.5, 0.5]])
out.append("data\n")
data("column", [x, z])
case(62, 0, 5, 0, 1, [((1,), (), *judged(z, (c[0] + c[1] * x ** c[2]) ** c[3]))])

head = (f"# rankings by plain enumeration; tests/reference/make/expresssearch.py, numpy {np.__version__}, "
        f"scipy {scipy.__version__}\n# data; term, y, column: vectors; case: kind, transformation, maxTerms, errorLimit, "
        "candidates judged (-1: not compared);\n# result: numerator, denominator, error, correlation, best first\n")
path = Path(__file__).resolve().parent.parent / "expresssearch" / "search.csv"
path.write_text(head + "".join(out))
