#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/highprecision/hp_*.csv from mpmath and Python's integers.

usage: highprecision.py            (needs mpmath; can run again)

Numbers are limbs of seven digits, the most significant first, with the exponent of the lowest: `-1.5000000@-1` is -1.5.
A result holds the digits of the true value, cut (not rounded) after 54 limbs, so that it decides the rounding to every
precision from 1 to 52 limbs; shorter ones are exact. `inf` is the infinite flag.
"""
import sys

import mpmath as mp

from draws import BASE
from rows import cells, save

LIMBS = 54
sys.set_int_max_str_digits(0)


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

def number(cell):
    """n and e of a number n 10^(7 e)."""
    if cell == "0":
        return 0, 0
    digits, e = cell.split("@")
    n = 0
    for limb in digits.lstrip("-").split("."):
        n = n * BASE + int(limb)
    return (-n if cell[0] == "-" else n), int(e)


def functions():
    yield "# code,x,f(x) cut after 54 limbs"
    for code, x, _ in cells("highprecision/hp_functions"):
        n, e = number(x)
        # A root or a tie shows its next digits after as many again as stand before the point or behind it.
        mp.mp.dps = 7 * (2 * LIMBS + 3 * abs(reach(n, e)) + 2 * len(str(n)) // 7) + 60
        try:
            value = FUNCTIONS[int(code)](real(n, e))
        except (ZeroDivisionError, ValueError):
            value = mp.inf
        yield f"{code},{x},{cut(value)}"


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
    yield "# operation,a,b,value cut after 54 limbs"
    for code, first, second, _ in cells("highprecision/hp_pairs"):
        a, b = number(first), number(second)
        if code == "60":
            mp.mp.dps = 7 * 3 * LIMBS + 900
            value = mp.power(real(*a), real(*b)) if a[0] > 0 else mp.inf
            value = cut(mp.nint(value) if a[0] in (225, 16) else value)  # 15 and 8
        else:
            low = min(a[1], b[1])
            x, y = scaled(*a, low), scaled(*b, low)
            unit, up = BASE**max(0, -low), BASE**max(0, low)
            value = quotient(*(((x + y) * up, unit), ((x - y) * up, unit), (x * y * up * up, unit * unit), (x, y))[int(code)])
        yield f"{code},{first},{second},{value}"


def integer_powers():
    yield "# x,n,x^n cut after 54 limbs"
    for x, exponent, _ in cells("highprecision/hp_powers"):
        (n, e), power = number(x), int(exponent)
        mp.mp.dps = 1200
        if abs(power) < 1000:  # exact: a tie must show as one
            p, q = (n**abs(power), BASE ** (-e * abs(power))) if e < 0 else ((n * BASE**e) ** abs(power), 1)
            value = quotient(p, q) if power > 0 else quotient(q, p)
        else:
            value = cut(mp.power(real(n, e), power))
        yield f"{x},{power},{value}"


def conversions():
    """Digits in any base: sign, base, integer digits, fraction digits, value."""
    yield "# sign,base,integer digits,fraction digits,value cut after 54 limbs"
    for sign, base, before, behind, _ in cells("highprecision/hp_conversion"):
        n = 0
        for digit in f"{before} {behind}".split():
            n = n * int(base) + int(digit)
        yield f"{sign},{base},{before},{behind},{quotient(int(sign) * n, int(base) ** len(behind.split()))}"


def main():
    for name, rows in (("hp_functions", functions()), ("hp_pairs", pairs()), ("hp_powers", integer_powers()),
                       ("hp_conversion", conversions())):
        save(f"highprecision/{name}", list(rows), f"mpmath {mp.__version__}")


if __name__ == "__main__":
    main()
