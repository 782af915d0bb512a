#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/highprecision/plural.csv from mpmath.

usage: plural.py            (needs mpmath; can run again)

Arguments are dyadic and stand with all their digits, so that every binary precision from 64 bits on reads them exactly;
results have 175 digits. `none` is an undefined result.
"""
import mpmath as mp

from rows import save

DIGITS = 175
REACH = 1.8e16  # bits: 2^48 words of 64
mp.mp.dps = 1500

FUNCTIONS = {10: mp.sin, 15: mp.asinh, 21: mp.asin, 22: mp.atan, 23: mp.atanh, 38: mp.cos, 39: mp.cosh, 42: mp.cot,
             43: mp.coth, 103: mp.exp, 119: mp.log, 141: mp.sinh, 147: mp.sqrt, 151: mp.tan, 152: mp.tanh}
F = mp.ldexp
ARGUMENTS = [(0, 0), (1, 0), (-1, 0), (0, 1), (0, -1), (F(3, -2), 0), (F(-5, -3), 0), (2, 0), (-2, 0), (F(25, -1), 0), (0, 2),
             (0, -2), (0, F(3, -1)), (F(5, -2), F(-7, -3)), (F(-5, -2), F(7, -3)), (F(11, -4), F(13, -5)), (-3, -4), (3, 4),
             (F(1, -60), F(-3, -58)), (F(3, -200), F(1, -210)), (F(1, -1), F(3, -150)), (F(-3, -1), F(1, -150)),
             (F(1, -150), F(3, -1)), (1 + F(1, -40), F(1, -90)), (F(-1, -100), 1 - F(1, -50)), (30, 40), (-40, F(1, -1)),
             (F(7, 50), F(-3, -2)), (F(3, -2), 600), (F(-5, 80), F(9, 79)), (F(884279719003555, -49), F(1, -30)),
             (F(3, -2) - 0, F(3, -3) * 2), (F(7074237752028440, -51), 0)]
PAIRS = [((2, 0), (F(1, -1), 0)), ((-4, 0), (F(1, -1), 0)), ((-4, 0), (F(-3, -1), 0)), ((0, 1), (0, 1)), ((0, 1), (2, 0)),
         ((1, 1), (10, 0)), ((1, 1), (-7, 0)), ((3, 4), (F(5, -2), F(-3, -1))), ((0, 0), (2, 0)), ((0, 0), (0, 0)), ((0, 0), (-1, 0)),
         ((0, 0), (0, 1)), ((-2, 0), (3, 0)), ((-2, 0), (-3, 0)), ((F(3, -1), 0), (1000, 0)), ((2, 3), (0, 0)), ((1, 0), (F(1, -1), 5)),
         ((F(9, -4), F(-1, -70)), (F(21, -1), F(1, -60))), ((F(1, -100), F(5, -101)), (F(3, -2), 0)), ((-1, F(1, -80)), (F(1, -2), 0)),
         ((1 + F(1, -45), F(-1, -48)), (1 + F(1, -41), F(1, -47))), ((F(3, 200), 5), (F(-7, -200), F(1, 20))), ((3, -4), (3, 4))]


def exact(x):
    """All decimal digits of a dyadic number."""
    x = mp.mpf(x)
    return mp.nstr(x, 400, strip_zeros=True, min_fixed=0, max_fixed=0)


def part(x, other):
    if x == 0 or mp.mag(x) < -REACH or (other != 0 and abs(x) < abs(other) * mp.mpf(10) ** -1000):  # noise of a part that is 0
        return "0"
    return mp.nstr(x, DIGITS, min_fixed=0, max_fixed=0)


def row(code, a, b, function):
    try:
        value = mp.mpc(function())
        ends = f"{part(value.real, value.imag)},{part(value.imag, value.real)}"
        if mp.isnan(value) or mp.isinf(value) or max(mp.mag(value.real), mp.mag(value.imag)) > REACH:
            ends = "none,none"
    except (ZeroDivisionError, ValueError):
        ends = "none,none"
    return f"{code},{exact(a[0])},{exact(a[1])},{exact(b[0])},{exact(b[1])},{ends}"


def power(x, y):
    if y == 0:
        return mp.mpf(1)
    if x == 0:
        return mp.mpf(0) if y.real > 0 else mp.inf
    return mp.exp(y * mp.log(x))



def main():
    lines = ["# code,a,i,b,i,value,i"]
    for a, b in PAIRS:
        x, y = mp.mpc(*a), mp.mpc(*b)
        for code, function in ((0, lambda: x + y), (1, lambda: x - y), (2, lambda: x * y), (3, lambda: x / y), (4, lambda: power(x, y))):
            lines.append(row(code, a, b, function))
    for code, function in FUNCTIONS.items():
        for a in ARGUMENTS:
            z = mp.mpc(*a)
            if code == 119 and z == 0:
                lines.append(row(code, a, (0, 0), lambda: mp.inf))
                continue
            lines.append(row(code, a, (0, 0), lambda: function(z if z.imag else z.real)))
    save("highprecision/plural", lines, f"mpmath {mp.__version__}, {DIGITS} digits")


main()
