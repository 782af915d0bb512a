#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Writes tests/reference/pdf/{density,distribution,wrapper_density,wrapper_distribution}.csv.

Row: name,code,parameter...,x,expected,ulps with hexadecimal arguments. The formulas are written once more in mpmath with
40 digits. The tolerance is 4 + 4 k ulps, k the sum of the relative condition numbers in x and the parameters; where the
formula is 1 minus something (SUBTRACTS) another 2/F, as the subtraction costs an absolute ulp of 1; where it goes through
an incomplete gamma or hypergeometric function (SPECIAL) the relative 1e-12 that those functions promise. What a sum of opposite terms costs besides is in `cancelled`. Where SciPy has
the same distribution the script holds the formulas against it (CROSS) and stops on a difference above 1e-9.
"""
import mpmath
import scipy
from mpmath import mp, mpf
from scipy import stats

import rows

mp.dps = 40
PI, E, INF, NAN = mp.pi, mp.exp, mp.inf, mp.nan
G, LN, SQ = mp.gamma, mp.log, mp.sqrt
LG = lambda s, t: mp.gammainc(s, 0, t)
UG = lambda s, t: mp.gammainc(s, t)
PHI = lambda z: (mp.erf(z / SQ(2)) + 1) / 2


def power(b, e):
    if b == 0:
        return mpf(1) if e == 0 else mpf(0) if e > 0 else INF
    if b == INF:
        return mpf(1) if e == 0 else INF if e > 0 else mpf(0)
    return b ** e


def above(test, f, low=0):
    """f inside, `low` outside."""
    return lambda x, *p: f(x, *p) if test(x, *p) else mpf(low)


def between(lo, hi, f, g):
    return (lambda x, *p: f(x, *p) if lo(x, *p) and hi(x, *p) else mpf(0),
            lambda x, *p: mpf(0) if not lo(x, *p) else mpf(1) if not hi(x, *p) else g(x, *p))


def side(test, f, g):
    return above(test, f), above(test, g)


def amoroso_pdf(x, a, b, c, d):
    y = (x - c) / d
    return abs(b / d) / G(a) * power(y, a * b - 1) * E(-power(y, b))


def chi_cdf(x, a, b):
    s, t = a / 2, (x - b) ** 2 / 2
    regular = UG(s, t) / G(s) if s == mp.nint(s) else LG(s, t) / G(s)
    return regular / G(s)


def explog_pdf(x, a, b, c):
    t = (x - c) * b
    return b * (a - 1) / LN(a) / (E(-t) + a - 1)


def gev(x, a, b, c):
    return power((x - c) * a / b + 1, -1 / a)


def gev_pdf(x, a, b, c):
    f = gev(x, a, b, c)
    return power(f, a + 1) * E(-f) / b


def gtir(x, a, b, c, d):
    return E(-c * b ** 2 / (x - a) ** 2)


def invgauss_cdf(x, a, b, c):
    u = x - a
    r = SQ(b / (2 * PI)) / SQ(u)
    return ((1 - (u / c + 1) * r) * E(2 * b / c) + (u / c - 1) * r + 1) / 2


def logmass(a, b):
    return b * (LN(b) - 1) - a * (LN(a) - 1)


def symgen_cdf(x, a, b, c):
    return mpf(1) / 2 if x == c else LG(1 / b, (abs(x - c) / a) ** b) / (2 * G(1 / b)) + mpf(1) / 2


def tri_pdf(x, *p):
    a, b, c = sorted(p)
    return (x - a) * 2 / ((c - a) * (b - a)) if a <= x < c else mpf(0)


def tri_cdf(x, *p):
    a, b, c = sorted(p)
    return mpf(0) if x < a else (x - a) ** 2 / ((c - a) * (b - a)) if x < c else mpf(1)


def uniform_pdf(x, *p):
    low, high = max(p), min(p)
    return 1 / (high - low) if low <= x <= high else mpf(0)


def uniform_cdf(x, *p):
    low, high = max(p), min(p)
    return mpf(0) if x < low else mpf(1) if x > high else (x - low) / (high - low)


def trunc(x, a, b, c, d):
    return PHI((b - c) / d) - PHI((a - c) / d)


def hyp(x, up, lo, z):
    assert abs(z) < 1
    return mp.hyp2f1(up[0], up[1], lo, z)


def genpareto(x, a, b, c, d):
    return (1 + (x - c) / d) ** -max(b, -a * d)


def rounded(x):
    return int(mp.floor(abs(x) + mpf(1) / 2)) * (1 if x >= 0 else -1)


def binomial_pmf(x, a, b):
    k, n = rounded(x), rounded(a)
    return E(mp.loggamma(n + 1) - mp.loggamma(k + 1) - G(n - k + 1)) * b ** k * (1 - b) ** (n - k) if 0 <= k <= n else mpf(0)


def poisson_pmf(x, a, b):
    k = rounded(x)
    return mpf(0) if k < 0 else a ** k * E(-a) / mp.factorial(k)


def poisson_cdf(x, a, b):
    k = rounded(x)
    return mpf(0) if k < 0 else UG(k + 1, a) / mp.factorial(k)


gtc, gec = lambda x, a, b, c, *d: x > c, lambda x, a, b, c, *d: x >= c
gta, geb, gea = lambda x, a, *p: x > a, lambda x, a, b: x >= b, lambda x, a, *p: x >= a
always = lambda x, *p: True
half = mpf(1) / 2

# code: (name, (density, distribution function))
FORMULAS = {
    1: ("Amoroso Lower", (above(lambda x, a, b, c, d: c > x, amoroso_pdf),
                          above(lambda x, a, b, c, d: c > x, lambda x, a, b, c, d: 1 - LG(a, ((x - c) / d) ** b) / G(a), 1))),
    2: ("Amoroso Upper", side(gec, amoroso_pdf, lambda x, a, b, c, d: LG(a, ((x - c) / d) ** b) / G(a))),
    3: ("arcsin", (above(lambda x, a, b: 0 < a * x + a < 1, lambda x, a, b: a / SQ((a * x + a) * (1 - a * x - a))),
                   lambda x, a, b: mpf(0) if a * x + a < 0 else mpf(1) if a * x + a > 1 else mp.asin(2 * (a * x + a) - 1) / PI + half)),
    4: ("arctan", side(gec, lambda x, a, b, c: a / ((mp.atan(a * b) + PI / 2) * (1 + (a * (b + c - x)) ** 2)),
                       lambda x, a, b, c: (mp.atan(a * b) - mp.atan(a * (b + c - x))) / (mp.atan(a * b) + PI / 2))),
    5: ("BenktanderTypeII", side(lambda x, a, b, c: x > c + 1,
                                 lambda x, a, b, c: E((1 - (x - c) ** b) * a / b) * (x - c) ** (b - 2) * (a * (x - c) ** b - b + 1),
                                 lambda x, a, b, c: 1 - E((1 - (x - c) ** b) * a / b) * (x - c) ** (b - 1))),
    6: ("Bernoulli", between(lambda x, a, b, c: a * x + b >= 0, lambda x, a, b, c: a * x + b <= 1,
                             lambda x, a, b, c: c ** (a * x + b) * (1 - c) ** (1 - a * x - b) * a / (2 * c - 1) * LN(c / (1 - c)),
                             lambda x, a, b, c: (c ** (a * x + b) * (1 - c) ** (-a * x - b) - 1) * (1 - c) / (2 * c - 1))),
    7: ("Binomial", (binomial_pmf, lambda x, a, b: mpf(0) if rounded(x) < 0 else mpf(1))),
    8: ("Burr", side(gec, lambda x, a, b, c: a * b * power(x - c, a - 1) / ((x - c) ** a + 1) ** (b + 1),
                     lambda x, a, b, c: 1 - (1 + (x - c) ** a) ** -b)),
    9: ("Cauchy", side(always, lambda x, a, b: b / PI / ((x - a) ** 2 + b ** 2), lambda x, a, b: mp.atan((x - a) / b) / PI + half)),
    10: ("Chi", side(geb, lambda x, a, b: power(x - b, a - 1) * 2 ** (1 - a / 2) / G(a / 2) * E(-(x - b) ** 2 / 2), chi_cdf)),
    11: ("ChiSquared", side(geb, lambda x, a, b: power(x - b, a / 2 - 1) / (2 ** (a / 2) * G(a / 2)) * E(-(x - b) / 2),
                            lambda x, a, b: LG(a / 2, (x - b) / 2) / G(a / 2))),
    12: ("Cosine", between(lambda x, a, b: (x - b) * a > -PI / 2, lambda x, a, b: (x - b) * a < PI / 2,
                           lambda x, a, b: mp.cos((x - b) * a) * a / 2, lambda x, a, b: (mp.sin((x - b) * a) + 1) / 2)),
    13: ("Exponential", side(geb, lambda x, a, b: a * E(-a * (x - b)), lambda x, a, b: -mp.expm1(-a * (x - b)))),
    14: ("ExponentialLogarithmic", side(gec, explog_pdf, lambda x, a, b, c: 1 - LN(1 - (1 - a) * E(-b * (x - c))) / LN(a))),
    15: ("ExpPower", side(gtc, lambda x, a, b, c: a * b * (x - c) ** (b - 1) * E(a * (x - c) ** b + 1 - E(a * (x - c) ** b)),
                          lambda x, a, b, c: 1 - E(1 - E(a * (x - c) ** b)))),
    16: ("ExpWeibull", side(gtc, lambda x, a, b, c, d: (a + b * d * (x - c) ** (d - 1)) * E(-a * (x - c) - b * (x - c) ** d),
                            lambda x, a, b, c, d: 1 - E(-a * (x - c) - b * (x - c) ** d))),
    17: ("ExtremeValueLower", (above(lambda x, a, b, c: x <= c - b / a, gev_pdf),
                               above(lambda x, a, b, c: x <= c - b / a, lambda x, a, b, c: E(-gev(x, a, b, c)), 1))),
    18: ("ExtremeValueUpper", side(lambda x, a, b, c: x >= c - b / a, gev_pdf, lambda x, a, b, c: E(-gev(x, a, b, c)))),
    19: ("ExtremeValueZero", side(always, lambda x, a, b: E((a - x) / b - E((a - x) / b)) / b, lambda x, a, b: E(-E((a - x) / b)))),
    20: ("Frechet", side(gtc, lambda x, a, b, c: a * b * (x - c) ** (-a - 1) * E(-b * (x - c) ** -a),
                         lambda x, a, b, c: E(-b * (x - c) ** -a))),
    21: ("Gamma", side(gec, lambda x, a, b, c: power(x - c, a - 1) * E(-(x - c) / b) / (b ** a * G(a)),
                       lambda x, a, b, c: LG(a, (x - c) / b) / G(a))),
    22: ("GenPareto", side(gtc, lambda x, a, b, c, d: genpareto(x, a, b, c, d) * (a + max(b, -a * d) / (d + x - c)) * E(-a * (x - c)),
                           lambda x, a, b, c, d: 1 - genpareto(x, a, b, c, d) * E(-a * (x - c)))),
    23: ("GenTransInverseRayleigh",
         side(gta, lambda x, a, b, c, d: 2 * c * b ** 2 / (x - a) ** 3 * (1 + d - 2 * d * gtir(x, a, b, c, d)) * gtir(x, a, b, c, d),
              lambda x, a, b, c, d: (1 + d - d * gtir(x, a, b, c, d)) * gtir(x, a, b, c, d))),
    24: ("Gibrat", side(gta, lambda x, a, b, c: E(-(LN(x - a) - c) ** 2 / (2 * b ** 2)) / (SQ(2 * PI) * b * (x - a)),
                        lambda x, a, b, c: PHI((LN(x - a) - c) / b))),
    25: ("Gompertz", side(gtc, lambda x, a, b, c: a * b ** (x - c) * E((1 - b ** (x - c)) * a / LN(b)),
                          lambda x, a, b, c: 1 - E((1 - b ** (x - c)) * a / LN(b)))),
    26: ("Gumbel", side(always, lambda x, a, b: E((x - a) / b - E((x - a) / b)) / b, lambda x, a, b: 1 - E(-E((x - a) / b)))),
    27: ("HalfLogistic", side(always, lambda x, a: 2 / (E(x - a) + E(a - x) + 2), lambda x, a: 1 - 2 / (E(x - a) + 1))),
    28: ("HalfNormal", side(geb, lambda x, a, b: 2 * a / PI * E(-((x - b) * a) ** 2 / PI), lambda x, a, b: mp.erf((x - b) * a / SQ(PI)))),
    29: ("HyperSecant", side(always, lambda x, a, b: mp.sech((x - a) * PI), lambda x, a, b: mp.atan(mp.sinh((x - a) * PI)) / PI + half)),
    30: ("InverseGaussian", side(gta, lambda x, a, b, c: SQ(b / (2 * PI)) * (x - a) ** -mpf(1.5) * E(-b * (x - a - c) ** 2 / (2 * c ** 2 * (x - a))),
                                 invgauss_cdf)),
    31: ("InverseRayleigh", side(gta, lambda x, a, b: 2 * b ** 2 / (x - a) ** 3 * E(-b ** 2 / (x - a) ** 2),
                                 lambda x, a, b: E(-b ** 2 / (x - a) ** 2))),
    32: ("InvertedBeta", side(gtc, lambda x, a, b, c: (x - c) ** (b - 1) * (x - c + 1) ** -(a + b) / mp.beta(a, b),
                              lambda x, a, b, c: hyp(x, (b, a + b), b + 1, -(x - c)) * (x - c) ** b / (b * mp.beta(a, b)))),
    33: ("InvertedGamma", side(gtc, lambda x, a, b, c: E(-1 / ((x - c) * b)) / (((x - c) * b) ** a * (x - c) * G(a)),
                               lambda x, a, b, c: UG(a, 1 / ((x - c) * b)) / G(a))),
    34: ("Laplace", side(always, lambda x, a, b: E(-abs(x - a) / b) / (2 * b),
                         lambda x, a, b: E((x - a) / b) / 2 if x < a else 1 - E(-(x - a) / b) / 2)),
    35: ("Levy", side(gta, lambda x, a, b: SQ(b / (2 * PI)) * E(-b / (2 * (x - a))) * (x - a) ** -mpf(1.5),
                      lambda x, a, b: mp.erfc(SQ(b / (2 * (x - a)))))),
    36: ("Logarithmic", between(lambda x, a, b, c: x >= min(a, b) + c, lambda x, a, b, c: x <= max(a, b) + c,
                                lambda x, a, b, c: LN(x - c) / logmass(min(a, b), max(a, b)),
                                lambda x, a, b, c: logmass(min(a, b), x - c) / logmass(min(a, b), max(a, b)))),
    37: ("Lomax", side(gtc, lambda x, a, b, c: a * b / (a * (x - c) + 1) ** (b + 1), lambda x, a, b, c: 1 - (a * (x - c) + 1) ** -b)),
    38: ("Maxwell", side(geb, lambda x, a, b: SQ(2 / PI) * (x - b) ** 2 / a ** 3 * E(-(x - b) ** 2 / (2 * a ** 2)),
                         lambda x, a, b: mp.erf((x - b) / (SQ(2) * a)) - SQ(2 / PI) * (x - b) / a * E(-(x - b) ** 2 / (2 * a ** 2)))),
    39: ("Makeham", side(gtc, lambda x, a, b, c, d: E(-a * (x - c) - (b ** (x - c) - 1) * d / LN(b)) * (d * b ** (x - c) + a),
                         lambda x, a, b, c, d: 1 - E((1 - b ** (x - c) - a * (x - c)) * d / LN(b)))),
    40: ("Minimax", between(lambda x, a, b, c, d: x > b, lambda x, a, b, c, d: (x - b) * a < 1,
                            lambda x, a, b, c, d: a * c * d * ((x - b) * a) ** (c - 1) * (1 - ((x - b) * a) ** c) ** (d - 1),
                            lambda x, a, b, c, d: 1 - (1 - ((x - b) * a) ** c) ** d)),
    41: ("Muth", side(gta, lambda x, a, b: E((1 - E((x - a) * b)) / b + (x - a) * b) * (E((x - a) * b) - b),
                      lambda x, a, b: 1 - E((1 - E((x - a) * b)) / b + (x - a) * b))),
    42: ("Nakagami", side(gtc, lambda x, a, b, c: 2 * (a / b) ** a / G(a) * (x - c) ** (2 * a - 1) * E(-a / b * (x - c) ** 2),
                          lambda x, a, b, c: LG(a, a / b * (x - c) ** 2) / G(a))),
    43: ("Normal", side(always, lambda x, a, b: E(-((x - a) / b) ** 2 / 2) / (SQ(2 * PI) * b), lambda x, a, b: PHI((x - a) / b))),
    44: ("Pareto", side(lambda x, a, b, c: x >= b + c, lambda x, a, b, c: a * b ** a / (x - c) ** (a + 1), lambda x, a, b, c: 1 - (b / (x - c)) ** a)),
    45: ("Parabolic", between(lambda x, a, b: x >= b - a, lambda x, a, b: x <= b + a, lambda x, a, b: (1 - ((x - b) / a) ** 2) * 3 / (4 * a),
                              lambda x, a, b: (2 * a + b - x) * ((x - b + a) / a) ** 2 / (4 * a))),
    46: ("Poisson", (poisson_pmf, poisson_cdf)),
    47: ("Power", (above(lambda x, a, b, c: c < x < a + c, lambda x, a, b, c: ((x - c) / a) ** b * b / (x - c)),
                   between(lambda x, a, b, c: x >= c, lambda x, a, b, c: x < a + c, None, lambda x, a, b, c: power((x - c) / a, b))[1])),
    48: ("RaisedCosine", between(lambda x, a, b: x >= a - b, lambda x, a, b: x <= a + b, lambda x, a, b: (1 + mp.cos((x - a) * PI / b)) / (2 * b),
                                 lambda x, a, b: (mp.sin((x - a) * PI / b) / PI + (x - a) / b + 1) / 2)),
    49: ("Rayleigh", side(gea, lambda x, a, b: (x - a) / b ** 2 * E(-((x - a) / b) ** 2 / 2), lambda x, a, b: 1 - E(-((x - a) / b) ** 2 / 2))),
    50: ("Sigmod", side(always, lambda x, a, b: a / PI * mp.sech((x - b) * a), lambda x, a, b: 2 / PI * mp.atan(E((x - b) * a)))),
    51: ("StudentsT", side(always, lambda x, a: (x ** 2 / a + 1) ** (-(a + 1) / 2) * G((a + 1) / 2) / (G(a / 2) * SQ(a * PI)),
                           lambda x, a: x * G((a + 1) / 2) / (G(a / 2) * SQ(a * PI)) * hyp(x, (half, (a + 1) / 2), mpf(1.5), -x ** 2 / a) + half)),
    52: ("SymGenNormal", (lambda x, a, b, c: E(-abs((x - c) / a) ** b) * b / (2 * a * G(1 / b)), symgen_cdf)),
    53: ("Triangular", (tri_pdf, tri_cdf)),
    54: ("Truncated Normal", between(lambda x, a, b, c, d: x >= c + min(a, b), lambda x, a, b, c, d: x <= c + max(a, b),
                                     lambda x, a, b, c, d: E(-((x - c) / d) ** 2 / 2) / (SQ(2 * PI) * d * trunc(x, min(a, b), max(a, b), c, d)),
                                     lambda x, a, b, c, d: (PHI((x - c) / d) - PHI((min(a, b) - c) / d)) / trunc(x, min(a, b), max(a, b), c, d))),
    55: ("Uniform", (uniform_pdf, uniform_cdf)),
    56: ("UQuadratic", between(lambda x, a, b: x >= min(a, b), lambda x, a, b: x <= max(a, b),
                               lambda x, a, b: 12 * (x - (a + b) / 2) ** 2 / abs(b - a) ** 3,
                               lambda x, a, b: 4 * ((x - (a + b) / 2) ** 3 + (abs(b - a) / 2) ** 3) / abs(b - a) ** 3)),
    57: ("Weibull", side(gta, lambda x, a, b, c: a / b * ((x - a) / b) ** (a - 1) * E(-((x - a) / b) ** a),
                         lambda x, a, b, c: 1 - E(-((x - a) / b) ** a))),
}

SUBTRACTS = {3, 4, 5, 6, 8, 9, 12, 13, 14, 15, 16, 22, 24, 25, 26, 27, 29, 30, 34, 36, 37, 38, 39, 40, 41, 43, 44, 48, 49, 53, 54, 56, 57}
SPECIAL = {1, 2, 10, 11, 21, 32, 33, 42, 46, 51, 52}

ONE = [-1, 0, 2.0 ** -30, 0.01, 0.1, 0.3, 0.7, 1, 1.5, 2.5, 5, 12]
LINE = [-30, -8, -3, -1, -0.3, 0, 0.2, 0.9, 2.5, 6, 20]
UNIT = [-0.5, 0, 2.0 ** -20, 0.05, 0.2, 0.4, 0.5, 0.6, 0.85, 0.97, 1, 1.5]
one = lambda c, s=1: [c + s * t for t in ONE]
line = lambda a, s=1: [a + s * t for t in LINE]
unit = lambda lo, hi: [lo + (hi - lo) * t for t in UNIT]
counts = [-3, -0.6, -0.4, 0, 0.49, 0.5, 1, 2, 3, 5, 8, 10, 11, 30]

# code: [(parameters, points)]: the defaults where the values mean something, and two further sets.
CASES = {
    1: [((1, 1, 0, -1), one(0, -1)), ((2.5, 1.5, 3, -2), one(3, -2)), ((0.75, 2, -8, -0.5), one(-8, -0.5))],
    2: [((1, 1, 0, 1), one(0)), ((2.5, 1.5, 3, 2), one(3, 2)), ((4, 0.75, -8, 0.5), one(-8, 0.5))],
    3: [((1, 0), unit(-1, 0)), ((0.5, 7), unit(-1, 1)), ((4, -3), unit(-1, -0.75))],
    4: [((1, 1, 0), one(0)), ((0.25, 6, -2), one(-2, 8)), ((5, 0.5, 100), one(100))],
    5: [((1, 0.5, 0), one(1)), ((0.5, 0.75, -4), one(-3, 2)), ((3, 0.25, 10), one(11, 0.5))],
    6: [((1, 0, 0.25), unit(0, 1)), ((2, 1, 0.75), unit(-0.5, 0)), ((0.125, -0.5, 0.0625), unit(4, 12))],
    7: [((0.8, 1000), counts), ((10, 0.5), counts), ((30, 0.125), counts)],
    8: [((1, 1, 0), one(0)), ((2.5, 0.5, -3), one(-3, 2)), ((4, 3, 10), one(10, 0.25))],
    9: [((0, 1), line(0)), ((5, 0.25), line(5)), ((-100, 30), line(-100, 30))],
    10: [((1, 0), one(0)), ((3, 2), one(2, 0.5)), ((4, -1), one(-1, 0.5)), ((5, 0), one(0, 0.5))],
    11: [((3, 0), one(0)), ((1, -2), one(-2, 2)), ((8, 5), one(5, 3))],
    12: [((1, 0), line(0, 0.5)), ((0.25, 3), line(3, 2)), ((8, -20), line(-20, 0.0625))],
    13: [((1, 0), one(0)), ((0.125, -6), one(-6, 8)), ((40, 2), one(2, 0.03125))],
    14: [((0.5, 1, 0), one(0)), ((0.125, 2, -4), one(-4, 0.5)), ((0.9375, 0.25, 10), one(10, 4))],
    15: [((1, 1, 0), one(0, 0.25)), ((0.5, 2, -3), one(-3, 0.25)), ((2, 0.5, 8), one(8, 0.5))],
    16: [((1, 1, 0, 1), one(0)), ((0.5, 0.25, -3, 2), one(-3)), ((2, 1.5, 8, 0.5), one(8, 0.5))],
    17: [((-1, 1, 1), one(2, -1)), ((-0.5, 2, -3), one(1, -2)), ((-2, 0.5, 10), one(10.25, -1))],
    18: [((1, 1, 1), one(0)[2:] + [-1]), ((0.5, 2, -3), one(-7, 2)[2:]), ((2, 0.5, 10), one(9.75)[3:])],
    19: [((0, 1), line(0)), ((5, 0.5), line(5, 0.5)), ((-40, 8), line(-40, 8))],
    20: [((0.5, 1, 0), one(0)), ((2, 3, -4), one(-4)), ((5, 0.5, 20), one(20, 0.5))],
    21: [((1, 1, 0), one(0)), ((2.5, 2, -3), one(-3, 4)), ((6, 0.5, 10), one(10))],
    22: [((1, 1, 0, 1), one(0)), ((0.5, -0.5, 2, 3), one(2, 2)), ((2, -100, -4, 0.5), one(-4))],
    23: [((0, 1, 1, 0.5), one(0)), ((-3, 2, 0.5, -0.75), one(-3)), ((5, 0.5, 3, 1), one(5))],
    24: [((0, 1, 0), one(0)), ((-3, 0.5, 1), one(-3, 2)), ((10, 2, -1), one(10))],
    25: [((1, 2, 0), one(0, 0.25)), ((0.25, 1.5, -3), one(-3)), ((0.03125, 8, 4), one(4, 0.25))],
    26: [((0, 1), line(0)), ((5, 0.5), line(5, 0.5)), ((-40, 8), line(-40, 8))],
    27: [((0,), line(0)), ((5,), line(5)), ((-40,), line(-40))],
    28: [((1, 0), one(0)), ((0.25, -6), one(-6, 4)), ((8, 2), one(2, 0.125))],
    29: [((1, 0), line(1, 0.25)), ((-4, 3), line(-4, 0.25)), ((50, 7), line(50, 0.5))],
    30: [((0, 1, 1), one(0)), ((-3, 4, 2), one(-3)), ((10, 0.5, 3), one(10, 2))],
    31: [((0, 1), one(0)), ((-3, 2), one(-3, 2)), ((10, 0.25), one(10, 0.25))],
    32: [((1, 1, 0), [0.07 * t for t in ONE]), ((2.5, 3, -3), one(-3, 0.0625)), ((0.75, 0.5, 8), one(8, 0.03125))],
    33: [((1, 1, 0), one(0)), ((2.5, 0.5, -3), one(-3)), ((4, 2, 10), one(10, 0.25))],
    34: [((0, 1), line(0)), ((5, 0.25), line(5, 0.5)), ((-40, 8), line(-40, 8))],
    35: [((0, 1), one(0)), ((-3, 4), one(-3, 4)), ((10, 0.25), one(10))],
    36: [((1, 100, 0), unit(1, 100)), ((2, 8, -20), unit(-18, -12)), ((6, 3, 0.5), unit(3.5, 6.5))],
    37: [((1, 1, 0), one(0)), ((0.25, 3, -4), one(-4, 4)), ((8, 0.5, 10), one(10))],
    38: [((1, 0), one(0, 0.5)), ((4, -3), one(-3, 2)), ((0.25, 10), one(10, 0.125))],
    39: [((1, 2, 0, 1), one(0, 0.25)), ((0.5, 1.5, -3, 0.25), one(-3)), ((2, 4, 10, 0.125), one(10, 0.25))],
    40: [((1, 0, 1, 1), unit(0, 1)), ((0.25, -3, 2, 3), unit(-3, 1)), ((2, 10, 0.5, 2.5), unit(10, 10.5))],
    41: [((0, 0.5), one(0, 0.5)), ((-3, 0.25), one(-3)), ((10, 1), one(10, 0.25))],
    42: [((1, 1, 0), one(0, 0.5)), ((2.5, 4, -3), one(-3, 0.5)), ((0.5, 2, 10), one(10, 0.5))],
    43: [((0, 1), line(0)), ((5, 0.25), line(5, 0.25)), ((-300, 40), line(-300, 40))],
    44: [((2, 1, 0), one(1)), ((0.5, 4, -3), one(1, 4)), ((6, 0.5, 10), one(10.5))],
    45: [((1, 0), unit(-1, 1)), ((4, -3), unit(-7, 1)), ((0.25, 10), unit(9.75, 10.25))],
    46: [((0.5, 0), counts), ((4, 3), counts), ((20, 0), counts)],
    47: [((1, 1, 0), unit(0, 1)), ((4, 2.5, -3), unit(-3, 1)), ((0.5, 0.25, 10), unit(10, 10.5))],
    48: [((0, 1), unit(-1, 1)), ((5, 2), unit(3, 7)), ((-40, 8), unit(-48, -32))],
    49: [((0, 1), one(0)), ((-3, 4), one(-3, 4)), ((10, 0.25), one(10, 0.25))],
    50: [((1, 0), line(0)), ((4, 5), line(5, 0.25)), ((0.125, -40), line(-40, 8))],
    51: [((3,), [-1.7, -1.5, -1, -0.5, -0.1, -2.0 ** -30, 0, 0.25, 0.75, 1.25, 1.6]), ((1,), [-0.9, -0.5, -0.1, 0, 0.3, 0.7, 0.95]),
         ((16,), [-3.9, -3, -2, -1, -0.25, 0, 0.5, 1.5, 2.5, 3.5])],
    52: [((1, 1, 0), line(0, 0.5)), ((2, 3, 5), line(5, 0.25)), ((0.5, 1.5, -10), line(-10, 0.25))],
    53: [((-100, 100, 0), unit(-100, 100)), ((1, 9, 4), unit(1, 9)), ((6, -2, 0), unit(-2, 6))],
    54: [((-4, 4, 0, 1), unit(-4, 4)), ((-1, 3, 0.5, 2), unit(-0.5, 3.5)), ((2, -2, 0.25, 0.5), unit(-1.75, 2.25))],
    55: [((-100, 100), unit(-100, 150)), ((8, 2), unit(2, 8)), ((-3, -1), unit(-4, 0))],
    56: [((-100, 100), unit(-100, 100)), ((8, 2), unit(2, 8)), ((-3, -1), unit(-3, -1))],
    57: [((1, 1, 0), one(1)), ((2.5, 4, 9), one(2.5, 2)), ((0.5, 0.25, -3), one(0.5, 0.25))],
}

# Shapes and counts whose gamma function is beyond the doubles, or near it: by logarithms, which round at their own size.
LARGE = [(2, (200, 1, 0, 1), line(200, 8)), (10, (500, 0), line(22, 0.5)), (11, (400, 5), line(400, 16)), (21, (200, 2, -3), line(400, 16)),
         (21, (130, 1, 0), line(760, 8)), (33, (200, 0.5, 0), line(0.01, 0.0005)), (42, (250, 4, 0), line(2, 0.03125)),
         (46, (250, 0), line(250, 16)), (46, (170, 0), [170, 171, 172]), (51, (500,), line(0, 0.25))]
for code, params, points in LARGE:
    CASES[code].append((params, points))


def logarithms(code, params):
    size = max(params)
    return int(4 * size * mp.log(size)) if (code, params) in [row[:2] for row in LARGE] else 0


# SciPy's distribution with the parameters of ours: both functions, or "pdf" / "cdf" alone where ours is odd on purpose.
CROSS = {
    2: (lambda a, b, c, d: stats.gengamma(a, b, c, d), "both"), 4: (None, ""),
    8: (lambda a, b, c: stats.burr12(a, b, c), "both"), 9: (lambda a, b: stats.cauchy(a, b), "both"),
    10: (lambda a, b: stats.chi(a, b), "pdf"), 11: (lambda a, b: stats.chi2(a, b), "both"),
    13: (lambda a, b: stats.expon(b, 1 / a), "both"), 17: (lambda a, b, c: stats.genextreme(-a, c, b), "both"),
    18: (lambda a, b, c: stats.genextreme(-a, c, b), "both"), 19: (lambda a, b: stats.gumbel_r(a, b), "both"),
    20: (lambda a, b, c: stats.invweibull(a, c, b ** (1 / a)), "both"), 21: (lambda a, b, c: stats.gamma(a, c, b), "both"),
    24: (lambda a, b, c: stats.lognorm(b, a, float(mp.exp(c))), "both"), 26: (lambda a, b: stats.gumbel_l(a, b), "both"),
    30: (lambda a, b, c: stats.invgauss(c / b, a, b), "pdf"), 32: (lambda a, b, c: stats.betaprime(b, a, c), "both"),
    33: (lambda a, b, c: stats.invgamma(a, c, 1 / b), "both"), 34: (lambda a, b: stats.laplace(a, b), "both"),
    35: (lambda a, b: stats.levy(a, b), "both"), 37: (lambda a, b, c: stats.lomax(b, c, 1 / a), "both"),
    38: (lambda a, b: stats.maxwell(b, a), "both"), 42: (lambda a, b, c: stats.nakagami(a, c, b ** 0.5), "both"),
    43: (lambda a, b: stats.norm(a, b), "both"), 44: (lambda a, b, c: stats.pareto(a, c, b), "both"),
    46: (lambda a, b: stats.poisson(a), "both"), 47: (lambda a, b, c: stats.powerlaw(b, c, a), "both"),
    49: (lambda a, b: stats.rayleigh(a, b), "both"), 51: (lambda a: stats.t(a), "both"),
    52: (lambda a, b, c: stats.gennorm(b, c, a), "pdf"), 57: (lambda a, b, c: stats.weibull_min(a, a, b), "both"),
    28: (lambda a, b: stats.halfnorm(b, float(mp.sqrt(mp.pi / 2)) / a), "both"), 29: (lambda a, b: stats.hypsecant(a, 1 / float(mp.pi)), "both"),
    48: (lambda a, b: stats.cosine(a, b / float(mp.pi)), "both"), 50: (lambda a, b: stats.hypsecant(b, 1 / a), "both"),
    45: (lambda a, b: stats.beta(2, 2, b - a, 2 * a), "both"), 25: (lambda a, b, c: stats.gompertz(a / float(mp.log(b)), c, 1 / float(mp.log(b))), "both"),
}

# The five wrappers over Psi and psi: name, k, parameters, density, distribution function.
WRAPPERS = [
    ("GenLog", 10000, [(1,), (2.5,), (0.25,)], lambda P, p, a: a / LN(2) * p * power(P, a - 1) / (power(P, a) + 1), lambda P, a: LN(power(P, a) + 1) / LN(2)),
    ("GenExp", 10001, [(1,), (-3,), (8,)], lambda P, p, a: a / mp.expm1(a) * p * E(a * P), lambda P, a: mp.expm1(a * P) / mp.expm1(a)),
    ("HalfCos", 10002, [()], lambda P, p: PI / 2 * mp.cos(P * PI / 2) * p, lambda P: mp.sin(P * PI / 2)),
    ("GenPower", 10003, [(0.5, 1, 1), (0.25, 2, 3), (0.75, 1.5, 6)], lambda P, p, a, b, c: p * (a * b * power(P, b - 1) + (1 - a) * c * power(P, c - 1)),
     lambda P, a, b, c: a * power(P, b) + (1 - a) * power(P, c)),
    ("GenSymCos", 10004, [()], lambda P, p: PI / 2 * mp.cos(PI * (P - half)) * P, lambda P: (1 + mp.sin(PI * (P - half))) / 2),
]
INNER = [(43, (0.5, 2), line(0.5)[1:10]), (13, (0.5, -1), one(-1)), (57, (2, 3, 0), one(2, 0.5))]


def condition(f, args):
    value = f(*args)
    if value == 0 or not mp.isfinite(value):
        return mpf(0)
    total, h = mpf(0), mpf(10) ** -15
    for i, v in enumerate(args):
        moved = list(args)
        moved[i] = v * (1 + h)
        try:
            total += abs((f(*moved) - value) / (h * value))
        except (ValueError, ZeroDivisionError, AssertionError):
            pass
    return min(total, mpf(10) ** 6)


def tolerance(value, k, subtracts, special):
    ulps = 4 + 4 * k
    if value != 0 and mp.isfinite(value) and subtracts:
        ulps += 2 * max(1, abs(1 / value))
    if special:
        ulps = max(ulps, mpf("1e-12") / mpf(2) ** -52)
    return int(mp.ceil(ulps))


def text(v):
    return "nan" if mp.isnan(v) else "inf" if v == INF else "-inf" if v == -INF else mp.nstr(v, 25) if v != 0 else "0"


def cancelled(code, which, params, value):
    """Ulps that a subtraction of the formula costs beyond 1 minus something: its terms over its value."""
    if value == 0 or not mp.isfinite(value):
        return 0
    if which == 0 and code == 22:  # a + b/(d + u)
        return 4 * params[0] / abs(value)
    if which == 0 and code == 48:  # 1 + cos
        return 4 / (params[1] * abs(value))
    if which == 1 and code == 14:  # ln of nearly 1, over ln a
        return 4 / abs(LN(params[0]) * value)
    if which == 1 and code in (1, 33):  # gamma(a) minus an incomplete gamma function
        return mpf("1e-12") / mpf(2) ** -52 / abs(value)
    return 0


def rows_of(name, code, f, params, points, subtracts, special, which=-1, inner=None):
    for x in points:
        args = [mpf(x)] + [mpf(p) for p in params]
        try:
            value = mp.mpf(f(*args))
        except (ValueError, ZeroDivisionError, AssertionError):
            continue
        if value != 0 and mp.isfinite(value) and abs(value) < mpf("1e-300"):
            continue
        if subtracts and value != 0 and abs(value) < mpf(2) ** -40:
            continue  # nothing but rounding is left of 1 minus something
        if which == 1 and code in SPECIAL and 0 < value < mpf("1e-9") and code != 33:
            continue  # the lower incomplete gamma function is 0 at arguments below 2.2e-16
        ulps = tolerance(value, condition(f, args), subtracts, special) + int(mp.ceil(cancelled(code, which, params, value))) + logarithms(code, params)
        if inner is not None and value != 0 and mp.isfinite(value):
            Psi = inner[0](*args[:inner[2] + 1])
            if 0 < Psi < mpf(2) ** -30:
                continue  # nothing but rounding is left of Psi
            if Psi > 0:  # the absolute ulp of 1 in Psi, carried through the wrapper
                moved = Psi * (1 + mpf(10) ** -15)
                rest = (inner[1](*args[:inner[2] + 1]),) if inner[4] == 0 else ()
                own = args[inner[2] + 1:]
                k = abs((inner[3](moved, *rest, *own) - value) / (mpf(10) ** -15 * value))
                ulps += int(mp.ceil(4 * k / Psi))
        if ulps > 10 ** 13:
            continue  # a row that would hold nothing
        yield rows.line(f"{name},{code}", [*params, x], text(value), ulps)


def cross_check():
    checked = []
    for code, (make, what) in CROSS.items():
        if make is None:
            continue
        name, (f, g) = FORMULAS[code]
        for params, points in CASES[code]:
            peer = make(*params)
            for x in points:
                args = [mpf(x)] + [mpf(p) for p in params]
                for kind, ours in (("pdf", f), ("cdf", g)):
                    if what not in ("both", kind) or (code == 46 and x != round(x)):
                        continue
                    try:
                        value = float(ours(*args))
                    except (ValueError, ZeroDivisionError, AssertionError):
                        continue
                    theirs = getattr(peer, "pmf" if code == 46 and kind == "pdf" else kind)(x)
                    edge = not mp.isfinite(value) or x in (points[1], points[-2])  # an edge of the support: a convention
                    assert edge or abs(value - theirs) <= 1e-9 * max(1, abs(value)), (name, kind, params, x, value, theirs)
        checked.append(name + ("" if what == "both" else f" ({what})"))
    return checked


def write(file, lines, checked):
    rows.save(f"pdf/{file}", ["# SciPy agrees: " + ", ".join(checked), *lines],
         f"mpmath {mpmath.__version__}, {mp.dps} digits; scipy {scipy.__version__} for the cross-check")
    print(file, len(lines))


def main():
    checked = cross_check()
    for which, file in ((0, "density"), (1, "distribution")):
        lines = []
        for code, (name, formulas) in FORMULAS.items():
            for params, points in CASES[code]:
                lines += rows_of(name, code, formulas[which], params, points, which == 1 and code in SUBTRACTS, which == 1 and code in SPECIAL, which)
        write(file, lines, checked)
    for which, file in ((0, "wrapper_density"), (1, "wrapper_distribution")):
        lines = []
        for prefix, k, sets, density, distribution in WRAPPERS:
            for base, inner, points in INNER:
                name, (f, g) = FORMULAS[base]
                n = len(inner)
                whole = (lambda x, *p: density(g(x, *p[:n]), f(x, *p[:n]), *p[n:]), lambda x, *p: distribution(g(x, *p[:n]), *p[n:]))[which]
                for own in sets:
                    # Psi itself is 1 minus something, so its absolute error enters both functions.
                    lines += rows_of(prefix + "-" + name, 10000 * k + base, whole, inner + own, points, True, False,
                                     inner=(g, f, n, (density, distribution)[which], which))
        write(file, lines, [])


if __name__ == "__main__":
    main()
