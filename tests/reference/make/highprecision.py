#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/highprecision/hp_*.csv from mpmath and Python's integers.

usage: highprecision.py            (needs mpmath; can run again)

Numbers are limbs of seven digits, the most significant first, with the exponent of the lowest: `-1.5000000@-1` is -1.5.
A result holds the digits of the true value, cut (not rounded) after 54 limbs, so that it decides the rounding to every
precision from 1 to 52 limbs; shorter ones are exact. `inf` is the infinite flag.
"""
import random
import sys

import mpmath as mp

from draws import BASE, limbs
from rows import save

LIMBS = 54
sys.set_int_max_str_digits(0)
draw = random.Random(20240607)


def text(n, e):
    """n 10^(7 e)"""
    if n == 0:
        return "0"
    sign, n = ("-", -n) if n < 0 else ("", n)
    while n % BASE == 0:
        n, e = n // BASE, e + 1
    limbs = []
    while n:
        n, limb = divmod(n, BASE)
        limbs.append(str(limb))
    return sign + ".".join(reversed(limbs)) + f"@{e}"


def real(n, e):
    return mp.mpf(n) * mp.power(10, 7 * e) if e >= 0 else mp.mpf(n) / mp.power(10, -7 * e)


def cut(v):
    if isinstance(v, mp.mpc):
        if v.imag != 0:
            return "inf"
        v = v.real
    if mp.isinf(v) or mp.isnan(v):
        return "inf"
    if v == 0:
        return "0"
    size = abs(v)
    top = int(mp.floor(mp.log10(size) / 7)) + 1
    while size >= mp.power(10, 7 * top):
        top += 1
    while size < mp.power(10, 7 * (top - 1)):
        top -= 1
    n = int(mp.floor(size * mp.power(10, 7 * (LIMBS - top))))
    return text(-n if v < 0 else n, top - LIMBS)


def reach(n, e):
    """Power of 10^7 just above n 10^(7 e)."""
    return e + (len(str(abs(n))) + 6) // 7


def acot(x):
    return mp.pi / 2 - mp.atan(x)


FUNCTIONS = {49: mp.sqrt, 50: mp.log, 51: mp.sin, 52: mp.cos, 53: mp.tan, 54: mp.cot, 55: mp.asin, 56: mp.acos,
             57: mp.atan, 58: acot, 59: mp.exp, 61: mp.sinh, 62: mp.cosh, 63: mp.tanh, 64: mp.coth, 65: mp.asinh,
             66: mp.acosh, 67: mp.atanh, 68: mp.acoth}
ANGLES, GROWING = {51, 52, 53, 54}, {59, 61, 62, 63, 64}


def arguments(code):
    """Pairs (n, e) by region."""
    some = [(1, 0), (2, 0), (5000000, -1), (7500000, -1), (15, 0), (limbs(draw, 1), -1), (limbs(draw, 5), -5), (limbs(draw, 52), -52)]
    near_one = [(BASE**3 + 1, -3), (BASE**30 - 7, -30), (BASE**20 + 4999999, -20), (BASE - 1, -1)]
    # 1.5 and 2.5 in a tie: only the next term of a series decides their rounding to one limb.
    tiny = [(1, -3), (15000000, -9), (2 * BASE + 5000000, -31), (25000000, -402), (4000000, -1001), (limbs(draw, 3), -60)]
    ordinary = [(limbs(draw, 2), -1), (limbs(draw, 3), -2), (limbs(draw, 20), -19)]
    huge = [(3, 4), (limbs(draw, 40), -10), (4, 300), (limbs(draw, 2), 1000)]
    close = []
    if code in ANGLES:
        mp.mp.dps = 400
        for turns, digits in ((1, 3), (2, 20), (1001, 9), (10**9 + 1, 30)):
            close.append((int(mp.nint(turns * mp.pi / 2 * mp.power(10, 7 * digits))), -digits))
        huge = [(limbs(draw, 2), 0), (3, 4), (1, 100), (limbs(draw, 30), 20)]
    if code in GROWING:
        ordinary = [(123, 0), (limbs(draw, 4), -3), (limbs(draw, 2), -1)]
        huge = [(limbs(draw, 1), 1)] if code in (59, 61, 62) else [(1000, 0), (4, 300)]
    if code in (55, 56, 67):
        ordinary = huge = []
        near_one.append((BASE**12 + 5, -12))  # outside
    if code == 66:
        tiny = []
    if code == 68:
        huge.append((25000000, 400))
    if code == 49:
        ordinary += [(25 * 10**12, 0), (144, 0), (2 * BASE, 0), (225 * 10**12, -1), (BASE**60 - 1, -60)]
    if code == 50:
        ordinary += [(1, 5), (1, -7), (10, 0), (1024, 0), (BASE // 2, -1)]
    return some + near_one + tiny + ordinary + huge + close


def functions():
    lines = ["# code,x,f(x) cut after 54 limbs"]
    for code, function in FUNCTIONS.items():
        both = code not in (49, 50, 52, 62, 66)
        for index, (n, e) in enumerate(arguments(code)):
            if both and index % 3 == 1:
                n = -n
            # A root or a tie shows its next digits after as many again as stand before the point or behind it.
            mp.mp.dps = 7 * (2 * LIMBS + 3 * abs(reach(n, e)) + 2 * len(str(n)) // 7) + 60
            try:
                value = function(real(n, e))
            except (ZeroDivisionError, ValueError):
                value = mp.inf
            lines.append(f"{code},{text(n, e)},{cut(value)}")
    return lines


def quotient(p, q):
    """p/q, cut; p and q are integers."""
    sign = -1 if (p < 0) != (q < 0) else 1
    p, q = abs(p), abs(q)
    if p == 0:
        return "0"
    e = (len(str(q)) - len(str(p))) // 7 + LIMBS + 1
    n = p * BASE**e // q if e >= 0 else p // (q * BASE**-e)
    while n >= BASE**LIMBS:
        n, e = n // BASE, e - 1
    return text(sign * n, -e)


def scaled(n, e, low):
    return n * BASE ** (e - low)


def pairs():
    """Operations: cut results of +, -, *, / and powers."""
    numbers = [(1, 0), (3, 0), (5000000, -1), (BASE - 1, 0), (limbs(draw, 2), -1), (limbs(draw, 7), -3), (limbs(draw, 52), -40), (limbs(draw, 52), 3),
               (BASE**20 - 1, -20), (limbs(draw, 1), 70), (5000000, -60), (-limbs(draw, 30), -15), (-1, 30)]
    lines = ["# operation,a,b,value cut after 54 limbs"]
    for a in numbers:
        for b in numbers:
            if draw.random() < 0.5 and a is not b:
                continue
            low = min(a[1], b[1])
            x, y = scaled(*a, low), scaled(*b, low)
            unit = BASE**-low if low < 0 else 1
            up = BASE**low if low > 0 else 1
            for code, p, q in ((0, (x + y) * up, unit), (1, (x - y) * up, unit), (2, x * y * up * up, unit * unit), (3, x, y)):
                lines.append(f"{code},{text(*a)},{text(*b)},{quotient(p, q)}")
    powers = [((2, 0), (5000000, -1)), ((225, 0), (5000000, -1)), ((limbs(draw, 3), -2), (limbs(draw, 2), -1)), ((1, -40), (3333333, -1)),
              ((BASE**25 + 1, -25), (limbs(draw, 2), 0)), ((limbs(draw, 10), -5), (-limbs(draw, 9), -9)), ((7, 0), (12345678901, -3)),
              ((BASE**9 - 1, -9), (limbs(draw, 11), -3)), ((limbs(draw, 1), -1), (1, -40)), ((16, 0), (7500000, -1)),
              ((limbs(draw, 52), -51), (limbs(draw, 52), -51)), ((5000, 0), (15000000, -1)), ((-2, 0), (5000000, -1))]
    for a, b in powers:
        mp.mp.dps = 7 * 3 * LIMBS + 900
        value = mp.power(real(*a), real(*b)) if a[0] > 0 else mp.inf
        if a[0] in (225, 16):  # 15 and 8
            value = mp.nint(value)
        lines.append(f"60,{text(*a)},{text(*b)},{cut(value)}")
    return lines


def integer_powers():
    lines = ["# x,n,x^n cut after 54 limbs"]
    cases = [((2, 0), 10), ((2, 0), 1000), ((2, 0), -1000), ((5000, 0), 2), ((5000, 0), 3), ((-3, 0), 333), ((-3, 0), -332),
             ((10, 0), 7), ((limbs(draw, 52), -51), 2), ((limbs(draw, 52), -51), 17), ((BASE**30 + 1, -30), 10**15), ((limbs(draw, 2), -1), -12345),
             ((BASE + 1, -1), 2**62), ((BASE**40 - 1, -40), -(2**63)), ((limbs(draw, 4), 9), 1), ((2 * BASE + 5000000, -1001), 1)]
    for (n, e), power in cases:
        mp.mp.dps = 1200
        if abs(power) < 1000:  # exact: a tie must show as one
            p, q = (n**abs(power), BASE ** (-e * abs(power))) if e < 0 else ((n * BASE**e) ** abs(power), 1)
            value = quotient(p, q) if power > 0 else quotient(q, p)
        else:
            value = cut(mp.power(real(n, e), power))
        lines.append(f"{text(n, e)},{power},{value}")
    return lines


def conversions():
    """Digits in any base: sign, base, integer digits, fraction digits, value."""
    lines = ["# sign,base,integer digits,fraction digits,value cut after 54 limbs"]
    for base, before, behind in ((10, 1, 0), (10, 20, 30), (2, 70, 100), (3, 5, 200), (16, 40, 40), (60, 3, 9), (10, 0, 12),
                                 (2147483647, 6, 7), (7, 300, 100), (-3, 6, 5)):
        a = [draw.randrange(abs(base)) for _ in range(before)]
        b = [draw.randrange(abs(base)) for _ in range(behind)]
        n = 0
        for digit in a + b:
            n = n * base + digit
        sign = draw.choice((1, -1))
        lines.append(f"{sign},{base},{' '.join(map(str, a))},{' '.join(map(str, b))},{quotient(sign * n, base ** len(b))}")
    return lines


def main():
    for name, rows in (("hp_functions", functions()), ("hp_pairs", pairs()), ("hp_powers", integer_powers()),
                       ("hp_conversion", conversions())):
        save(f"highprecision/{name}", rows, f"mpmath {mp.__version__}")


if __name__ == "__main__":
    main()
