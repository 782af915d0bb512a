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

# Shapes and counts whose gamma function is beyond the doubles, or near it: by logarithms, which round at their own size.
LARGE = {(2, 200), (10, 500), (11, 400), (21, 200), (21, 130), (33, 200), (42, 250), (46, 250), (46, 170), (51, 500)}


def logarithms(code, params):
    size = max(params)
    return int(4 * size * mp.log(size)) if (code, params[0]) in LARGE else 0


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

# The five wrappers over Psi and psi by k: density and distribution function.
WRAPPERS = {
    10000: (lambda P, p, a: a / LN(2) * p * power(P, a - 1) / (power(P, a) + 1), lambda P, a: LN(power(P, a) + 1) / LN(2)),
    10001: (lambda P, p, a: a / mp.expm1(a) * p * E(a * P), lambda P, a: mp.expm1(a * P) / mp.expm1(a)),
    10002: (lambda P, p: PI / 2 * mp.cos(P * PI / 2) * p, lambda P: mp.sin(P * PI / 2)),
    10003: (lambda P, p, a, b, c: p * (a * b * power(P, b - 1) + (1 - a) * c * power(P, c - 1)),
            lambda P, a, b, c: a * power(P, b) + (1 - a) * power(P, c)),
    10004: (lambda P, p: PI / 2 * mp.cos(PI * (P - half)) * P, lambda P: (1 + mp.sin(PI * (P - half))) / 2),
}
INNER = {43: 2, 13: 2, 57: 3}  # parameters of the distributions inside


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


def table(file):
    for name, code, *numbers, _, _ in rows.cells(f"pdf/{file}"):
        *params, x = map(float.fromhex, numbers)
        yield name, int(code), params, x


def row_of(name, code, f, params, x, subtracts, special, which=-1, inner=None):
    args = [mpf(x)] + [mpf(p) for p in params]
    value = mp.mpf(f(*args))
    ulps = tolerance(value, condition(f, args), subtracts, special) + int(mp.ceil(cancelled(code, which, params, value))) + logarithms(code, params)
    if inner is not None and value != 0 and mp.isfinite(value):
        psi, outer, n = inner
        Psi = psi[1](*args[:n + 1])
        if Psi > 0:  # the absolute ulp of 1 in Psi, carried through the wrapper
            rest = (psi[0](*args[:n + 1]),) if which == 0 else ()
            k = abs((outer(Psi * (1 + mpf(10) ** -15), *rest, *args[n + 1:]) - value) / (mpf(10) ** -15 * value))
            ulps += int(mp.ceil(4 * k / Psi))
    return rows.line(f"{name},{code}", [*params, x], text(value), ulps)


def cross_check():
    """Rows of both tables against SciPy, but for those whose value is a convention: at an edge of the support."""
    checked = {}
    for which, (file, kind) in enumerate((("density", "pdf"), ("distribution", "cdf"))):
        for name, code, params, x in table(file):
            make, what = CROSS.get(code, (None, ""))
            if make is None or what not in ("both", kind) or (code == 46 and x != round(x)):
                continue
            value = float(FORMULAS[code][1][which](mpf(x), *map(mpf, params)))
            theirs, below, above = (getattr(make(*params), "pmf" if code == 46 and which == 0 else kind)(t)
                                    for t in (x, x - 1e-9 * (1 + abs(x)), x + 1e-9 * (1 + abs(x))))
            edge = not mp.isfinite(value) or not mp.isfinite(theirs) or not abs(below - above) <= 1e-3 * (1 + abs(theirs))
            assert edge or abs(value - theirs) <= 1e-9 * max(1, abs(value)), (name, kind, params, x, value, theirs)
            checked[name] = name + ("" if what == "both" else f" ({what})")
    return checked.values()


def write(file, lines, checked=()):
    rows.save(f"pdf/{file}", ["# SciPy agrees: " + ", ".join(checked), *lines],
              f"mpmath {mpmath.__version__}, {mp.dps} digits; scipy {scipy.__version__} for the cross-check")
    print(file, len(lines))


def main():
    checked = cross_check()
    for which, file in enumerate(("density", "distribution")):
        write(file, [row_of(name, code, FORMULAS[code][1][which], params, x, which == 1 and code in SUBTRACTS,
                            which == 1 and code in SPECIAL, which) for name, code, params, x in table(file)], checked)
    for which, file in enumerate(("wrapper_density", "wrapper_distribution")):
        lines = []
        for name, code, params, x in table(file):
            psi, outer, n = FORMULAS[code % 10000][1], WRAPPERS[code // 10000], INNER[code % 10000]
            whole = (lambda x, *p: outer[0](psi[1](x, *p[:n]), psi[0](x, *p[:n]), *p[n:]),
                     lambda x, *p: outer[1](psi[1](x, *p[:n]), *p[n:]))[which]
            # Psi itself is 1 minus something, so its absolute error enters both functions.
            lines.append(row_of(name, code, whole, params, x, True, False, which, (psi, outer[which], n)))
        write(file, lines)


if __name__ == "__main__":
    main()
