#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Reference rows of the anchor: its folding transforms and the deflated surface, by mpmath at 60 digits.

The tolerance of a row is 4 ulps times one plus the condition number of the last function with respect to its argument,
which reaches it rounded.
"""
import mpmath as mp

from rows import cases, line, save

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
    for case, (mode, t), _ in cases("solver/anchor_transform"):
        mode, x = int(mode), mp.mpf(t)
        yield row(case, (mode, t), transform(mode, x), condition(lambda y: transform(mode, y), x) + angle_condition(mode, x))


def deflated():
    yield "# deflated value: mode1, mode2, a, s, n"
    for case, arguments, _ in cases("solver/anchor_deflate"):
        mode1, mode2, n = int(arguments[0]), int(arguments[1]), int(arguments[4])
        a, s, cond = mp.mpf(arguments[2]), mp.mpf(arguments[3]), mp.mpf(0)
        if a > 0:
            cond += condition(lambda v: deflate(mode1, mode2, v, s, n), a)
        if a >= 10:
            cond += angle_condition(mode1, a)
        if s > 0:
            cond += condition(lambda v: deflate(mode1, mode2, a, v, n), s)
            # ln(s/n + 1) loses the digits of a small s/n, and the fold magnifies the error of a large one
            ratio = s / n
            length = mp.log(ratio + 1)
            cond += (1 + ratio) / ratio
            if length >= 10:
                cond += condition(lambda v: abs(transform(mode2, v)) + mp.mpf(0.001), length) + angle_condition(mode2, length)
        yield row(case, (mode1, mode2, *arguments[2:4], n), deflate(mode1, mode2, a, s, n), cond)


save("solver/anchor_transform", list(transforms()))
save("solver/anchor_deflate", list(deflated()))
