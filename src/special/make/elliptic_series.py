#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes src/special/elliptic/elliptic_series_data.inc: the integrals of Legendre as polynomials of a small amplitude.

usage: elliptic_series.py            (standard library only; writes beside its parent folder, can run again)

With s = sin(t)^2 the integrands are (1 - m s)^(-1/2), (1 - m s)^(1/2) and (1 - m s)^(-1/2)/(1 - n s). The powers of s
are expanded in t and integrated with exact fractions. A coefficient of phi^(2k+1) is a polynomial in m (and n): its
terms m^j (and n^i m^j, i + j <= k) follow one another, i in the outer order.
"""
import pathlib
from fractions import Fraction
from math import factorial

HERE = pathlib.Path(__file__).resolve().parent.parent
ORDER = 5  # up to phi^(2 ORDER + 1)


def times(a, b):
    return [sum((a[i] * b[k - i] for i in range(k + 1)), Fraction(0)) for k in range(ORDER + 1)]


def powers_of_square_sine():
    """powers[j][k]: coefficient of t^(2k) in sin(t)^(2j); sin(t)^2 = (1 - cos 2t)/2."""
    square = [Fraction(0)] + [Fraction((-1) ** (k + 1) * 2 ** (2 * k - 1), factorial(2 * k)) for k in range(1, ORDER + 1)]
    result = [[Fraction(1)] + [Fraction(0)] * ORDER]
    for _ in range(ORDER):
        result.append(times(result[-1], square))
    return result


def binomial(exponent):
    """Coefficients of (1 - s)^exponent."""
    c = [Fraction(1)]
    for j in range(1, ORDER + 1):
        c.append(c[-1] * (j - 1 - exponent) / j)
    return c


POWERS = powers_of_square_sine()
INVERSE_ROOT, ROOT = binomial(Fraction(-1, 2)), binomial(Fraction(1, 2))


def one_parameter(c):
    return [c[j] * POWERS[j][k] / (2 * k + 1) for k in range(ORDER + 1) for j in range(k + 1)]


def two_parameters():
    return [INVERSE_ROOT[j] * POWERS[i + j][k] / (2 * k + 1)
            for k in range(ORDER + 1) for i in range(k + 1) for j in range(k + 1 - i)]


def rows(name, values):
    lines, row = [f"constexpr double {name}[] = {{"], ""
    for v in values:
        text = f"{v.numerator}.0 / {v.denominator}," if v.denominator != 1 else f"{v.numerator}.0,"
        if len(row) + len(text) + 5 > 118:
            lines.append("    " + row)
            row = text
        else:
            row = f"{row} {text}".strip()
    lines.append("    " + row)
    return lines + ["};"]


text = ["// SPDX-License-Identifier: Apache-2.0",
        f"// Series of F, E and Pi in odd powers of the amplitude up to {2 * ORDER + 1}. Written by make/elliptic_series.py.",
        f"constexpr int kSeriesOrder = {ORDER};",
        *rows("kSeriesF", one_parameter(INVERSE_ROOT)), *rows("kSeriesE", one_parameter(ROOT)),
        *rows("kSeriesPi", two_parameters())]
(HERE / "elliptic/elliptic_series_data.inc").write_text("\n".join(text) + "\n")
