#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/highprecision/plural.csv from mpmath.

usage: plural.py            (needs mpmath; can run again)

Arguments are dyadic and stand with all their digits, so that every binary precision from 64 bits on reads them exactly;
results have 175 digits. `none` is an undefined result.
"""
import mpmath as mp

from rows import cells, save

DIGITS = 175
REACH = 1.8e16  # bits: 2^48 words of 64
mp.mp.dps = 1500

FUNCTIONS = {10: mp.sin, 15: mp.asinh, 21: mp.asin, 22: mp.atan, 23: mp.atanh, 38: mp.cos, 39: mp.cosh, 42: mp.cot,
             43: mp.coth, 103: mp.exp, 119: mp.log, 141: mp.sinh, 147: mp.sqrt, 151: mp.tan, 152: mp.tanh}


def part(x, other):
    if x == 0 or mp.mag(x) < -REACH or (other != 0 and abs(x) < abs(other) * mp.mpf(10) ** -1000):  # noise of a part that is 0
        return "0"
    return mp.nstr(x, DIGITS, min_fixed=0, max_fixed=0)


def ends(function):
    try:
        value = mp.mpc(function())
        if not (mp.isnan(value) or mp.isinf(value) or max(mp.mag(value.real), mp.mag(value.imag)) > REACH):
            return f"{part(value.real, value.imag)},{part(value.imag, value.real)}"
    except (ZeroDivisionError, ValueError):
        pass
    return "none,none"


def power(x, y):
    if y == 0:
        return mp.mpf(1)
    if x == 0:
        return mp.mpf(0) if y.real > 0 else mp.inf
    return mp.exp(y * mp.log(x))


def value(code, x, y):
    if code < 5:
        return (lambda: x + y, lambda: x - y, lambda: x * y, lambda: x / y, lambda: power(x, y))[code]()
    return mp.inf if code == 119 and x == 0 else FUNCTIONS[code](x if x.imag else x.real)


def main():
    lines = ["# code,a,i,b,i,value,i"]
    for code, *arguments, _, _ in cells("highprecision/plural"):
        a, ai, b, bi = map(mp.mpf, arguments)
        lines.append(",".join([code, *arguments, ends(lambda: value(int(code), mp.mpc(a, ai), mp.mpc(b, bi)))]))
    save("highprecision/plural", lines, f"mpmath {mp.__version__}, {DIGITS} digits")


main()
