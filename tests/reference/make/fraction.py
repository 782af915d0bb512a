#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/highprecision/fraction_*.csv with Python's fractions.

usage: fraction.py            (can run again)
"""
import platform
import random
import sys
from fractions import Fraction

from draws import BASE, limbs
from rows import save

sys.set_int_max_str_digits(0)
draw = random.Random(20240608)


def drawn(size):
    """Numerator and denominator of up to `size` limbs, not in lowest terms as often as not."""
    n, d = limbs(draw, draw.randint(1, size)), limbs(draw, draw.randint(1, size))
    kind = draw.randrange(5)
    if kind == 0:  # a common factor
        f = limbs(draw, draw.randint(1, max(1, size // 3)))
        n, d = n // f * f or f, d // f * f or f
    if kind == 1:  # shared low zero limbs
        n, d = n * BASE ** (size // 4), d * BASE ** (size // 4)
    if kind == 2:
        d = draw.choice((1, 2, BASE, 2**20, 3**15))
    return draw.choice((1, -1)) * n, d


def cells(x):
    return f"{x.numerator},{x.denominator}"


def operations():
    lines = ["# operation,a,of,b,of,result,of,comparison: numerators and denominators; - for a zero divisor"]
    pairs = [(drawn(size), drawn(size)) for size, count in ((2, 20), (6, 15), (40, 8), (1000, 2)) for _ in range(count)]
    pairs += [((limbs(draw, 1000), limbs(draw, 1000)), (-limbs(draw, 1000), limbs(draw, 1000))) for _ in range(2)]
    pairs += [((1, 2), (1, 2)), ((1, 3), (-1, 3)), ((0, 5), (7, 3)), ((7, 3), (0, 5)), ((6, 4), (3, 2)), ((BASE, 1), (1, BASE)),
              ((BASE - 1, BASE), (BASE, BASE + 1)), ((-6, 4), (-9, 6))]
    for index, (a, b) in enumerate(pairs):
        x, y = Fraction(*a), Fraction(*b)
        order = 0 if x < y else 1 if x == y else 2
        for code in range(4):
            if max(map(abs, a + b)) > BASE**200 and code not in (0, 2 + index % 2):
                continue
            result = [x + y, x - y, x * y, x / y if y else None][code]
            ends = cells(result) if result is not None else "-,-"
            lines.append(f"{code},{a[0]},{a[1]},{b[0]},{b[1]},{ends},{order}")
    return lines


def powers():
    lines = ["# a,of,b,of,a^b,of"]
    for a, b, result in (((2, 3), (5, 1), None), ((-2, 3), (-5, 1), None), ((6, 4), (100, 1), None), ((-7, 1), (0, 3), None),
                         ((4, 9), (1, 2), (2, 3)), ((8, 27), (-4, 6), (9, 4)), ((2**40, 3**20), (6, 40), (2**6, 3**3)),
                         ((-1, 1), (10**12, 1), (1, 1)), ((0, 1), (3, 7), None), ((1, 1), (1, 3), (1, 1))):
        value = Fraction(*result) if result else Fraction(*a) ** Fraction(*b) if a[0] else Fraction(0)
        lines.append(f"{a[0]},{a[1]},{b[0]},{b[1]},{cells(Fraction(value))}")
    return lines


def sums():
    """Arithmetic progressions: first, step, count, sum of inverses."""
    lines = ["# first,step,count,sum of 1/(first + i step),of"]
    for first, step, count in ((2, 0, 2), (1, 1, 1), (1, 1, 10), (1, 1, 10000), (-50, 1, 50), (3, -2, 7), (1, 2, 1000),
                               (2**62, 12345, 15), (-(2**63), 1, 3), (-5, 2, 6)):
        total = [Fraction(1, first + i * step) for i in range(count)]
        while len(total) > 1:
            total = [sum(total[i : i + 2]) for i in range(0, len(total), 2)]
        lines.append(f"{first},{step},{count},{cells(total[0])}")
    return lines


def main():
    for name, rows in (("fraction_operations", operations()), ("fraction_powers", powers()), ("fraction_sums", sums())):
        save(f"highprecision/{name}", rows, f"Python {platform.python_version()}")


main()
