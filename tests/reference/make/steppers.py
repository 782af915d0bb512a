#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/network/steppers.csv: 50 steps of every step rule of training, in doubles, from the formulas of
their papers as include/orvane/network_training.h states them.

`g,t,...` the gradient of step t, `w,t,...` the variables, and for each code `code,t,...` the steps dx, as hexadecimal
floats; `code,0,beta1,beta2,extra` are the numbers of the rule. The rate goes from 0.5 to 0.125 in 30 steps.
"""
import math
import pathlib
import random

STEPS, SIZE = 50, 5
START, END, RAMP = 0.5, 0.125, 30


def gradients():
    random.seed(11)
    rows = []
    for t in range(STEPS):
        g = [random.gauss(0, 1), 1e-7 * random.gauss(0, 1), random.gauss(0, 50), 0.0, math.sin(0.3 * t)]
        if t % 7 == 3: g[0] = 0.0
        if t < 4: g[4] = 0.0
        rows.append(g)
    return rows


def variables():
    return [[(-1) ** k * (k + 1) * 0.37 + 0.01 * t for k in range(SIZE)] for t in range(STEPS)]


def over_square(x, q): return x if q < 1e-12 else x / math.sqrt(q)
def over_root(x, root): return x if root < 1e-12 else x / root


class Entry:
    """State of one variable under one rule; step(g, w, t, lr) gives dx, t from 1."""

    def __init__(self, code, b1, b2, extra):
        self.code, self.b1, self.b2, self.extra = code, b1, b2, extra
        self.m = self.v = self.third = self.p2 = 0.0
        self.p1 = self.p2 = 1.0
        self.weights = 0.0

    def step(self, g, w, t, lr):
        b1, b2, extra, code = self.b1, self.b2, self.extra, self.code
        if code == 10:
            before = self.weights
            self.weights += t ** -extra
            b2 = before / self.weights
        self.p1 *= b1
        self.p2 *= b2
        c1, c2 = 1 - self.p1, 1 - self.p2
        if code == 8: return lr * g
        if code == 6:
            self.v = b1 * self.v + (1 - b1) * g * g
            dx = math.sqrt((self.m + 1e-16) / (self.v + 1e-16)) * lr * g
            self.m = b2 * self.m + (1 - b2) * dx * dx
            return dx
        if code == 16:
            u = b1 * self.m + abs(1 - b1) * g
            self.m = b2 * self.m + abs(1 - b2) * g
            return lr * (extra * w + (-1 if u < -1e-6 else 1 if u > 1e-6 else 0))
        self.m = b1 * self.m + (1 - b1) * g
        if code == 4:
            self.v = max(b2 * self.v, abs(g))
            return lr / c1 * self.m / self.v if self.v > 0 else lr / c1 * self.m
        self.v = b2 * self.v + (1 - b2) * ((g - self.m) ** 2 if code == 13 else g * g)
        m, v = self.m, self.v
        if code in (3, 10, 13): return over_square(lr / c1 * m, v / c2)
        if code == 7: return lr / c1 * (b1 * m + (1 - b1) * g) / (math.sqrt(v / c2) + 1e-16)
        if code == 14: return over_root((b1 / (1 - b1 * self.p1) * m + (1 - b1) / c1 * g) * lr, math.sqrt(v / c2))
        if code == 5:
            self.third = max(self.third, v)
            return m * lr * math.sqrt(c2) / c1 / math.sqrt(self.third) if self.third > 0 else m * lr * math.sqrt(c2) / c1
        if code == 2:
            most = 2 / (1 - b2 + 1e-16) - 1
            p = most - 2 * t * self.p2 / (1 - self.p2)
            if p <= 4: return lr / c1 * m
            r = math.sqrt((p - 4) * (p - 2) * most / ((most - 4) * (most - 2) * p))
            return over_root(lr / c1 * m * r, math.sqrt(v / c2))
        if code == 15: return (m / ((math.sqrt(v / c2) + 1e-16) * c1) + extra * w) * lr
        if code == 9:
            if v == 0: return 0.0
            s = lr / math.sqrt(v / c2)
            self.third = extra * self.third + (1 - extra) * s
            return min(self.third, s) * m / c1
        if code in (11, 12):
            self.third = max(self.third, v) if code == 12 else v
            q = extra * t
            rate = 1 / math.sqrt(self.third) if self.third > 0 else math.inf
            return lr * m * min(max(rate, 1 - 1 / (q + 1)), 1 + 1 / q)
        if code == 17:
            self.third = extra * self.third + (1 - extra) * g
            return (m / c1 + 6 * min(1, 0.00016 * t) * self.third) * lr / (math.sqrt(v / c2) + 1e-16)
        raise ValueError(code)


# Default numbers; rules that have a second column of numbers run on these too (99 added to the name's code).
RULES = {2: (0.8, 0.6, 0), 3: (0.96, 0.98, 0), 4: (0.8, 0.6, 0), 5: (0.8, 0.6, 0), 6: (0.8, 0.6, 0), 7: (0.8, 0.6, 0),
         8: (0, 0, 0), 9: (0.8, 0.6, 0.98), 10: (0.8, 0.6, 0.001), 11: (0.8, 0.6, 0.001), 12: (0.8, 0.6, 0.001),
         13: (0.8, 0.6, 0), 14: (0.8, 0.6, 0), 15: (0.8, 0.6, 0.01), 16: (0.8, 0.6, 0.01), 17: (0.8, 0.6, 0.9968)}
OTHERS = {2: (0.9, 0.99, 0), 10: (0.9, 0.5, 0.7), 11: (0.9, 0.99, 0.2), 12: (0.9, 0.99, 0.2)}


def main():
    text = lambda key, t, row: ",".join([str(key), str(t)] + [float(x).hex() for x in row])
    G, W = gradients(), variables()
    lines = ["# Written by tests/reference/make/steppers.py, doubles."]
    lines += [text("g", t + 1, row) for t, row in enumerate(G)]
    lines += [text("w", t + 1, row) for t, row in enumerate(W)]
    for rules in (RULES, OTHERS):
        for code, numbers in rules.items():
            lines.append(text(code, 0, numbers))
            entries = [Entry(code, *numbers) for _ in range(SIZE)]
            for t in range(STEPS):
                lr = END if t >= RAMP else t * ((END - START) / RAMP) + START
                lines.append(text(code, t + 1, [e.step(g, w, t + 1, lr) for e, g, w in zip(entries, G[t], W[t])]))
    out = pathlib.Path(__file__).resolve().parents[1] / "network" / "steppers.csv"
    out.parent.mkdir(exist_ok=True)
    out.write_text("\n".join(lines) + "\n")


main()
