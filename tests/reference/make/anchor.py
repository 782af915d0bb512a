#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Reference rows of the anchor: its folding transforms and the deflated surface, by mpmath at 60 digits.

The tolerance of a row is 4 ulps times one plus the condition number of the last function with respect to its argument,
which reaches it rounded.
"""
import mpmath as mp

from rows import line, save

mp.mp.dps = 60


def period(t):
    for edge in (1, 10, 100, 1000):
        if t < 10 * edge:
            return mp.mpf(edge)
    return mp.mpf(10000)


def transform(mode, t):
    c = period(t)
    return {
        0: lambda: 32 * t / (t * t + 1),
        2: lambda: 10 * mp.cos(t / c),
        3: lambda: mp.sin(10 * mp.log(t)),
        4: lambda: mp.cos(10 * mp.log(t)),
        5: lambda: mp.log(t) * 10 * mp.sin(t / c),
        6: lambda: mp.log(t) * 10 * mp.cos(t / c),
    }.get(mode, lambda: 10 * mp.sin(t / c))()


def condition(f, t):
    value = f(t)
    step = t * mp.mpf(10) ** -20
    return abs(t * (f(t + step) - f(t)) / step / value)


def angle_condition(mode, t):
    """Condition of modes 3 and 4 with respect to the angle 10 ln t, which is rounded before the sine is taken."""
    if mode not in (3, 4):
        return mp.mpf(0)
    angle = 10 * mp.log(t)
    return abs(angle * mp.cot(angle)) if mode == 3 else abs(angle * mp.tan(angle))


def deflate(mode1, mode2, a, s, n):
    if not a < 10:
        a = abs(transform(mode1, a))
    length = mp.log(s / n + 1)
    if not length < 10:
        length = abs(transform(mode2, length)) + mp.mpf(0.001)
    return 1 / ((a + mp.mpf(0.001)) * (length + mp.mpf(1e-12)))


def row(name, arguments, value, cond):
    return line(name, arguments, value, f"{4 * (1 + float(cond)):.1f}")


def transforms():
    yield "# transform of the anchor: mode, t"
    for mode in list(range(8)) + [255]:
        for t in (0.03, 0.7, 3.25, 9.5, 10.0, 47.0, 99.0, 100.0, 512.5, 1000.0, 4321.0, 10000.0, 123456.75, 1e9):
            x = mp.mpf(t)
            yield row(f"mode{mode}", (mode, t), transform(mode, x), condition(lambda y: transform(mode, y), x) + angle_condition(mode, x))


def deflated():
    yield "# deflated value: mode1, mode2, a, s, n"
    for mode1, mode2 in ((1, 1), (0, 2), (3, 4), (5, 6), (6, 0), (2, 5), (4, 3)):
        for a in (0.0, 0.5, 9.75, 10.0, 42.0, 3e5):
            for s, n in ((0.0, 2), (0.01, 2), (30.0, 3), (5e4, 1), (1e6, 2), (1e12, 5)):
                x, y = mp.mpf(a), mp.mpf(s)
                value = deflate(mode1, mode2, x, y, n)
                cond = mp.mpf(0)
                if a > 0:
                    cond += condition(lambda v: deflate(mode1, mode2, v, y, n), x)
                if a >= 10:
                    cond += angle_condition(mode1, x)
                if s > 0:
                    cond += condition(lambda v: deflate(mode1, mode2, x, v, n), y)
                    # ln(s/n + 1) loses the digits of a small s/n, and the fold magnifies the error of a large one
                    ratio = y / n
                    length = mp.log(ratio + 1)
                    cond += (1 + ratio) / ratio
                    if length >= 10:
                        cond += condition(lambda v: abs(transform(mode2, v)) + mp.mpf(0.001), length)
                        cond += angle_condition(mode2, length)
                yield row(f"d{mode1}{mode2}", (mode1, mode2, a, s, n), value, cond)


save("solver/anchor_transform", transforms())
save("solver/anchor_deflate", deflated())
