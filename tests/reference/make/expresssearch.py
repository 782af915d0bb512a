#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/expresssearch/search.csv: the rankings that a plain enumeration finds on small sets, for every
model kind and transformation. Linear candidates by numpy's least squares, kinds 1 and 2 by a
transcription of the dog-leg, peaks and powers by SciPy.
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
        return None, True
    over = c[0] + sum(c[1 + k] * x[i] for k, i in enumerate(top))
    return over / (1 - sum(c[1 + len(top) + k] * x[j] for k, j in enumerate(bottom))), True


def bent(step, grad, alpha, radius):
    """The dog-leg with its corner at alpha^2 along the gradient."""
    if radius**2 > step @ step:
        return step
    if alpha**4 * (grad @ grad) >= radius**2:
        step = grad * (-alpha * radius / (abs(alpha) * math.sqrt(grad @ grad) + 1e-16))
    c = alpha**2 * grad
    s, w, m = (c + step) @ c, (c + step) @ (c + step), radius**2 - c @ c
    d = math.sqrt(s * s + m * w)
    return (step + c) * ((d + s) / (w + 1e-16) if s >= 0 else m / (d - s)) - c


def dog_leg(residual, jacobian, x, iterations=2000, no_improve=50, tol=1e-10, target=1e-14):
    """Trust-region least squares, with a radius that shrinks on good steps."""
    r = residual(x)
    best, error = x, r @ r
    prev, radius, low, count = error, len(x) * 1e4, (x @ x) * 1e-12, 1
    for _ in range(iterations):
        J = jacobian(x)
        grad = J.T @ r
        if not math.isfinite(prev) or target >= error or tol > abs(grad).max():
            break
        alpha = (grad @ grad) / ((J @ grad) @ (J @ grad) + 1e-16)
        try:
            step = bent(-np.linalg.inv(J.T @ J) @ grad, grad, alpha, radius)
        except np.linalg.LinAlgError:
            break
        size = step @ step
        if tol > abs(step).max() or low > size:
            break
        new, r = x + step, residual(x + step)
        e = r @ r
        if not math.isfinite(e):
            break
        for _ in range(32 if e > prev else 0):
            size, step = size * 0.7396, step * 0.86
            if low > size:
                break
            r2 = residual(x + step)
            if prev > r2 @ r2 + 1 or prev >= r2 @ r2 * 1.1:
                e, r, new = r2 @ r2, r2, x + step
                break
        gain = (prev - e) / (prev + 1e-12)
        if abs(gain) < 1e-6 or gain < -1e6:
            break
        if prev > e:
            count = 0
            if error > e:
                best, error = new, e
        if gain > 0.1:
            radius *= 0.5 if gain > 1 else 0.86
        elif gain < -0.1:
            radius *= 2 if gain < -1 else 1.5
        x, prev, low, count = new, e, (new @ new) * 1e-12, count + 1
        if count > no_improve:
            break
    return best


def powers(x, t, top, bottom, kind):
    """Fitted values, and whether a start a little apart gives the same."""
    per = 2 if kind == 1 else 1
    d = 1 + per * len(top)
    n = d + 1 + 2 * len(bottom)
    over = [(1 + per * k, 2 + k * per if kind == 1 else None, x[i]) for k, i in enumerate(top)]
    under = [(d + 1 + 2 * k, d + 2 + 2 * k, x[i]) for k, i in enumerate(bottom)]
    linear = [0, d] + [term[0] for term in over + under]

    def part(c, term):
        return term[2] ** (1 if term[1] is None else c[term[1]])

    def value(c, constant, terms):
        return c[constant] + sum(c[term[0]] * part(c, term) for term in terms)

    def model(c):
        return value(c, 0, over) / value(c, d, under)

    def residual(c):  # the last one holds the free common factor
        return np.append(model(c) - t, sum(c[k] ** 2 - 1 for k in linear))

    def jacobian(c):  # exact to rounding, by a complex step
        return np.column_stack([np.imag(residual(c + 1e-30j * e)) / 1e-30 for e in np.eye(n)])

    with np.errstate(all="ignore"):
        one, other = (model(dog_leg(residual, jacobian, np.full(n, start))) for start in (1.0, 1.0 + 1e-9))
    return one, np.allclose(one, other, rtol=1e-5)


def ranking(x, y, kind, code, budget, fit):
    t, back = transformed(y, code)
    sizes = {0: [(budget - 1 - i, i) for i in range(budget)],
             1: [(budget // 2 - 1 - i, i) for i in range(budget // 2)],
             2: [(budget - 2 * i - 2, i) for i in range(1, budget) if 2 * i + 3 < budget]}[kind]
    found, searched = [], 0
    for top, bottom in lists(len(x), sizes):
        v, agreed = fit(x, t, top, bottom)
        fitted = None if v is None else back(v)
        if fitted is not None:
            searched += 1
            found.append((top, bottom, *judged(y, fitted), agreed))
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

# Kinds 1 and 2: the best, where rounding does not decide which; the last term has a negative value and is passed over.
y = noisy((0.5 + 2 * x) / (1 + 0.3 * x**1.5), 0.01)
out.append("data\n")
data("term", [x, z, x - 1])
data("y", [y])
for code, (kind, budget) in itertools.product(TRANSFORMS, ((1, 4), (1, 6), (2, 6), (2, 7))):
    found, searched = ranking([x, z], y, kind, code, budget, lambda *args: powers(*args, kind))
    if found and all(r[4] for r in found) and found[0][2] < 0.99 * (found + [(0, 0, 1e300)])[1][2]:
        case(kind, code, budget, 0, searched, found[:1])

# Kind 16: two Lorentzian peaks, or one after a Gaussian one.
x = np.linspace(0, 10, 60)
gauss = lambda a, u, s: a * np.exp(-(((x - u) / s) ** 2) / 2)
lorentz = lambda a, u, s: a / ((x - u) ** 2 + s * s)
y = 2 + gauss(3, 3, 0.6) + lorentz(2, 7, 0.6) + 0.1 * rng.standard_normal(60)
fits = [least_squares(lambda c: first(*c[:3]) + lorentz(*c[3:6]) + c[6] - y, [3, 3, 0.6, 2, 7, 0.6, 2]) for first in (gauss, lorentz)]
out.append("data\n")
data("column", [x, y])
case(16, 0, 7, 0, -1, [((), (), *min(judged(y, y + f.fun) for f in fits))])

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

# Kind 62 for two columns is (c + a X^p)^q for the last one.
x = rng.uniform(0.5, 3, 60)
z = noisy(np.sqrt(1 + 0.7 * x**1.5), 0.002)
f = least_squares(lambda c: (c[0] + c[1] * x ** c[2]) ** c[3] - z, [1, 0.7, 1.5, 0.5], method="lm")
out.append("data\n")
data("column", [x, z])
case(62, 0, 5, 0, 1, [((1,), (), *judged(z, z + f.fun))])

head = (f"# rankings by plain enumeration; tests/reference/make/expresssearch.py, numpy {np.__version__}, "
        f"scipy {scipy.__version__}\n# data; term, y, column: vectors; case: kind, transformation, maxTerms, errorLimit, "
        "candidates judged (-1: not compared);\n# result: numerator, denominator, error, correlation, best first\n")
path = Path(__file__).resolve().parent.parent / "expresssearch" / "search.csv"
path.write_text(head + "".join(out))
