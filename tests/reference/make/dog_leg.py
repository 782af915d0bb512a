#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/solver/dog_leg.csv: the points that the dog-leg's rules visit, from a transcription of the
rules with 40 digits (mpmath), so that no rounding decides. `problem,step,radius,error,x0,x1`: where the Jacobian was
asked for, and last, as step -1, the best point."""
import pathlib

import mpmath as mp

mp.mp.dps = 40
STEPS = 12


def n2(v):
    return sum((x * x for x in v), mp.mpf(0))


def bend(step, grad, radius, alpha):
    gsq = n2(grad)
    if radius**2 > n2(step):
        return step
    if alpha**4 * gsq >= radius**2:
        step = [g * (-alpha * radius) / (abs(alpha) * mp.sqrt(gsq) + mp.mpf(1e-16)) for g in grad]
    c = [alpha**2 * g for g in grad]
    p, s, w = n2(c), sum((a + b) * a for a, b in zip(c, step)), n2([a + b for a, b in zip(c, step)])
    m = radius**2 - p
    d = mp.sqrt(s * s + m * w)
    beta = (d + s) / (w + mp.mpf(1e-16)) if s >= 0 else m / (d - s)
    return [(b + a) * beta - a for a, b in zip(c, step)]


def solve(fun, jac, start):
    cur = [mp.mpf(x) for x in start]
    res = fun(*cur)
    best, error = cur, n2(res)
    prev, radius, least = error, mp.mpf(len(cur) * 10000), n2(cur) * mp.mpf(1e-12)
    for step_number in range(STEPS):
        yield step_number, radius, prev, cur
        J = jac(*cur)
        grad = [sum(row[k] * r for row, r in zip(J, res)) for k in range(2)]
        if max(map(abs, grad)) < 1e-12: break
        alpha = n2(grad) / (sum((row[0] * grad[0] + row[1] * grad[1])**2 for row in J) + mp.mpf(1e-16))
        a, b, d = (sum(row[i] * row[k] for row in J) for i, k in ((0, 0), (0, 1), (1, 1)))
        det = a * d - b * b
        step = [-(d * grad[0] - b * grad[1]) / det, -(a * grad[1] - b * grad[0]) / det]
        step = bend(step, grad, radius, alpha)
        sq = n2(step)
        if max(map(abs, step)) < 1e-12 or least > sq: break
        new = [x + s for x, s in zip(cur, step)]
        res = fun(*new)
        e = n2(res)
        if e > prev:
            for _ in range(32):
                sq *= mp.mpf(0.7396)
                if least > sq: break
                step = [s * mp.mpf(0.86) for s in step]
                t1 = [x + s for x, s in zip(cur, step)]
                t2 = fun(*t1)
                if prev > n2(t2) + 1 or prev >= n2(t2) * mp.mpf(1.1):
                    e, res, new = n2(t2), t2, t1
                    break
        rel = (prev - e) / (prev + mp.mpf(1e-12))
        if abs(rel) < 1e-6 or rel < -1e6: break
        if prev > e and error > e:
            best, error = new, e
            if error <= 0: break  # the target
        if rel > 1: radius *= mp.mpf(0.5)
        elif rel > 0.1: radius *= mp.mpf(0.86)
        if rel > 0.1 and least > radius**2: break
        if rel < -1: radius *= 2
        elif rel < -0.1: radius *= mp.mpf(1.5)
        cur, least, prev = new, n2(new) * mp.mpf(1e-12), e
    yield -1, radius, error, best


def beale_shifted(x, y):
    return [c - x * (1 - y**k) for k, c in ((1, mp.mpf(1.5)), (2, mp.mpf(2.25)), (3, mp.mpf(2.625)))]


# name, residuals, Jacobian, start. `far`: a step beyond the radius; `gradient`: one whose gradient part is beyond it too;
# `uphill`: a full step that leads uphill.
PROBLEMS = [
    ("rosenbrock", lambda x, y: [10 * (y - x * x), 1 - x], lambda x, y: [[-20 * x, 10], [-1, 0]], (-1.2, 1.0)),
    ("beale", beale_shifted, lambda x, y: [[y**k - 1, k * x * y**(k - 1)] for k in (1, 2, 3)], (1.0, 0.5)),
    ("far", lambda x, y: [(x - 3e5) / 64, (y + 2e5) * 3, x * y / 2**30],
     lambda x, y: [[mp.mpf(1) / 64, 0], [0, 3], [y / 2**30, x / 2**30]], (1.0, 1.0)),
    ("gradient", lambda x, y: [(x - 1e6) / 16, (y - 4e6) / 8],
     lambda x, y: [[mp.mpf(1) / 16, 0], [0, mp.mpf(1) / 8]], (5.0, -5.0)),
    ("uphill", lambda x, y: [mp.exp(x) - 20, mp.atan(5 * y), x * y / 4],
     lambda x, y: [[mp.exp(x), 0], [0, 5 / (1 + 25 * y * y)], [y / 4, x / 4]], (-1.0, 0.5)),
    ("uphill_only", lambda x, y: [mp.atan(9 * x), mp.atan(7 * y), mp.mpf(3)],
     lambda x, y: [[9 / (1 + 81 * x * x), 0], [0, 7 / (1 + 49 * y * y)], [0, 0]], (4.0, -5.0)),
]


def main():
    lines = [f"# Written by tests/reference/make/dog_leg.py with mpmath {mp.__version__}, 40 digits."]
    for name, fun, jac, start in PROBLEMS:
        for number, radius, error, x in solve(fun, jac, start):
            lines.append(",".join([name, str(number)] + [mp.nstr(v, 20) for v in (radius, error, *x)]))
    (pathlib.Path(__file__).resolve().parents[1] / "solver" / "dog_leg.csv").write_text("\n".join(lines) + "\n")


main()
