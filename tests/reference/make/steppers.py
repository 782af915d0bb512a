#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/network/steppers.csv: where every step rule of training takes five variables in 1, 7 and 50
steps, in doubles, from the formulas of their papers as include/orvane/network_training.h states them.

A line is `code,set,beta1,beta2,extra,steps,` and the variables, all as hexadecimal floats. With set 0 the rule runs on
its own numbers and the rate 1, otherwise on those of the line with a rate from 0.5 to 0.125 in 30 steps. The gradient of
step t is w less row t of the lines `target`; the first variables are the line `start`.
"""
import math
import pathlib
import random

STEPS, COUNTS, SIZE = 50, (1, 7, 50), 5
LAST, END, RAMP = 0.5, 0.125, 30
START = [0.5, 0.0, -1.0, 0.0, 0.25]


def targets():
    """Ordinary, tiny and large gradients, one that is always 0, one that is 0 at first."""
    random.seed(11)
    return [[random.gauss(0, 1), 1e-7 * random.gauss(0, 1), random.gauss(0, 50), 0.0, 0.25 if t < 4 else math.sin(0.3 * t)]
            for t in range(STEPS)]


def over_square(x, q): return x if q < 1e-12 else x / math.sqrt(q)
def over_root(x, root): return x if root < 1e-12 else x / root


class Entry:
    """State of one variable under one rule; step(g, w, t, lr) gives dx, t from 1."""

    def __init__(self, code, b1, b2, extra):
        self.code, self.b1, self.b2, self.extra = code, b1, b2, extra
        self.m = self.v = self.third = self.weights = 0.0
        self.p1 = self.p2 = 1.0

    def step(self, g, w, t, lr):
        b1, b2, extra, code = self.b1, self.b2, self.extra, self.code
        if code == 10:
            before, self.weights = self.weights, self.weights + t ** -extra
            b2 = before / self.weights
        self.p1, self.p2 = self.p1 * b1, self.p2 * b2
        c1, c2 = 1 - self.p1, 1 - self.p2
        if code == 8: return lr * g
        if code == 6:
            self.v = b1 * self.v + (1 - b1) * g * g
            dx = math.sqrt((self.m + 1e-16) / (self.v + 1e-16)) * lr * g
            self.m = b2 * self.m + (1 - b2) * dx * dx
            return dx
        if code == 16:
            u, self.m = b1 * self.m + abs(1 - b1) * g, b2 * self.m + abs(1 - b2) * g
            return lr * (extra * w + (-1 if u < -1e-6 else 1 if u > 1e-6 else 0))
        self.m = b1 * self.m + (1 - b1) * g
        if code == 4:
            self.v = max(b2 * self.v, abs(g))
            return lr / c1 * self.m / (self.v or 1)
        self.v = b2 * self.v + (1 - b2) * ((g - self.m) ** 2 if code == 13 else g * g)
        m, v = self.m, self.v
        if code in (3, 10, 13): return over_square(lr / c1 * m, v / c2)
        if code == 7: return lr / c1 * (b1 * m + (1 - b1) * g) / (math.sqrt(v / c2) + 1e-16)
        if code == 14: return over_root((b1 / (1 - b1 * self.p1) * m + (1 - b1) / c1 * g) * lr, math.sqrt(v / c2))
        if code == 15: return (m / ((math.sqrt(v / c2) + 1e-16) * c1) + extra * w) * lr
        if code == 2:
            most = 2 / (1 - b2 + 1e-16) - 1
            p = most - 2 * t * self.p2 / (1 - self.p2)
            if p <= 4: return lr / c1 * m
            r = math.sqrt((p - 4) * (p - 2) * most / ((most - 4) * (most - 2) * p))
            return over_root(lr / c1 * m * r, math.sqrt(v / c2))
        if code == 17:
            self.third = extra * self.third + (1 - extra) * g
            return (m / c1 + 6 * min(1, 0.00016 * t) * self.third) * lr / (math.sqrt(v / c2) + 1e-16)
        if code == 9:
            if v == 0: return 0.0
            s = lr / math.sqrt(v / c2)
            self.third = extra * self.third + (1 - extra) * s
            return min(self.third, s) * m / c1
        self.third = max(self.third, v) if code in (5, 12) else v
        if code == 5: return m * lr * math.sqrt(c2) / c1 / (math.sqrt(self.third) or 1)
        q, rate = extra * t, 1 / math.sqrt(self.third) if self.third > 0 else math.inf
        return lr * m * min(max(rate, 1 - 1 / (q + 1)), 1 + 1 / q)  # 11, 12


OWN = {3: (0.96, 0.98, 0), 8: (0, 0, 0), 9: (0.8, 0.6, 0.98), 15: (0.8, 0.6, 0.01), 16: (0.8, 0.6, 0.01), 17: (0.8, 0.6, 0.9968),
       **{code: (0.8, 0.6, 0.001) for code in (10, 11, 12)}, **{code: (0.8, 0.6, 0) for code in (2, 4, 5, 6, 7, 13, 14)}}
SET = {code: (0.9, 0.99, {10: 0.7, 11: 0.2, 12: 0.2, 9: 0.9, 15: 0.05, 16: 0.05, 17: 0.95}.get(code, 0)) for code in OWN}


def main():
    text = lambda key, row: ",".join([key] + [float(x).hex() for x in row])
    T = targets()
    lines = ["# Written by tests/reference/make/steppers.py, doubles.", text("start", START)] + [text("target", row) for row in T]
    for given, rules in ((0, OWN), (1, SET)):
        for code, numbers in sorted(rules.items()):
            w, entries = list(START), [Entry(code, *numbers) for _ in range(SIZE)]
            for t in range(STEPS):
                lr = 1.0 if not given else END if t >= RAMP else t * ((END - LAST) / RAMP) + LAST
                w = [x - e.step(x - a, x, t + 1, lr) for e, x, a in zip(entries, w, T[t])]
                if t + 1 in COUNTS: lines.append(text("rule", [code, given, *numbers, t + 1, *w]))
    (pathlib.Path(__file__).resolve().parents[1] / "network" / "steppers.csv").write_text("\n".join(lines) + "\n")


main()
